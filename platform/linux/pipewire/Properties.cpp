#include "platform/linux/pipewire/Properties.h"

#include <charconv>
#include <span>

namespace fadewell::pipewire {

void merge(Properties& properties, const spa_dict* dictionary)
{
    if (dictionary == nullptr) {
        return;
    }
    for (const spa_dict_item& item : std::span(dictionary->items, dictionary->n_items)) {
        if (item.key != nullptr && item.value != nullptr) {
            properties[item.key] = item.value;
        }
    }
}

std::optional<std::string_view> find(const Properties& properties, std::string_view key)
{
    const auto found = properties.find(key);
    return found == properties.end() || found->second.empty()
               ? std::nullopt
               : std::optional<std::string_view>(found->second);
}

std::string text(const Properties& properties, std::string_view key)
{
    return std::string(find(properties, key).value_or(""));
}

bool isTrue(const Properties& properties, std::string_view key)
{
    const auto value = find(properties, key);
    return value == "true" || value == "1";
}

std::optional<std::uint64_t> number(std::string_view text)
{
    std::uint64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && rest == end && !text.empty() ? std::optional(value)
                                                                : std::nullopt;
}

std::optional<std::uint64_t> number(const Properties& properties, std::string_view key)
{
    const auto value = find(properties, key);
    return value ? number(*value) : std::nullopt;
}

} // namespace fadewell::pipewire
