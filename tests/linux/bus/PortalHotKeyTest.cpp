#include "platform/linux/bus/PortalHotKeyService.h"
#include "shortcuts/Modifiers.h"
#include "tests/linux/bus/FakePortal.h"
#include "tests/linux/bus/PrivateBus.h"
#include "tests/support/CapturedLog.h"

#include <gmock/gmock.h>
#include <optional>

namespace fadewell {
namespace {

using namespace shortcuts;
using Support = HotKeyService::Support;
using testing::ElementsAre;
using testing::IsEmpty;
using Triggers = std::map<std::string, std::string>;

class PortalHotKeyTest : public PrivateBus {
protected:
    void SetUp() override
    {
        PrivateBus::SetUp();
        portal_.emplace(connect("portal"));
        portal_->assigned = {{"call", "Ctrl+Alt+M"}};
    }
    void TearDown() override
    {
        support_.cancel();
        keys_.reset();
        portal_.reset();
        PrivateBus::TearDown();
    }

    void startProgram()
    {
        keys_ = std::make_unique<PortalHotKeyService>(connect("program"));
        support_ = keys_->onSupportChanged([this] { bindIfPossible(); });
    }

    void bindIfPossible()
    {
        if (keys_->support() == Support::portal) {
            const Shortcut preferred{46, classic::control | classic::option};
            keys_->bindNamed({{"call", "Turn Call Mode On or Off", preferred}, {"mic", "Mic"}},
                             [this](const std::string& id, bool isPressed) {
                                 fired_.push_back(id + (isPressed ? "+" : "-"));
                             });
        }
    }

    [[nodiscard]] bool isShowing(const Triggers& triggers) const
    {
        return waitUntil([&] { return keys_->namedTriggers() == triggers; });
    }
    [[nodiscard]] bool isCalled(const char* member) const
    {
        return waitUntil(
            [&] { return std::count(portal_->calls.begin(), portal_->calls.end(), member) > 0; });
    }

    const Triggers callOnly_{{"call", "Ctrl+Alt+M"}};
    CapturedLog log_;
    std::optional<FakePortal> portal_;
    std::unique_ptr<PortalHotKeyService> keys_;
    Subscription support_;
    std::vector<std::string> fired_;
};

TEST_F(PortalHotKeyTest, TheDesktopAssignsCombinationsAndReportsTheirKeys)
{
    portal_->start();
    startProgram();
    ASSERT_TRUE(isShowing(callOnly_));
    EXPECT_THAT(portal_->calls, ElementsAre("Register", "Get", "CreateSession", "BindShortcuts"));
    EXPECT_EQ(portal_->registeredID, "app.fadewell.Fadewell");
    ASSERT_EQ(portal_->bound.size(), 2);
    EXPECT_EQ(portal_->bound[0].properties.value("description"), "Turn Call Mode On or Off");
    EXPECT_EQ(portal_->bound[0].properties.value("preferred_trigger"), "CTRL+ALT+m");
    EXPECT_FALSE(portal_->bound[1].properties.contains("preferred_trigger"));

    portal_->emitKey(true, "call", "/another/session");
    portal_->emitKey(true, "call", portal_->session);
    portal_->emitKey(false, "call", portal_->session);
    EXPECT_TRUE(waitUntil([this] { return fired_.size() >= 2; }));
    EXPECT_THAT(fired_, ElementsAre("call+", "call-"));

    int changes = 0;
    const auto subscription = keys_->onNamedTriggersChanged([&] { ++changes; });
    portal_->assigned = {{"mic", "F9"}};
    portal_->emitChanged();
    portal_->emitChanged();
    EXPECT_TRUE(isShowing({{"mic", "F9"}}));
    portal_->emitClosed();
    EXPECT_TRUE(isShowing({}));
    EXPECT_EQ(changes, 2);
}

TEST_F(PortalHotKeyTest, ARefusalIsTakenAndNotAskedAgain)
{
    const struct {
        uint create;
        uint bind;
        std::vector<std::string> calls;
    } cases[] = {
        {1, 0, {"Register", "Get", "CreateSession"}},
        {0, 1, {"Register", "Get", "CreateSession", "BindShortcuts", "Close"}},
        {0, 2, {"Register", "Get", "CreateSession", "BindShortcuts", "Close"}},
    };
    portal_->start();
    for (const auto& each : cases) {
        portal_->createAnswer = each.create;
        portal_->bindAnswer = each.bind;
        portal_->calls.clear();
        std::vector<std::string> lines;
        keys_.reset();
        startProgram();
        EXPECT_TRUE(isCalled(each.calls.back().c_str()));
        EXPECT_TRUE(waitUntil([&] { return !(lines = log_.take()).empty(); }));
        EXPECT_EQ(portal_->calls, each.calls);
        EXPECT_EQ(lines.size(), 1U);
        EXPECT_THAT(keys_->namedTriggers(), IsEmpty());
    }
}

TEST_F(PortalHotKeyTest, PortalsComeLateAndGoAndHaveNoShortcuts)
{
    startProgram();
    EXPECT_EQ(keys_->support(), Support::none);
    EXPECT_NE(keys_->bindNamed({}, {}), noErr);
    portal_->start();
    EXPECT_TRUE(isShowing(callOnly_));
    EXPECT_EQ(keys_->support(), Support::portal);
    portal_->stop();
    EXPECT_TRUE(isShowing({}));
    EXPECT_EQ(keys_->support(), Support::none);
    portal_->calls.clear();
    portal_->hasShortcuts = false;
    portal_->start();
    EXPECT_TRUE(isCalled("Get"));
    portal_->stop();
    portal_->hasShortcuts = true;
    portal_->start();
    EXPECT_TRUE(isShowing(callOnly_));
}

TEST_F(PortalHotKeyTest, BindingAnewTakesThePlaceOfTheOldSession)
{
    portal_->start();
    startProgram();
    ASSERT_TRUE(isShowing(callOnly_));
    const auto old = portal_->session;
    bindIfPossible();
    EXPECT_TRUE(waitUntil([&] { return portal_->session != old; }));
    EXPECT_TRUE(isShowing(callOnly_));
    EXPECT_TRUE(isCalled("Close"));
    portal_->emitKey(true, "call", old);
    portal_->emitKey(true, "mic", portal_->session);
    EXPECT_TRUE(waitUntil([this] { return !fired_.empty(); }));
    EXPECT_THAT(fired_, ElementsAre("mic+"));
}

TEST(PortalTriggerTest, CombinationsAreWrittenInTheWordsOfTheStandard)
{
    const struct {
        Shortcut shortcut;
        const char* expected;
    } cases[] = {
        {{46, classic::command | classic::shift}, "SHIFT+LOGO+m"},
        {{96, classic::function}, "F5"},
        {{43, classic::control}, "CTRL+comma"},
        {{126, classic::option}, "ALT+Up"},
        {{46, classic::function}, ""},
        {{200, classic::control}, ""},
        {{-1, classic::control}, ""},
    };
    for (const auto& [shortcut, expected] : cases) {
        EXPECT_EQ(portalTrigger(shortcut), expected);
    }
}

TEST(PortalTriggerTest, WhatIsNoListHasNoTriggers)
{
    EXPECT_THAT(triggersOf(QVariant()), IsEmpty());
    EXPECT_THAT(triggersOf(QVariant("call")), IsEmpty());
    EXPECT_THAT(triggersOf(QVariant(QVariantList{1, 2})), IsEmpty());
}

} // namespace
} // namespace fadewell
