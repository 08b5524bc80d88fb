#include "platform/simulated/PropertyTable.h"

#include <algorithm>
#include <utility>

namespace fadewell {
namespace {

constexpr AudioObjectPropertyElement wildcardElement = 0xFFFFFFFF;

} // namespace

std::vector<std::byte> bytesOf(const std::vector<AudioObjectID>& ids)
{
    std::vector<std::byte> bytes(ids.size() * sizeof(AudioObjectID));
    if (!bytes.empty()) {
        std::memcpy(bytes.data(), ids.data(), bytes.size());
    }
    return bytes;
}

const PropertyTable::Property* PropertyTable::find(const AudioObjectPropertyAddress& address) const
{
    const auto found = std::ranges::find_if(
        properties_, [&](const auto& entry) { return covers(address, entry.first); });
    return found == properties_.end() ? nullptr : &found->second;
}

PropertyTable::Property* PropertyTable::find(const AudioObjectPropertyAddress& address)
{
    return const_cast<Property*>(std::as_const(*this).find(address));
}

bool covers(const AudioObjectPropertyAddress& listened, const AudioObjectPropertyAddress& changed)
{
    const auto matches = [](std::uint32_t left, std::uint32_t right, std::uint32_t wildcard) {
        return left == right || left == wildcard || right == wildcard;
    };
    return listened.mSelector == changed.mSelector &&
           matches(listened.mScope, changed.mScope, kAudioObjectPropertyScopeWildcard) &&
           matches(listened.mElement, changed.mElement, wildcardElement);
}

} // namespace fadewell
