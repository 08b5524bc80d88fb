#include "tests/integration/faults/ServerState.h"

#include "tests/integration/support/Session.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace fadewell::integration {
namespace {

using nlohmann::json;

std::string text(const json& value)
{
    return value.is_string() ? value.get<std::string>() : value.dump();
}

ServerState::Node node(const json& object)
{
    const auto properties = object.value("/info/props"_json_pointer, json::object());
    return {object.value("id", 0),
            text(properties.value("object.serial", json())),
            properties.value("node.name", ""),
            object.value("/info/params/Props/0/mute"_json_pointer, false)};
}

void addMetadata(const json& object, ServerState& state)
{
    if (object.value("/props/metadata.name"_json_pointer, "") != "default") {
        return;
    }
    for (const auto& entry : object.value("metadata", json::array())) {
        const auto key = entry.value("key", "");
        if (key == "target.object" || key == "target.node") {
            state.targets.push_back({entry.value("subject", 0), text(entry.at("value"))});
        } else if (key == "default.audio.sink" && entry.at("value").is_object()) {
            state.defaultOutput = entry.at("value").value("name", "");
        }
    }
}

} // namespace

ServerState ServerState::read()
{
    ServerState state;
    for (const auto& object : Session::objects()) {
        const auto type = object.value("type", "");
        if (type == "PipeWire:Interface:Node") {
            state.nodes.push_back(node(object));
        } else if (type == "PipeWire:Interface:Metadata") {
            addMetadata(object, state);
        }
    }
    return state;
}

bool ServerState::hasNode(int id) const
{
    return std::any_of(nodes.begin(), nodes.end(), [id](const auto& n) { return n.id == id; });
}

bool ServerState::hasNode(const std::string& text) const
{
    return std::any_of(nodes.begin(), nodes.end(), [&](const auto& n) {
        return n.name == text || n.serial == text || std::to_string(n.id) == text;
    });
}

} // namespace fadewell::integration
