#include "control/DiagnosticsMethods.h"

#include "control/values/BusNames.h"

#include <utility>

namespace fadewell {

std::vector<BusMethod> diagnosticsMethods(GatherDiagnostics gather)
{
    BusMethod method{"Diagnostics", {{"withNames", "b"}}, {{"text", "s"}}, {}};
    method.handleLater = [gather = std::move(gather)](const QVariantList& arguments,
                                                      const BusAnswer& answer) {
        if (!gather) {
            return answer(BusError{bus::error::notSupported, "Nothing is gathered here."});
        }
        gather(arguments[0].toBool(), [answer](const std::string& text) {
            answer(QVariantList{QString::fromStdString(text)});
        });
    };
    return {method};
}

} // namespace fadewell
