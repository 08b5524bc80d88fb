#pragma once

#include "audio/AudioTypes.h"

#include <cstddef>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

namespace fadewell {

/// A value's bytes, or a text; an absent text is a null reference.
using PropertyValue = std::variant<std::vector<std::byte>, std::optional<std::string>>;

/// The bytes of one plain value.
template <class T>
requires std::is_trivially_copyable_v<T>
[[nodiscard]] std::vector<std::byte> bytesOf(const T& value)
{
    std::vector<std::byte> bytes(sizeof value);
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

/// The bytes of a list of object ids.
[[nodiscard]] std::vector<std::byte> bytesOf(const std::vector<AudioObjectID>& ids);

/// The properties of one object. Not synchronised.
class PropertyTable final {
public:
    struct Property {
        PropertyValue value;
        bool isSettable = false;
    };

    void
    put(const AudioObjectPropertyAddress& address, PropertyValue value, bool isSettable = false)
    {
        properties_.insert_or_assign(address, Property{std::move(value), isSettable});
    }
    void erase(const AudioObjectPropertyAddress& address) { properties_.erase(address); }

    /// A wildcard scope finds any scope. Null when there is none.
    [[nodiscard]] const Property* find(const AudioObjectPropertyAddress& address) const;
    [[nodiscard]] Property* find(const AudioObjectPropertyAddress& address);

private:
    std::map<AudioObjectPropertyAddress, Property> properties_;
};

/// Whether a listener's address covers a changed one, wildcards on either side included.
[[nodiscard]] bool covers(const AudioObjectPropertyAddress& listened,
                          const AudioObjectPropertyAddress& changed);

} // namespace fadewell
