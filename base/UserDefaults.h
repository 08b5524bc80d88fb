#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace fadewell {

/// Settings under string keys, each of one type; a value keeps its type (the text "false" is no
/// boolean). A write is readable at once and safe on disk soon after. Failures to persist are
/// logged, never thrown. [any thread]
class UserDefaults {
public:
    /// Bytes, such as a JSON document.
    struct Data {
        std::string bytes;
        bool operator==(const Data&) const = default;
    };
    using NumberMap = std::map<std::string, double>;
    using Value = std::variant<Data, std::string, bool, double, NumberMap>;

    virtual ~UserDefaults() = default;

    /// Absent also when what is stored under the key is of no known type.
    [[nodiscard]] virtual std::optional<Value> value(std::string_view key) const = 0;
    virtual void set(std::string_view key, Value value) = 0;
    virtual void remove(std::string_view key) = 0;
    [[nodiscard]] virtual std::vector<std::string> keys() const = 0;

    /// Returns when every earlier write is on disk. Follows each write that undoing after a crash
    /// needs.
    virtual void flush() = 0;

    /// The value when it is of this type; absent otherwise.
    template <class T>
    [[nodiscard]] std::optional<T> get(std::string_view key) const
    {
        const auto stored = value(key);
        const T* typed = stored ? std::get_if<T>(&*stored) : nullptr;
        return typed ? std::optional<T>(*typed) : std::nullopt;
    }
};

} // namespace fadewell
