#include "base/MemoryUserDefaults.h"
#include "platform/linux/desktop/X11FrontWindow.h"
#include "platform/linux/hotkeys/X11HotKeyService.h"
#include "shortcuts/KeyboardShortcuts.h"
#include "shortcuts/Modifiers.h"
#include "tests/integration/keyboard/Loop.h"
#include "tests/integration/keyboard/XServer.h"

#include <array>
#include <gmock/gmock.h>
#include <unistd.h>

namespace fadewell::integration {
namespace {

using namespace shortcuts;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

// X keycodes.
constexpr int capsLock = 66;
constexpr int numLock = 77;
constexpr int leftShift = 50;
constexpr int leftControl = 37;
constexpr int leftAlt = 64;
constexpr int leftSuper = 133;
constexpr int keyM = 58;
constexpr int keyF5 = 71;
constexpr int keyUp = 111;

const Shortcut superM{46, classic::command};

/// Fadewell's shortcuts on an X server, with one name whose presses and releases are noted.
class HotKeyTest : public testing::Test {
protected:
    HotKeyTest()
    {
        loop_.run([this] {
            std::string error;
            keys_ =
                X11HotKeyService::create(server_.display(), loop_.queue(), loop_.watch(), error);
            if (!keys_) {
                throw std::runtime_error(error);
            }
            shortcuts_ = KeyboardShortcuts::create(
                loop_.queue(), std::make_shared<MemoryUserDefaults>(), keys_);
            shortcuts_->addKeyDownAction(name_, [this] { seen_ += "+"; });
            shortcuts_->addKeyUpAction(name_, [this] { seen_ += "-"; });
        });
        server_.setLayout("us");
        loop_.turnFor(50ms);
    }
    ~HotKeyTest() override
    {
        loop_.run([this] {
            shortcuts_.reset();
            keys_.reset();
        });
    }

    void use(const std::optional<Shortcut>& shortcut)
    {
        loop_.run([&] { shortcuts_->storeShortcut(shortcut, name_); });
    }

    /// What presses and releases came, once they have surely all come.
    [[nodiscard]] std::string seen()
    {
        loop_.turnFor(40ms);
        return std::exchange(seen_, "");
    }

