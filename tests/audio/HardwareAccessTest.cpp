#include "audio/CoreAudioError.h"
#include "audio/HALListener.h"
#include "tests/audio/EngineTest.h"

#include <limits>
#include <tuple>

namespace fadewell {
namespace {

using enum HardwareCall;

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

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

class HardwareAccessTest : public EngineTest {
protected:
    std::vector<AudioObjectID> devices()
    {
        return objectIDs(*hardware_, kAudioObjectSystemObject, kAudioHardwarePropertyDevices);
    }
};

TEST_F(HardwareAccessTest, ListsHoldOnlyWholeIDs)
{
    const AudioObjectID device = addOutput("a");
    const auto address = propertyAddress(fourCharCode("list"));
    for (const auto& [bytes, count] : {std::pair{0, 0}, {3, 0}, {4, 1}, {6, 1}, {8, 2}}) {
        hardware_->setProperty(
            device, address, std::vector<std::byte>(static_cast<std::size_t>(bytes)));
        EXPECT_EQ(objectIDs(*hardware_, device, address.mSelector).size(), std::size_t(count))
            << bytes << " bytes";
    }
}

TEST_F(HardwareAccessTest, FailedReadsAreEmptyOrAbsent)
{
    const AudioObjectID device = addOutput("a", "");
    hardware_->setDefaultOutput(device);
    EXPECT_EQ(stringProperty(*hardware_, device, kAudioObjectPropertyName), std::nullopt)
        << "an empty name is no name";
    EXPECT_THAT(deviceID(*hardware_, "a"), Optional(device));
    EXPECT_EQ(deviceID(*hardware_, "b"), std::nullopt);
    EXPECT_THAT(devices(), ElementsAre(device));

    for (const auto call : {dataSize, getData}) {
        fail(call);
        EXPECT_THAT(devices(), IsEmpty());
    }
    fail(getData);
    EXPECT_EQ(uint32Property(*hardware_, device, kAudioDevicePropertyTransportType), std::nullopt);
    fail(deviceForUID);
    EXPECT_EQ(deviceID(*hardware_, "a"), std::nullopt);
    hardware_->setDefaultOutput(kAudioObjectUnknown);
    EXPECT_EQ(defaultOutputDevice(*hardware_), std::nullopt) << "never device 0";
}

TEST_F(HardwareAccessTest, ListenerUnregistersExactlyOnce)
{
    const AudioObjectID device = addOutput("a");
    const auto address = propertyAddress(kAudioObjectPropertyName);
    int changes = 0;
    const auto count = [&changes] {
        ++changes;
    };
    auto listener = HALListener::create(hardware_, device, address, main_, count);
    hardware_->setName(device, "new");
    time_->run();
    EXPECT_EQ(changes, 1);
    listener->invalidate();
    listener->invalidate();
    listener = nullptr;
    EXPECT_EQ(hardware_->calls().count(removeListener), 1);
    EXPECT_EQ(hardware_->made(), Made{});

    fail(addListener);
    EXPECT_EQ(HALListener::create(hardware_, device, address, main_, count), nullptr);
    EXPECT_EQ(hardware_->calls().count(removeListener), 1);
}

} // namespace
} // namespace fadewell
