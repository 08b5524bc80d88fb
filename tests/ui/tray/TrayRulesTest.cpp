#include "base/MemoryUserDefaults.h"
#include "base/VirtualTime.h"
#include "tests/support/FixedWindows.h"
#include "tests/support/SimulatedWorkspace.h"
#include "ui/tray/MenuBarIcon.h"
#include "ui/tray/ScrollSteps.h"
#include "ui/tray/TrayIcons.h"
#include "ui/tray/TrayLook.h"
#include "ui/tray/TrayMenu.h"

#include <QStringList>

#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <vector>

namespace fadewell {
namespace {

class TrayRulesTest : public testing::Test {
protected:
    TrayRulesTest()
    {
        MixerModel::Services services; // No engine: the test shows what it likes.
        services.mainQueue = VirtualTime::create()->makeQueue();
        services.workspace = std::make_shared<SimulatedWorkspace>();
        services.defaults = std::make_shared<MemoryUserDefaults>();
        model = MixerModel::create(std::move(services));
    }

    void show(bool isMuted, bool canMute, bool isCallModeActive) const
    {
        model->microphone.set({"Mic", 0.5, isMuted, canMute});
        model->isCallModeActive.set(isCallModeActive);
    }

    /// One entry a line: [x] and [ ] are check marks, (…) is disabled.
    QString menu() const
    {
        QStringList lines;
        for (const auto& entry : trayMenu(*model, windows)) {
            auto line = entry.command == TrayCommand::none ? "-" : entry.text;
            if (entry.isChecked) {
                line = (*entry.isChecked ? "[x] " : "[ ] ") + line;
            }
            lines += entry.isEnabled ? line : '(' + line + ')';
        }
        return lines.join('|');
    }

    std::shared_ptr<MixerModel> model;
    FixedWindows windows;
};

TEST_F(TrayRulesTest, AMutedMicrophoneOutranksCallMode)
{
    struct Case {
        bool isMuted;
        bool isCallModeActive;
        const char* symbol;
        const char* label;
    };
    std::set<QByteArray> pictures;
    for (const auto& each : {Case{false, false, "slider.vertical.3", "Fadewell"},
                             Case{false, true, "phone", "Fadewell, Call Mode On"},
                             Case{true, false, "mic.slash", "Fadewell, Microphone Off"},
                             Case{true, true, "mic.slash", "Fadewell, Microphone Off"}})
    {
        show(each.isMuted, true, each.isCallModeActive);
        const MenuBarIcon icon(*model);
        EXPECT_EQ(icon.symbol, each.symbol);
        EXPECT_EQ(icon.label, each.label);
        for (const auto ground : {TrayIcons::Ground::light, TrayIcons::Ground::dark}) {
            const auto pixmaps = TrayIcons::pixmaps(icon.symbol, ground);
            ASSERT_EQ(pixmaps.size(), 5) << each.symbol;
            for (const auto& pixmap : pixmaps) {
                EXPECT_EQ(pixmap.pixels.size(), pixmap.width * pixmap.height * 4);
            }
            pictures.insert(pixmaps.front().pixels);
        }
    }
    EXPECT_EQ(pictures.size(), 6U) << "three symbols, on light and on dark";
}

TEST_F(TrayRulesTest, PixelsStandOutFromTheGroundInTheOrderOfTheProtocol)
{
    for (const bool isDark : {false, true}) {
        const auto ground = isDark ? TrayIcons::Ground::dark : TrayIcons::Ground::light;
        const auto pixels = TrayIcons::pixmaps("slider.vertical.3", ground).back().pixels;
        int opaque = 0;
        for (qsizetype pixel = 0; pixel < pixels.size(); pixel += 4) {
            if (pixels[pixel] == '\xff') { // alpha first
                ++opaque;
                EXPECT_EQ(pixels.mid(pixel + 1, 3),
                          isDark ? QByteArray("\xf2\xf2\xf2") : QByteArray("\x2e\x34\x36"));
            }
        }
        EXPECT_GT(opaque, 300) << "of 48 by 48";
    }
}

TEST_F(TrayRulesTest, TheMenuOffersWhatIsThereAndBeginsWithTheMixer)
{
    struct Case {
        bool isMuted;
        bool canMute;
        bool isCallModeActive;
        std::vector<AppWindow> offered;
        const char* menu;
    };
    const std::vector<AppWindow> all{AppWindow::panel, AppWindow::settings, AppWindow::about};
    for (const auto& each :
         {Case{false,
               true,
               false,
               all,
               "Open Mixer|-|[x] Microphone|[ ] Call Mode|-|Settings…|About Fadewell|-|"
               "Quit Fadewell"},
          Case{true,
               true,
               true,
               {AppWindow::panel, AppWindow::about},
               "Open Mixer|-|[ ] Microphone|[x] Call Mode|-|About Fadewell|-|Quit Fadewell"},
          Case{false,
               false,
               false,
               {AppWindow::panel},
               "Open Mixer|-|([x] Microphone)|[ ] Call Mode|-|Quit Fadewell"},
          Case{true, // One that is off can always be switched on again.
               false,
               false,
               {AppWindow::panel},
               "Open Mixer|-|[ ] Microphone|[ ] Call Mode|-|Quit Fadewell"}})
    {
        show(each.isMuted, each.canMute, each.isCallModeActive);
        windows.offered = each.offered;
        EXPECT_EQ(menu().toStdString(), each.menu);
    }
}

TEST(ScrollStepsTest, UnderstandsBothKindsOfHosts)
{
    constexpr auto unknown = ScrollSteps::Host::unknown;
    constexpr auto angles = ScrollSteps::Host::sendsAngles;
    struct Case {
        const char* name;
        ScrollSteps::Host host;
        std::vector<int> deltas;
        std::vector<int> steps;
    };
    for (const auto& each :
         {Case{"notches of a wheel", angles, {120, 120, -120}, {1, 1, -1}},
          Case{"a touchpad adds up", angles, {50, 50, 50, 90}, {0, 0, 1, 1}},
          Case{"turning round forgets the rest", angles, {110, -110, -10}, {0, 0, -1}},
          Case{"small angles where all are angles", angles, {1, 2, 3}, {0, 0, 0}},
          Case{"whole notches, down is positive", unknown, {1, -1, -2}, {-1, 1, 2}},
          Case{"angles from a host that may send either", unknown, {120, -240}, {1, -2}},
          Case{"nonsense moves little", unknown, {2147483647, -2147483647 - 1, 0}, {3, -3, 0}}})
    {
        ScrollSteps steps(each.host);
        std::vector<int> taken;
        for (const int delta : each.deltas) {
            taken.push_back(steps.take(delta));
        }
        EXPECT_EQ(taken, each.steps) << each.name;
    }
}

TEST(TrayLookTest, FollowsTheWindowsOnlyWhereTraysDo)
{
    using Ground = TrayIcons::Ground;
    EXPECT_EQ(TrayLook::of("KDE", false), (TrayLook{Ground::light, true}));
    EXPECT_EQ(TrayLook::of("KDE", true), (TrayLook{Ground::dark, true}));
    EXPECT_EQ(TrayLook::of("ubuntu:GNOME", false), (TrayLook{Ground::dark, true}));
    EXPECT_EQ(TrayLook::of("LXQt", false), (TrayLook{Ground::light, false}));
    EXPECT_EQ(TrayLook::of("", false), (TrayLook{Ground::dark, false}));
}

} // namespace
} // namespace fadewell
