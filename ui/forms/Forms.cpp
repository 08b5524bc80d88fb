#include "ui/forms/Forms.h"

#include "ui/style/Style.h"

extern void qml_register_types_Fadewell_Forms();

namespace fadewell {

void installForms(QQmlEngine& engine)
{
    qml_register_types_Fadewell_Forms(); // A static library's own registration is dropped.
    installStyle(engine);
}

} // namespace fadewell
