#include "ui/about/AboutCredits.h"

#include <QCoreApplication>
#include <QFile>

// The text is in a static library, from which the linker takes only what is named.
static void loadLicence()
{
    Q_INIT_RESOURCE(about_texts);
}

namespace fadewell {
namespace {

/// Without the licence's title: what follows the library's name begins with the copyright line.
QString licence()
{
    loadLicence();
    QFile file(":/fadewell/about/shortcuts-licence");
    if (!file.open(QFile::ReadOnly)) {
        return {};
    }
    const auto text = QString::fromUtf8(file.readAll());
    return text.mid(text.indexOf("Copyright")).trimmed();
}

/// Paragraphs as paragraphs: the file breaks its lines for a terminal.
QString flowing(const QString& text)
{
    auto paragraphs = text.split("\n\n");
    for (auto& paragraph : paragraphs) {
        paragraph.replace('\n', ' ');
    }
    return paragraphs.join("\n\n");
}

} // namespace

AboutCredits AboutCredits::current()
{
    return {QCoreApplication::translate("AboutWindow", "Acknowledgements"),
            "KeyboardShortcuts\n" + flowing(licence())};
}

} // namespace fadewell
