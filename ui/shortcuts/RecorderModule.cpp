#include "ui/shortcuts/RecorderModule.h"

extern void qml_register_types_Fadewell_Recorder();

namespace fadewell {

void installRecorder()
{
    qml_register_types_Fadewell_Recorder(); // A static library's own registration is dropped.
}

} // namespace fadewell
