#include "platform/linux/pipewire/ParameterParsing.h"

#include "base/LenientJson.h"

#include <spa/param/audio/format-utils.h>
#include <spa/param/props.h>
#include <spa/param/route.h>
#include <spa/pod/iter.h>
#include <spa/pod/parser.h>

#include <array>

namespace fadewell::pipewire {

namespace {

constexpr std::uint32_t maximumChannels = 64;

/// The Route's info is a struct: a count, then as many keys and values.
std::string portType(const spa_pod* info)
{
    if (info == nullptr || !spa_pod_is_struct(info)) {
        return {};
    }
    spa_pod_parser parser = {};
    spa_pod_parser_pod(&parser, info);
    spa_pod_frame frame = {};
    std::int32_t count = 0;
    if (spa_pod_parser_push_struct(&parser, &frame) < 0 ||
        spa_pod_parser_get_int(&parser, &count) < 0) {
        return {};
    }
    for (std::int32_t i = 0; i < count; ++i) {
        const char* key = nullptr;
        const char* value = nullptr;
        if (spa_pod_parser_get_string(&parser, &key) < 0 ||
            spa_pod_parser_get_string(&parser, &value) < 0) {
            break;
        }
        if (key != nullptr && value != nullptr && std::string_view(key) == "port.type") {
            return value;
        }
    }
    return {};
}

GraphRoute::Availability availability(std::uint32_t value)
{
    switch (value) {
    case SPA_PARAM_AVAILABILITY_no:
        return GraphRoute::Availability::no;
    case SPA_PARAM_AVAILABILITY_yes:
        return GraphRoute::Availability::yes;
    default:
        return GraphRoute::Availability::unknown;
    }
}

void addVolume(spa_pod_builder& builder, const NodeVolume& volume)
{
    if (!volume.channels.empty()) {
        spa_pod_builder_prop(&builder, SPA_PROP_channelVolumes, 0);
        spa_pod_builder_array(&builder,
                              sizeof(float),
                              SPA_TYPE_Float,
                              static_cast<std::uint32_t>(volume.channels.size()),
                              volume.channels.data());
    }
    if (volume.hasMute) {
        spa_pod_builder_prop(&builder, SPA_PROP_mute, 0);
        spa_pod_builder_bool(&builder, volume.isMuted);
    }
}

} // namespace

void parseVolume(const spa_pod* props, NodeVolume& volume)
{
    if (props == nullptr || !spa_pod_is_object_type(props, SPA_TYPE_OBJECT_Props)) {
        return;
    }
    if (const spa_pod_prop* found = spa_pod_find_prop(props, nullptr, SPA_PROP_channelVolumes)) {
        std::array<float, maximumChannels> values = {};
        const std::uint32_t count =
            spa_pod_copy_array(&found->value, SPA_TYPE_Float, values.data(), maximumChannels);
        if (count > 0) {
            volume.channels.assign(values.begin(), values.begin() + count);
        }
    }
    if (const spa_pod_prop* found = spa_pod_find_prop(props, nullptr, SPA_PROP_mute)) {
        bool isMuted = false;
        if (spa_pod_get_bool(&found->value, &isMuted) == 0) {
            volume.isMuted = isMuted;
            volume.hasMute = true;
        }
    }
}

std::optional<std::uint32_t> parseRate(const spa_pod* format)
{
    if (parseIsRaw(format) != true) {
        return std::nullopt;
    }
    const spa_pod_prop* const found = spa_pod_find_prop(format, nullptr, SPA_FORMAT_AUDIO_rate);
    std::int32_t rate = 0;
    if (found == nullptr || spa_pod_get_int(&found->value, &rate) < 0 || rate <= 0) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(rate);
}

std::optional<bool> parseIsRaw(const spa_pod* format)
{
    std::uint32_t type = 0;
    std::uint32_t subtype = 0;
    if (format == nullptr || !spa_pod_is_object_type(format, SPA_TYPE_OBJECT_Format) ||
        spa_format_parse(format, &type, &subtype) < 0 || type != SPA_MEDIA_TYPE_audio)
    {
        return std::nullopt;
    }
    return subtype == SPA_MEDIA_SUBTYPE_raw || subtype == SPA_MEDIA_SUBTYPE_dsp;
}

std::optional<GraphRoute> parseRoute(const spa_pod* route)
{
    if (route == nullptr || !spa_pod_is_object_type(route, SPA_TYPE_OBJECT_ParamRoute)) {
        return std::nullopt;
    }
    std::int32_t index = -1;
    std::int32_t device = -1;
    std::uint32_t direction = 0;
    std::uint32_t available = SPA_PARAM_AVAILABILITY_unknown;
    const char* name = nullptr;
    const spa_pod* info = nullptr;
    bool isSaved = false;
    const int parsed = spa_pod_parse_object(route,
                                            SPA_TYPE_OBJECT_ParamRoute,
                                            nullptr,
                                            SPA_PARAM_ROUTE_index,
                                            SPA_POD_Int(&index),
                                            SPA_PARAM_ROUTE_direction,
                                            SPA_POD_Id(&direction),
                                            SPA_PARAM_ROUTE_device,
                                            SPA_POD_Int(&device),
                                            SPA_PARAM_ROUTE_name,
                                            SPA_POD_OPT_String(&name),
                                            SPA_PARAM_ROUTE_available,
                                            SPA_POD_OPT_Id(&available),
                                            SPA_PARAM_ROUTE_info,
                                            SPA_POD_OPT_Pod(&info),
                                            SPA_PARAM_ROUTE_save,
                                            SPA_POD_OPT_Bool(&isSaved));
    if (parsed < 0 || index < 0) {
        return std::nullopt;
    }
    return GraphRoute{.index = static_cast<std::uint32_t>(index),
                      .isOutput = direction == SPA_DIRECTION_OUTPUT,
                      .device = device,
                      .name = name == nullptr ? "" : name,
                      .portType = portType(info),
                      .available = availability(available),
                      .isSaved = isSaved};
}

const spa_pod*
buildVolume(spa_pod_builder& builder, std::uint32_t paramID, const NodeVolume& volume)
{
    spa_pod_frame frame = {};
    spa_pod_builder_push_object(&builder, &frame, SPA_TYPE_OBJECT_Props, paramID);
    addVolume(builder, volume);
    return static_cast<const spa_pod*>(spa_pod_builder_pop(&builder, &frame));
}

const spa_pod*
buildRoute(spa_pod_builder& builder, const GraphRoute& route, const NodeVolume& volume)
{
    spa_pod_frame frame = {};
    spa_pod_builder_push_object(&builder, &frame, SPA_TYPE_OBJECT_ParamRoute, SPA_PARAM_Route);
    spa_pod_builder_prop(&builder, SPA_PARAM_ROUTE_index, 0);
    spa_pod_builder_int(&builder, static_cast<std::int32_t>(route.index));
    spa_pod_builder_prop(&builder, SPA_PARAM_ROUTE_device, 0);
    spa_pod_builder_int(&builder, route.device);
    spa_pod_builder_prop(&builder, SPA_PARAM_ROUTE_props, 0);
    static_cast<void>(buildVolume(builder, SPA_PARAM_Route, volume));
    spa_pod_builder_prop(&builder, SPA_PARAM_ROUTE_save, 0);
    spa_pod_builder_bool(&builder, route.isSaved);
    return static_cast<const spa_pod*>(spa_pod_builder_pop(&builder, &frame));
}

std::optional<std::string> parseDefaultName(std::string_view json)
{
    const auto value = parseJson(json);
    auto name = value && value->is_object() ? stringMember(*value, "name") : std::nullopt;
    return name && !name->empty() ? std::move(name) : std::nullopt;
}

} // namespace fadewell::pipewire