    XServer server_;
    Loop loop_;
    std::shared_ptr<X11HotKeyService> keys_;
    std::shared_ptr<KeyboardShortcuts> shortcuts_;
    const Name name_{"call"};
    std::string seen_;
};

TEST_F(HotKeyTest, ActsOnceWhateverTheLayoutAndTheLocks)
{
    const struct {
        Shortcut shortcut;
        std::vector<int> keys;
    } combinations[] = {
        {superM, {leftSuper, keyM}},
        {{96, classic::option}, {leftAlt, keyF5}},
        {{126, classic::shift | classic::control | classic::function},
         {leftShift, leftControl, keyUp}},
    };
    const auto expectAll = [&](const std::string& where) {
        for (const auto& each : combinations) {
            use(each.shortcut);
            server_.strike(each.keys);
            EXPECT_EQ(seen(), "+-") << where << each.keys.back();
        }
    };
    for (const auto* layout : {"us", "de", "ru"}) {
        server_.setLayout(layout);
        expectAll(layout);
    }
    server_.strike({numLock});
    expectAll("num lock");
    server_.strike({capsLock});
    expectAll("both locks");
    server_.strike({numLock});
    expectAll("caps lock");
    server_.strike({capsLock});
    server_.setLayout("us,ru", "grp:caps_toggle");
    server_.strike({capsLock});
    expectAll("second layout");
}

TEST_F(HotKeyTest, AHeldKeyActsOnceAndOtherKeysNotAtAll)
{
    use(superM);
    server_.press(leftSuper);
    server_.press(keyM);
    loop_.turnFor(1200ms); // The server repeats after 660 ms.
    server_.release(leftSuper);
    EXPECT_EQ(seen(), "+");
    server_.release(keyM);
    EXPECT_EQ(seen(), "-");
    server_.strike({leftSuper, leftShift, keyM});
    server_.strike({keyM});
    EXPECT_EQ(seen(), "");
}

TEST_F(HotKeyTest, CombinationsMayOverlap)
{
    use(superM);
    loop_.run([this] {
        const Name other{"other"};
        shortcuts_->storeShortcut(Shortcut{96, classic::command}, other);
        shortcuts_->addKeyDownAction(other, [this] { seen_ += "("; });
        shortcuts_->addKeyUpAction(other, [this] { seen_ += ")"; });
    });
    server_.press(leftSuper);
    server_.press(keyM);
    server_.press(keyF5);
    server_.release(keyM);
    server_.release(keyF5);
    server_.release(leftSuper);
    EXPECT_EQ(seen(), "+(-)");
    server_.strike({leftSuper, keyF5});
    server_.strike({leftSuper, keyM, keyF5});
    EXPECT_EQ(seen(), "()+()-");
}

TEST_F(HotKeyTest, NothingWakesItButItsOwnKeys)
{
    use(superM);
    server_.strike({keyM}); // The server tells of the keyboard that is typed on first.
    loop_.turnFor(50ms);
    loop_.wakeUps = 0;
    for (int times = 0; times < 3; ++times) {
        server_.strike({leftShift, keyUp});
        server_.strike({keyM});
        server_.strike({leftSuper});
        loop_.turnFor(20ms);
    }
    EXPECT_EQ(loop_.wakeUps, 0);
}

TEST_F(HotKeyTest, ACombinationOfAnotherProgramIsRefusedAndLeftAlone)
{
    OtherClient other(server_);
    ASSERT_TRUE(other.grab(keyM, XCB_MOD_MASK_4 | XCB_MOD_MASK_2));
    loop_.run([this] { EXPECT_TRUE(keys_->isHeldElsewhere(superM)); });
    use(superM);
    for (const int locks : {0, int{XCB_MOD_MASK_LOCK}, XCB_MOD_MASK_2 | XCB_MOD_MASK_LOCK}) {
        EXPECT_TRUE(other.grab(keyM, static_cast<std::uint16_t>(XCB_MOD_MASK_4 | locks))) << locks;
        other.ungrab(keyM, static_cast<std::uint16_t>(XCB_MOD_MASK_4 | locks));
    }
    other.ungrab(keyM, XCB_MOD_MASK_4 | XCB_MOD_MASK_2);
    loop_.run([this] { EXPECT_FALSE(keys_->isHeldElsewhere(superM)); });
    use(superM);
    server_.strike({leftSuper, keyM});
    EXPECT_EQ(seen(), "+-");
    use(std::nullopt);
    EXPECT_TRUE(other.grab(keyM, XCB_MOD_MASK_4));
}

TEST_F(HotKeyTest, AnOpenMenuGivesTheGrabBackAndSeesTheKeyItself)
{
    OtherClient other(server_);
    use(superM);
    EXPECT_FALSE(other.grab(keyM, XCB_MOD_MASK_4));
    loop_.run([this] {
        shortcuts_->notifications()->post(notification::menuDidBeginTracking);
        constexpr std::uint32_t evdevM = keyM - 8;
        EXPECT_TRUE(keys_->deliverLocalKey(evdevM, true, false, event::command));
        EXPECT_FALSE(keys_->deliverLocalKey(evdevM, true, true, event::command));
        EXPECT_TRUE(keys_->deliverLocalKey(evdevM, false, false, event::command));
    });
    EXPECT_EQ(seen(), "+-");
    EXPECT_TRUE(other.grab(keyM, XCB_MOD_MASK_4));
    other.ungrab(keyM, XCB_MOD_MASK_4);
    loop_.run([this] { shortcuts_->notifications()->post(notification::menuDidEndTracking); });
    server_.strike({leftSuper, keyM});
    EXPECT_EQ(seen(), "+-");
}

TEST_F(HotKeyTest, KeysAreNamedByTheLayout)
{
    constexpr std::uint32_t y = 0x10;
    constexpr std::uint32_t semicolon = 0x29;
    const struct {
        const char* layout;
        const char* y;
        const char* semicolon;
    } cases[] = {{"de", "z", "ö"}, {"ru", "y", ";"}, {"ru,fr", "y", "m"}, {"us", "y", ";"}};
    int changes = 0;
    const auto subscription = keys_->onLayoutChanged([&] { ++changes; });
    for (const auto& each : cases) {
        changes = 0;
        server_.setLayout(each.layout);
        EXPECT_TRUE(loop_.until([&] { return changes > 0; })) << each.layout;
        loop_.turnFor(30ms);
        EXPECT_EQ(keys_->character(y), each.y) << each.layout;
        EXPECT_EQ(keys_->character(semicolon), each.semicolon) << each.layout;
        EXPECT_EQ(keys_->character(0x31), "");
    }
}

TEST_F(HotKeyTest, FollowsSuperToAnotherModifier)
{
    use(superM);
    server_.run({"xmodmap", "-e", "clear mod4", "-e", "clear mod3", "-e", "add mod3 = Super_L"});
    loop_.turnFor(100ms);
    server_.strike({leftSuper, keyM});
    EXPECT_EQ(seen(), "+-");
    OtherClient other(server_);
    EXPECT_TRUE(other.grab(keyM, XCB_MOD_MASK_4));
}

TEST_F(HotKeyTest, TheWindowInFrontIsTheWindowManagersAnswer)
{
    X11FrontWindow front(server_.display());
    EXPECT_FALSE(front.isTold());
    OtherClient other(server_);
    const auto pid = static_cast<std::uint32_t>(getpid());
    std::array<char, 256> host{};
    ASSERT_EQ(gethostname(host.data(), host.size() - 1), 0);
    const struct {
        std::uint32_t window;
        std::optional<FrontWindow::Window> expected;
    } cases[] = {
        {XCB_WINDOW_NONE, {}},
        {other.openWindow(pid, host.data()), FrontWindow::Window{getpid(), "Player"}},
        {other.openWindow(pid, "elsewhere"), FrontWindow::Window{{}, "Player"}},
    };
    for (const auto& each : cases) {
        other.setActiveWindow(each.window);
        EXPECT_TRUE(front.isTold());
        EXPECT_EQ(front.window(), each.expected);
    }
    server_.kill();
    EXPECT_EQ(front.window(), std::nullopt);
    EXPECT_FALSE(front.isTold());
}

TEST_F(HotKeyTest, WithoutTheServerThereAreNoShortcuts)
{
    use(superM);
    server_.kill();
    EXPECT_TRUE(loop_.until([this] { return keys_->support() == HotKeyService::Support::none; }));
    use(Shortcut{40, classic::command});
    EXPECT_EQ(shortcuts_->center()->count(), 0U);
}

} // namespace
} // namespace fadewell::integration
