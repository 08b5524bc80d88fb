#include "ui/style/Style.h"

#include "ui/style/SymbolImageProvider.h"

#include <QQmlEngine>

extern void qml_register_types_Fadewell_Style();

namespace fadewell {

void installStyle(QQmlEngine& engine)
{
    qml_register_types_Fadewell_Style(); // A static library's own registration is dropped.
    engine.addImportPath(QStringLiteral("qrc:/qml"));
    engine.addImageProvider(QStringLiteral("symbol"), new SymbolImageProvider); // takes it over
}

} // namespace fadewell
