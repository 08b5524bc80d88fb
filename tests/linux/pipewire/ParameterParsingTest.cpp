#include "platform/linux/pipewire/ParameterParsing.h"

#include <spa/param/audio/format.h>
#include <spa/param/format.h>
#include <spa/param/props.h>
#include <spa/param/route.h>

#include <array>
#include <gtest/gtest.h>

namespace fadewell::pipewire {
namespace {

class ParameterParsingTest : public testing::Test {
protected:
    ParameterParsingTest() { spa_pod_builder_init(&builder, memory.data(), sizeof(memory)); }

    const spa_pod* format(std::uint32_t subtype, std::int32_t rate)
    {
        return static_cast<const spa_pod*>(
            spa_pod_builder_add_object(&builder,
                                       SPA_TYPE_OBJECT_Format,
                                       SPA_PARAM_Format,
                                       SPA_FORMAT_mediaType,
                                       SPA_POD_Id(SPA_MEDIA_TYPE_audio),
                                       SPA_FORMAT_mediaSubtype,
                                       SPA_POD_Id(subtype),
                                       SPA_FORMAT_AUDIO_rate,
                                       SPA_POD_Int(rate)));
    }

    /// `count` is what the info claims to hold; it holds two pairs.
    const spa_pod* route(std::int32_t count)
    {
        spa_pod_frame object = {};
        spa_pod_frame info = {};
        spa_pod_builder_push_object(&builder, &object, SPA_TYPE_OBJECT_ParamRoute, SPA_PARAM_Route);
        spa_pod_builder_add(&builder,
                            SPA_PARAM_ROUTE_index,
                            SPA_POD_Int(3),
                            SPA_PARAM_ROUTE_direction,
                            SPA_POD_Id(SPA_DIRECTION_OUTPUT),
                            SPA_PARAM_ROUTE_device,
                            SPA_POD_Int(5),
                            SPA_PARAM_ROUTE_available,
                            SPA_POD_Id(SPA_PARAM_AVAILABILITY_yes),
                            0);
        spa_pod_builder_prop(&builder, SPA_PARAM_ROUTE_info, 0);
        spa_pod_builder_push_struct(&builder, &info);
        spa_pod_builder_int(&builder, count);
        for (const char* const text : {"card.profile.port", "1", "port.type", "headphones"}) {
            spa_pod_builder_string(&builder, text);
        }
        spa_pod_builder_pop(&builder, &info);
        return static_cast<const spa_pod*>(spa_pod_builder_pop(&builder, &object));
    }

    std::array<std::byte, 4096> memory = {};
    spa_pod_builder builder = {};
};

TEST_F(ParameterParsingTest, VolumeSurvivesTheRoundTripAndKeepsWhatIsNotMentioned)
{
    NodeVolume volume;
    parseVolume(buildVolume(builder, SPA_PARAM_Props, {{0.125F, 1.0F}, true, true}), volume);
    EXPECT_EQ(volume, (NodeVolume{{0.125F, 1.0F}, true, true}));
    parseVolume(buildVolume(builder, SPA_PARAM_Props, {{}, false, true}), volume);
    EXPECT_EQ(volume, (NodeVolume{{0.125F, 1.0F}, false, true}));
    parseVolume(buildVolume(builder, SPA_PARAM_Props, {{0.5F}, false, false}), volume);
    EXPECT_EQ(volume, (NodeVolume{{0.5F}, false, true}));
}

TEST_F(ParameterParsingTest, RouteCarriesItsPortAndItsPropertiesWhenWritten)
{
    auto parsed = parseRoute(route(2));
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->index, 3U);
    EXPECT_EQ(parsed->device, 5);
    EXPECT_TRUE(parsed->isOutput);
    EXPECT_EQ(parsed->portType, "headphones");
    EXPECT_EQ(parsed->available, GraphRoute::Availability::yes);

    const spa_pod* const written = buildRoute(builder, *parsed, {{0.25F}, true, true});
    ASSERT_NE(written, nullptr);
    const spa_pod_prop* const props = spa_pod_find_prop(written, nullptr, SPA_PARAM_ROUTE_props);
    ASSERT_NE(props, nullptr);
    NodeVolume volume;
    parseVolume(&props->value, volume);
    EXPECT_EQ(volume, (NodeVolume{{0.25F}, true, true}));
    for (const bool isSaved : {true, false}) {
        parsed->isSaved = isSaved;
        const spa_pod* const route = buildRoute(builder, *parsed, {{}, true, true});
        const auto* const save = spa_pod_find_prop(route, nullptr, SPA_PARAM_ROUTE_save);
        bool told = !isSaved;
        ASSERT_TRUE(save != nullptr && spa_pod_get_bool(&save->value, &told) == 0);
        EXPECT_EQ(told, isSaved);
    }
}

TEST_F(ParameterParsingTest, TellsRawFromEncodedAndReadsTheRate)
{
    EXPECT_EQ(parseRate(format(SPA_MEDIA_SUBTYPE_raw, 44100)), 44100U);
    EXPECT_EQ(parseRate(format(SPA_MEDIA_SUBTYPE_raw, 0)), std::nullopt);
    EXPECT_EQ(parseRate(format(SPA_MEDIA_SUBTYPE_iec958, 48000)), std::nullopt);
    EXPECT_EQ(parseIsRaw(format(SPA_MEDIA_SUBTYPE_iec958, 48000)), false);
    EXPECT_EQ(parseIsRaw(format(SPA_MEDIA_SUBTYPE_dsp, 48000)), true);
}

TEST_F(ParameterParsingTest, BrokenRoutesEndWithTheirStruct)
{
    EXPECT_EQ(parseRoute(format(SPA_MEDIA_SUBTYPE_raw, 48000)), std::nullopt);
    EXPECT_EQ(parseIsRaw(route(2)), std::nullopt);
    EXPECT_EQ(parseRoute(route(1000000))->portType, "headphones");
    EXPECT_EQ(parseRoute(route(-1))->portType, "");
}

} // namespace
} // namespace fadewell::pipewire
