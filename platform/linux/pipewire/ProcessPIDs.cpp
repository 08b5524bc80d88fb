#include "platform/linux/pipewire/ProcessPIDs.h"

#include <string_view>

namespace fadewell::pipewire {

namespace {

std::optional<std::int32_t> pid(const Properties& properties, std::string_view key)
{
    const auto value = number(properties, key);
    return value && *value > 0 && *value < static_cast<std::uint64_t>(firstMadeUpPID)
               ? std::optional(static_cast<std::int32_t>(*value))
               : std::nullopt;
}

/// The sandbox that hides the client's real pid from us; absent for an ordinary program.
std::optional<std::string> sandbox(const Properties& client)
{
    if (const auto app = find(client, "pipewire.access.portal.app_id")) {
        return std::string(*app);
    }
    return find(client, PW_KEY_ACCESS) == "flatpak"
               ? std::optional("flatpak:" + text(client, PW_KEY_APP_NAME))
               : std::nullopt;
}

} // namespace

std::optional<std::int32_t> ProcessPIDs::resolve(const Properties& node, const GraphClient* client)
{
    const auto declared = pid(node, PW_KEY_APP_PROCESS_ID);
    if (client == nullptr) {
        return declared;
    }
    if (!client->hasInfo) {
        return std::nullopt;
    }
    // The connection of a Pulse client is the daemon's that speaks for it.
    const bool isPulse = find(node, PW_KEY_CLIENT_API) == "pipewire-pulse" ||
                         find(client->props, PW_KEY_CLIENT_API) == "pipewire-pulse";
    if (!isPulse) {
        if (const auto verified = pid(client->props, PW_KEY_SEC_PID)) {
            return verified;
        }
    }
    const auto said = declared ? declared : pid(client->props, PW_KEY_APP_PROCESS_ID);
    if (const auto hidden = sandbox(client->props)) {
        return madeUp(*hidden + "/" + std::to_string(said.value_or(0)));
    }
    return said;
}

std::int32_t ProcessPIDs::madeUp(const std::string& sandboxed)
{
    const auto next = firstMadeUpPID + static_cast<std::int32_t>(madeUp_.size());
    return madeUp_.emplace(sandboxed, next).first->second;
}

} // namespace fadewell::pipewire
