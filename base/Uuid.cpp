#include "base/Uuid.h"

#include <array>
#include <uuid.h>

namespace fadewell {

std::string makeUUID()
{
    uuid_t uuid{};
    uuid_generate_random(uuid);
    std::array<char, UUID_STR_LEN> text{};
    uuid_unparse_upper(uuid, text.data());
    return text.data();
}

} // namespace fadewell
