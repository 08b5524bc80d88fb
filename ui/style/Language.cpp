#include "ui/style/Language.h"

#include <QGuiApplication>
#include <QLocale>
#include <QTranslator>

#include <memory>

// Outside of the namespace, as the macro asks.
static void loadTranslations()
{
    Q_INIT_RESOURCE(translations);
}

namespace fadewell {

void installLanguage()
{
    if (qGuiApp->findChild<QTranslator*>() != nullptr) {
        return;
    }
    loadTranslations();
    auto translator = std::make_unique<QTranslator>(qGuiApp);
    if (translator->load(
            QLocale(), QStringLiteral("fadewell"), QStringLiteral("_"), QStringLiteral(":/i18n")))
    {
        // English texts stay left to right, also where the locale's own aren't.
        QGuiApplication::setLayoutDirection(QLocale(translator->language()).textDirection());
        QGuiApplication::installTranslator(translator.release());
    } else {
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    }
}

QString shownLanguage()
{
    const auto* translator = QCoreApplication::instance()->findChild<QTranslator*>();
    return translator == nullptr ? QStringLiteral("en") : translator->language();
}

} // namespace fadewell
