#include "control/PermissionMethods.h"

#include "control/values/BusNames.h"

#include <utility>

namespace fadewell {

std::vector<BusMethod> permissionMethods(std::function<bool()> isAllowed)
{
    return {{"CheckPermission",
             {},
             {{"isAllowed", "b"}},
             [isAllowed = std::move(isAllowed)](const QVariantList&) -> BusReply {
                 if (!isAllowed) {
                     return BusError{bus::error::notSupported, "There is no sound system to ask."};
                 }
                 return QVariantList{isAllowed()};
             }}};
}

} // namespace fadewell
