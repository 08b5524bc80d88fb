#include "audio/CoreAudioError.h"
#include "tests/audio/EngineTest.h"

#include <limits>
#include <tuple>

namespace fadewell {
namespace {

TEST(CoreAudioErrorTest, DescribesTheStatusAsCharactersOrNumber)
{
    const std::tuple<OSStatus, const char*> cases[] = {
        {560947818, "Create tap failed: '!obj' (560947818)"},
        {-50, "Create tap failed: -50 (-50)"},
        {0x2020207E, "Create tap failed: '   ~' (538976382)"},
        {0x2020207F, "Create tap failed: 538976383 (538976383)"},
        {0x1F202020, "Create tap failed: 522199072 (522199072)"},
        {std::numeric_limits<OSStatus>::min(), "Create tap failed: -2147483648 (-2147483648)"},
    };
    for (const auto& [status, text] : cases) {
        EXPECT_EQ(CoreAudioError("Create tap", status).description(), text);
        EXPECT_STREQ(CoreAudioError("Create tap", status).what(), text);
    }
}

class HardwareAccessTest : public EngineTest {};

TEST_F(HardwareAccessTest, ListsHoldOnlyWholeIDsAndFailedReadsNothing)
{
    const AudioObjectID device = addOutput("a");
    const auto address = propertyAddress(fourCharCode("list"));
    for (const auto& [bytes, count] : {std::pair{0, 0}, {3, 0}, {4, 1}, {6, 1}, {8, 2}}) {
        hardware_->setProperty(
            device, address, std::vector<std::byte>(static_cast<std::size_t>(bytes)));
        EXPECT_EQ(objectIDs(*hardware_, device, address.mSelector).size(), std::size_t(count))
            << bytes << " bytes";
    }
    for (const auto call : {HardwareCall::dataSize, HardwareCall::getData}) {
        fail(call);
        EXPECT_TRUE(objectIDs(*hardware_, device, address.mSelector).empty()) << name(call);
    }
    fail(HardwareCall::deviceForUID);
    EXPECT_EQ(deviceID(*hardware_, "a"), std::nullopt);
}

} // namespace
} // namespace fadewell
