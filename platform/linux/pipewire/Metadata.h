#pragma once

#include "platform/linux/pipewire/GraphObjects.h"

#include <pipewire/extensions/metadata.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace fadewell::pipewire {

/// One metadata object of the server and its values. Belongs to the connection's lock.
class Metadata final {
public:
    using Changed = std::function<void(
        std::uint32_t subject, const std::string& key, const std::optional<std::string>& value)>;
    using Refused = std::function<void(int result)>;

    /// Owns `proxy`, through which the values arrive one by one. With null it is its own server:
    /// what is written counts at once.
    Metadata(pw_proxy* proxy, GraphObject object, Changed changed, Refused refused);
    ~Metadata();
    Metadata(const Metadata&) = delete;
    Metadata& operator=(const Metadata&) = delete;

    /// Has all values told anew through another proxy of the same object; those known stay.
    void listenThrough(pw_proxy* proxy);

    [[nodiscard]] const GraphObject& object() const { return object_; }
    void setPermissions(std::uint32_t permissions) { object_.permissions = permissions; }
    [[nodiscard]] std::optional<std::string> value(std::uint32_t subject,
                                                   const std::string& key) const;

    /// Deletes when `value` is absent; a negative errno when it can't be sent.
    int set(std::uint32_t subject, const std::string& key, const char* type, const char* value);

    /// What the server tells: a null key forgets the whole subject, a null value one key.
    void take(std::uint32_t subject, const char* key, const char* value);

private:
    static int onProperty(
        void* data, std::uint32_t subject, const char* key, const char* type, const char* value);
    static void onError(void* data, int sequence, int result, const char* message);
    void forget(std::uint32_t subject);
    void closeProxy();

    GraphObject object_;
    Changed changed_;
    Refused refused_;
    std::map<std::uint32_t, std::map<std::string, std::string>> values_;
    pw_proxy* proxy_ = nullptr;
    spa_hook proxyHook_ = {};
    spa_hook objectHook_ = {};
};

} // namespace fadewell::pipewire
