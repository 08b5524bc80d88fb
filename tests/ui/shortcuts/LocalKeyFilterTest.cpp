#include "ui/shortcuts/LocalKeyFilter.h"

#include "platform/simulated/SimulatedHotKeyService.h"
#include "shortcuts/Modifiers.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

#include <gmock/gmock.h>

namespace fadewell {
namespace {

using namespace shortcuts;

class KeyCountingWindow final : public QWindow {
public:
    int keys = 0;

protected:
    void keyPressEvent(QKeyEvent* /*event*/) override { ++keys; }
    void keyReleaseEvent(QKeyEvent* /*event*/) override { ++keys; }
};

TEST(LocalKeyFilterTest, MonitorsSeeTheKeysOfWindowsFirstAndMaySwallowThem)
{
    const auto keys = std::make_shared<SimulatedHotKeyService>();
    const LocalKeyFilter filter(keys);
    KeyCountingWindow window;
    bool isSwallowing = false;
    std::vector<KeyEvent> seen;
    const auto send = [&](QEvent::Type type, quint32 scanCode, bool isRepeat) {
        const auto modifiers = Qt::MetaModifier | Qt::ShiftModifier | Qt::KeypadModifier;
        QKeyEvent event(type, Qt::Key_M, modifiers, scanCode, 0, 0, {}, isRepeat);
        QCoreApplication::sendEvent(&window, &event);
        return event.isAccepted();
    };
    send(QEvent::KeyPress, 58, false);
    EXPECT_EQ(window.keys, 1);
    auto monitor = keys->monitorKeys([&](const KeyEvent& event) {
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
        EXPECT_EQ(window.keys, step.keys);
    }
    EXPECT_EQ(seen.at(0).keyCode, 50); // as it was delivered
    EXPECT_EQ(seen.at(0).modifierFlags, event::command | event::shift | event::numericPad);
    EXPECT_EQ(seen.at(2).type, KeyEvent::Type::keyUp);
    monitor.cancel();
    send(QEvent::KeyPress, 58, false);
    EXPECT_EQ(seen.size(), 3U);
}

} // namespace
} // namespace fadewell

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
