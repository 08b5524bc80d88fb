#include "ui/shortcuts/LocalKeyFilter.h"

#include "shortcuts/Recorder.h"
#include "tests/shortcuts/ShortcutsFixture.h"
#include "ui/style/MenuTracking.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

namespace fadewell {
namespace {

using namespace shortcuts;
using testing::ElementsAre;
using testing::IsEmpty;

class KeyCountingWindow final : public QWindow {
public:
    int keys = 0;

protected:
    void keyPressEvent(QKeyEvent* /*event*/) override { ++keys; }
    void keyReleaseEvent(QKeyEvent* /*event*/) override { ++keys; }
};

class LocalKeyFilterTest : public ShortcutsFixture, private RecorderHost {
protected:
    /// Whether somebody accepted it.
    bool send(QEvent::Type type, quint32 scanCode, bool isRepeat = false)
    {
        const auto modifiers = Qt::MetaModifier | Qt::ShiftModifier | Qt::KeypadModifier;
        QKeyEvent event(type, Qt::Key_M, modifiers, scanCode, 0, 0, {}, isRepeat);
        event.ignore();
        QCoreApplication::sendEvent(&window_, &event);
        return event.isAccepted();
    }
    [[nodiscard]] std::shared_ptr<Recorder> recorder()
    {
        return Recorder::create(shortcuts_, *this, {.shortcutName = {"call"}});
    }

    KeyCountingWindow window_;

private:
    void present(const Alert& /*alert*/, std::function<void(int)> /*answered*/) override {}
    void clearFirstResponder() override {}
    [[nodiscard]] std::vector<MenuItem> mainMenu() const override { return {}; }
};

TEST_F(LocalKeyFilterTest, MonitorsSeeTheKeysOfWindowsFirstAndMaySwallowThem)
{
    const LocalKeyFilter filter(shortcuts_);
    bool isSwallowing = false;
    std::vector<KeyEvent> seen;
    send(QEvent::KeyPress, 58);
    EXPECT_EQ(window_.keys, 1);
    auto monitor = keys_->monitorKeys([&](const KeyEvent& event) {
        seen.push_back(event);
        return isSwallowing;
    });
    const struct {
        QEvent::Type type;
        quint32 scanCode;
        bool isRepeat;
        bool isSwallowing;
        std::size_t seen;
        int keys;
    } steps[] = {
        {QEvent::KeyPress, 58, false, false, 1, 2},
        {QEvent::KeyPress, 58, true, true, 2, 2},
        {QEvent::KeyRelease, 58, true, true, 2, 3},
        {QEvent::KeyRelease, 58, false, true, 3, 3},
        {QEvent::KeyPress, 0, false, true, 3, 4}, // made up by a program
    };
    for (const auto& step : steps) {
        isSwallowing = step.isSwallowing;
        send(step.type, step.scanCode, step.isRepeat);
        EXPECT_EQ(seen.size(), step.seen);
        EXPECT_EQ(window_.keys, step.keys);
    }
    EXPECT_EQ(seen.at(0).keyCode, 50); // as it was delivered
    EXPECT_EQ(seen.at(0).modifierFlags, event::command | event::shift | event::numericPad);
    EXPECT_EQ(seen.at(2).type, KeyEvent::Type::keyUp);
    monitor.cancel();
    send(QEvent::KeyPress, 58);
    EXPECT_EQ(seen.size(), 3U);
}

TEST_F(LocalKeyFilterTest, AnOpenMenuTakesTheHotKeysAndGivesThemBackWhateverBecomesOfIt)
{
    onMain([this] {
        const LocalKeyFilter filter(shortcuts_);
        const Shortcut used{50, classic::command | classic::shift};
        shortcuts_->storeShortcut(used, {"call"});
        shortcuts_->addKeyDownAction({"call"}, noting("+"));
        shortcuts_->addKeyUpAction({"call"}, noting("-"));
        auto menu = std::make_unique<QObject>();
        auto submenu = std::make_unique<QObject>();
        MenuTracking::instance().setTracking(menu.get(), true);
        MenuTracking::instance().setTracking(submenu.get(), true);
        submenu.reset();
        EXPECT_THAT(keys_->registered(), IsEmpty());
        EXPECT_FALSE(send(QEvent::ShortcutOverride, 58)); // The menu's own are still found.
        send(QEvent::KeyPress, 58);
        send(QEvent::KeyPress, 58, true);
        send(QEvent::KeyRelease, 58);
        EXPECT_THAT(done_, ElementsAre("+", "-"));
        EXPECT_EQ(window_.keys, 1); // the repeated one
        menu.reset();
        EXPECT_THAT(keys_->registered(), ElementsAre(used));
    });
}

TEST_F(LocalKeyFilterTest, WhileAShortcutIsRecordedTheWindowsOwnAreKeysLikeAnyOther)
{
    onMain([this] {
        const LocalKeyFilter filter(shortcuts_);
        const auto field = recorder();
        field->becomeFirstResponder();
        EXPECT_TRUE(send(QEvent::ShortcutOverride, 58));
        EXPECT_TRUE(field->isRecording.get());
        send(QEvent::KeyPress, 58);
        EXPECT_EQ(shortcuts_->shortcut({"call"}),
                  (Shortcut{50, classic::command | classic::shift}));
        EXPECT_FALSE(send(QEvent::ShortcutOverride, 58));
    });
}

} // namespace
} // namespace fadewell

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
