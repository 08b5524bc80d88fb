#include "platform/linux/pipewire/taps/TapNames.h"

#include <optional>

namespace fadewell::pipewire {
namespace {

constexpr std::string_view ownPrefix = "fadewell.";

/// "fadewell.KIND.OWNER.NUMBER"
std::string nodeName(std::string_view kind, const ProcessInstance& owner, std::uint64_t number)
{
    return std::string(ownPrefix).append(kind) + '.' + owner.text() + '.' + std::to_string(number);
}

std::optional<ProcessInstance> ownerOf(std::string_view name)
{
    const auto dot = name.find('.', ownPrefix.size());
    if (!isOwnNodeName(name) || dot == std::string_view::npos) {
        return std::nullopt;
    }
    name.remove_prefix(dot + 1);
    return ProcessInstance::parse(name.substr(0, name.find('.')));
}

} // namespace

std::string tapNodeName(const ProcessInstance& owner, std::uint64_t number)
{
    return nodeName("tap", owner, number);
}

std::string lobbyNodeName(const ProcessInstance& owner, std::uint64_t number)
{
    return nodeName("lobby", owner, number);
}

bool isOwnNodeName(std::string_view name)
{
    return name.starts_with(ownPrefix);
}

bool isNodeNameOf(const ProcessInstance& owner, std::string_view name)
{
    return ownerOf(name) == owner;
}

bool isLeftoverNodeName(std::string_view name)
{
    const auto owner = ownerOf(name);
    return isOwnNodeName(name) && (!owner || !owner->isRunning());
}

} // namespace fadewell::pipewire
