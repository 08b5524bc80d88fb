// Somebody who sees nothing of the panel changes what a real player is heard like.

#include "tests/integration/support/Await.h"
#include "tests/integration/support/FadewellTest.h"
#include "tests/ui/support/ScreenTest.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>

namespace fadewell::integration {
namespace {

class PanelAccessibilityTest : public ScreenTest {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        std::filesystem::remove_all(std::filesystem::path(getenv("XDG_CONFIG_HOME")) / "fadewell");
        player_.emplace(play("pw-play", tone()));
        ASSERT_TRUE(speakers_->awaitGain(0)) << player_->errors();
        program_.emplace(std::vector<std::string>{FADEWELL_PANEL_PROGRAM});
    }

    void TearDown() override
    {
        player_.reset();
        program_->signal(SIGTERM);
        EXPECT_EQ(program_->wait(), 0) << program_->errors();
    }

    [[nodiscard]] static Accessible panel()
    {
        return Accessible::desktop().expect(ATSPI_ROLE_FRAME, "Fadewell");
    }

    /// The row of the only app that plays.
    [[nodiscard]] static Accessible row()
    {
        std::vector<Accessible> rows;
        const auto list = panel().expect(ATSPI_ROLE_LIST, "Apps");
        if (!await([&] { return (rows = list.children()).size() == 1; })) {
            throw std::runtime_error(list.tree());
        }
        return rows.front();
    }

    static void press(const Accessible& object)
    {
        EXPECT_TRUE(object.perform("Press")) << object.tree();
    }

    std::optional<ChildProcess> player_;
    std::optional<ChildProcess> program_;
};

TEST_F(PanelAccessibilityTest, ARowChangesWhatIsHeard)
{
    const auto app = row();
    EXPECT_EQ(app.role(), ATSPI_ROLE_LIST_ITEM);
    EXPECT_NE(app.name(), "");
    EXPECT_TRUE(app.find(ATSPI_ROLE_HEADING, app.name())) << app.tree();

    const auto slider = app.expect(ATSPI_ROLE_SLIDER, "Volume");
    slider.setValue(40);
    expectGain(*speakers_, decibels(0.4));
    EXPECT_TRUE(slider.perform("Increase"));
    expectGain(*speakers_, decibels(0.45));
    const auto range = slider.range().value();
    EXPECT_NEAR(range.value, 45, 1e-9); // per cent
    EXPECT_EQ(range.minimum, 0);
    EXPECT_EQ(range.maximum, 100);
    EXPECT_EQ(range.step, 5);

    press(app.expect(ATSPI_ROLE_PUSH_BUTTON, "Mute"));
    EXPECT_TRUE(speakers_->awaitSilence());
    press(app.expect(ATSPI_ROLE_PUSH_BUTTON, "Unmute"));
    expectGain(*speakers_, decibels(0.45));

    const auto output = app.expect(ATSPI_ROLE_PUSH_BUTTON, "Output");
    EXPECT_EQ(output.description(), "Speakers");
    press(output);
    press(panel().expect(ATSPI_ROLE_RADIO_BUTTON, "Headphones"));
    expectGain(*headphones_, decibels(0.45));
    EXPECT_TRUE(speakers_->awaitSilence());
    EXPECT_TRUE(await([&] { return output.description() == "Headphones"; }));
}

TEST_F(PanelAccessibilityTest, ASwitchIsOneElementWithItsCaption)
{
    const auto callMode = panel().expect(ATSPI_ROLE_CHECK_BOX, "Call Mode");
    EXPECT_EQ(callMode.description(), "Lowers other apps when a call starts.");
    EXPECT_FALSE(callMode.has(ATSPI_STATE_CHECKED));
    EXPECT_TRUE(callMode.children().empty());
    press(callMode);
    EXPECT_TRUE(await([&] { return callMode.has(ATSPI_STATE_CHECKED); }));
    EXPECT_EQ(callMode.description(), "On until you turn it off.");
    expectGain(*speakers_, decibels(0.2));

    const auto microphone = panel().expect(ATSPI_ROLE_CHECK_BOX, "Microphone");
    EXPECT_TRUE(microphone.has(ATSPI_STATE_CHECKED));
    press(microphone);
    EXPECT_TRUE(await([&] { return microphone.description() == "Off for all apps."; }));
    EXPECT_FALSE(microphone.has(ATSPI_STATE_CHECKED));
}

} // namespace
} // namespace fadewell::integration
