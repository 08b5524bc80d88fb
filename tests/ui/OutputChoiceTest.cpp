#include "ui/OutputChoice.h"

#include "ui/style/SymbolImageProvider.h"

#include <gmock/gmock.h>

namespace fadewell {
namespace {

using Kind = OutputDevice::Kind;

const std::vector<OutputDevice> devices{{"speakers", 11, "Speakers", Kind::builtInSpeakers},
                                        {"pods", 12, "Pods", Kind::airPodsMax},
                                        {"tv", 13, "TV", Kind::tv}};

AppAudioSettings sentTo(std::optional<std::string> uid, std::optional<std::string> name = {})
{
    return {1, false, std::move(uid), std::move(name)};
}

TEST(OutputChoiceTest, TheDeviceInUseIsTheChosenElseTheOwnElseTheDefault)
{
    struct Case {
        std::optional<std::string> chosen;
        std::optional<std::uint32_t> own;
        std::optional<std::string> standard;
        std::optional<std::string> inUse;
    };
    const Case cases[] = {{"tv", 12, "speakers", "tv"},
                          {"gone", 12, "speakers", "pods"},
                          {"gone", 99, "speakers", "speakers"},
                          {{}, 12, "speakers", "pods"},
                          {{}, {}, "speakers", "speakers"},
                          {"gone", 99, "gone too", {}},
                          {{}, {}, {}, {}}};
    for (const auto& [chosen, own, standard, inUse] : cases) {
        const auto* device = deviceInUse(devices, sentTo(chosen), own, standard);
        EXPECT_EQ(device == nullptr ? std::nullopt : std::optional(device->id), inUse)
            << chosen.value_or("-") << ' ' << own.value_or(0) << ' ' << standard.value_or("-");
    }
}

TEST(OutputChoiceTest, AChosenDeviceThatIsNotConnectedStaysInTheMenu)
{
    const auto names = [](const AppAudioSettings& settings) {
        std::vector<std::string> list;
        for (const auto& choice : outputChoices(devices, settings)) {
            list.push_back((choice.isSelected ? "*" : "") + choice.name.value_or("system") +
                           (choice.isConnected ? "" : "?"));
        }
        return list;
    };
    using testing::ElementsAre;
    EXPECT_THAT(names(sentTo({})), ElementsAre("*system", "Speakers", "Pods", "TV"));
    EXPECT_THAT(names(sentTo("pods", "Old name")),
                ElementsAre("system", "Speakers", "*Pods", "TV"));
    EXPECT_THAT(names(sentTo("gone", "Old name")),
                ElementsAre("system", "Speakers", "Pods", "TV", "*Old name?"));
    EXPECT_THAT(names(sentTo("gone")), ElementsAre("system", "Speakers", "Pods", "TV", "*gone?"));
}

TEST(OutputChoiceTest, EverySymbolCanBeDrawn)
{
    std::vector<QString> names{"mic.fill",
                               "mic.slash.fill",
                               "speaker.slash",
                               "speaker.slash.fill",
                               "speaker.wave.3.fill",
                               "ellipsis.circle",
                               "checkmark"};
    for (const auto kind : OutputDevice::allKinds()) {
        names.push_back(QString::fromStdString(std::string(symbolName(kind))));
    }
    for (const auto& name : names) {
        const auto image = SymbolImageProvider::draw(name, 3, Qt::red, {24, 24});
        bool isVisible = false;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                isVisible = isVisible || image.pixelColor(x, y) == QColor(Qt::red);
            }
        }
        EXPECT_TRUE(isVisible) << name.toStdString();
    }
}

} // namespace
} // namespace fadewell
