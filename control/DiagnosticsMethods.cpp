#include "control/DiagnosticsMethods.h"

#include "control/values/BusNames.h"

#include <utility>

namespace fadewell {

std::vector<BusMethod> diagnosticsMethods(std::function<std::string(bool withNames)> text)
{
    return {{"Diagnostics",
             {{"withNames", "b"}},
             {{"text", "s"}},
             [text = std::move(text)](const QVariantList& arguments) -> BusReply {
                 if (!text) {
                     return BusError{bus::error::notSupported, "Nothing is gathered here."};
                 }
                 return QVariantList{QString::fromStdString(text(arguments[0].toBool()))};
             }}};
}

} // namespace fadewell
