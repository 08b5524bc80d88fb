#pragma once

#include <spa/utils/dict.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace fadewell::pipewire {

/// What an object of the server says of itself.
using Properties = std::map<std::string, std::string, std::less<>>;

/// Takes over every entry of `dictionary`, which may be null; later values win.
void merge(Properties& properties, const spa_dict* dictionary);

/// The value under `key`; absent when there is none or it is empty.
[[nodiscard]] std::optional<std::string_view> find(const Properties& properties,
                                                   std::string_view key);

/// The value under `key`, empty when there is none.
[[nodiscard]] std::string text(const Properties& properties, std::string_view key);

/// Whether the value is "true" or "1", as the server's own readers have it.
[[nodiscard]] bool isTrue(const Properties& properties, std::string_view key);

/// A whole decimal number and nothing else; absent otherwise.
[[nodiscard]] std::optional<std::uint64_t> number(std::string_view text);
[[nodiscard]] std::optional<std::uint64_t> number(const Properties& properties,
                                                  std::string_view key);

} // namespace fadewell::pipewire
