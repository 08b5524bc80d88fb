#include "core/KnownCallApps.h"
#include "platform/simulated/SimulatedLoginItemService.h"
#include "tests/app/MixerModelFixture.h"
#include "ui/settings/SettingsModel.h"

namespace fadewell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SettingsTest : public MixerModelFixture {
protected:
    void SetUp() override
    {
        MixerModelFixture::SetUp();
        createModel();
        parts_.model = model_;
        parts_.workspace = workspace_;
        parts_.defaults = defaults_;
        parts_.loginItem = std::make_shared<LoginItem>(loginItems_);
        parts_.audioAccess = std::make_shared<AudioAccess>(context_, main_);
        parts_.systemPages = std::make_shared<SystemPages>(SystemPages::Environment{});
    }

    /// The rows of a list, each as its roles joined.
    static std::vector<std::string> rows(const QAbstractItemModel& list, std::vector<int> roles)
    {
        std::vector<std::string> result;
        for (int row = 0; row < list.rowCount(); ++row) {
            QStringList texts;
            for (const int role : roles) {
                texts << list.index(row, 0).data(role).toString();
            }
            result.push_back(texts.join(' ').toStdString());
        }
        return result;
    }

    std::shared_ptr<SimulatedLoginItemService> loginItems_ =
        std::make_shared<SimulatedLoginItemService>();
    SettingsParts parts_;
};

TEST_F(SettingsTest, ThePaneIsRememberedAndWhatIsNoneCountsAsTheFirst)
{
    onMain([this] {
        for (const char* stored : {"calls", "shortcuts"}) {
            SettingsModel(parts_).setPane(stored);
            EXPECT_EQ(SettingsModel(parts_).pane(), stored);
        }
        defaults_->set("settingsPane", std::string("advanced"));
        EXPECT_EQ(SettingsModel(parts_).pane(), "general");
        defaults_->set("settingsPane", true);
        EXPECT_EQ(SettingsModel(parts_).pane(), "general");
    });
}

TEST_F(SettingsTest, MissingPartsOfTheVersionAreQuestionMarks)
{
    const struct {
        std::optional<QString> version;
        std::optional<QString> build;
        const char* expected;
    } cases[] = {
        {"1.2", "34", "1.2 (34)"}, {"1.2", {}, "1.2 (?)"}, {{}, "34", "? (34)"}, {"", "", "? (?)"}};
    onMain([&] {
        for (const auto& each : cases) {
            parts_.version = each.version;
            parts_.build = each.build;
            EXPECT_EQ(GeneralPaneModel(parts_).version(), each.expected);
        }
    });
}

TEST_F(SettingsTest, ThePermissionIsUnknownUntilAnsweredAndAskedAgainOnEveryAppearance)
{
    std::optional<GeneralPaneModel> pane;
    const auto appear = [&] {
        main_->async([&] {
            pane->appear();
            EXPECT_FALSE(pane->hasPermission() && !pane->isPermissionKnown());
        });
    };
    hardware_->setCapturePermitted(false);
    onMain([&] {
        pane.emplace(parts_);
        pane->appear();
        EXPECT_FALSE(pane->isPermissionKnown());
    });
    EXPECT_TRUE(pane->isPermissionKnown());
    EXPECT_FALSE(pane->hasPermission());
    hardware_->setCapturePermitted(true);
    appear();
    time_->run();
    EXPECT_TRUE(pane->hasPermission());
    onMain([&] {
        pane->appear();
        pane.reset(); // An answer that comes after the window has gone.
    });
    EXPECT_THAT(taps(), IsEmpty());
}

TEST_F(SettingsTest, TheLoginSwitchShowsWhatTheSystemMadeOfIt)
{
    using enum LoginItemStatus;
    const struct {
        LoginItemStatus onRegister;
        std::optional<std::string> problem;
        bool isOn;
        bool needsApproval;
        Lines logged;
    } cases[] = {{enabled, {}, true, false, {}},
                 {requiresApproval, {}, true, true, {}},
                 {notFound, {}, false, false, {}},
                 {enabled, "no", false, false, {"login-item error: Login item change failed: no"}}};
    for (const auto& each : cases) {
        onMain([&] {
            loginItems_->current = notRegistered;
            parts_.loginItem.reset(); // The service tells only the one made last.
            parts_.loginItem = std::make_shared<LoginItem>(loginItems_);
            loginItems_->onRegister = each.onRegister;
            loginItems_->problem = each.problem;
            GeneralPaneModel pane(parts_);
            int told = 0;
            QObject::connect(&pane, &GeneralPaneModel::changed, [&] { ++told; });
            static_cast<void>(log_.take());
            pane.setOpensAtLogin(true);
            EXPECT_EQ(pane.opensAtLogin(), each.isOn);
            EXPECT_EQ(pane.needsLoginApproval(), each.needsApproval);
            EXPECT_EQ(log_.take(), each.logged);
            EXPECT_EQ(told, loginItems_->current == notRegistered ? 0 : 1);
            loginItems_->problem.reset();
            pane.setOpensAtLogin(false);
            EXPECT_FALSE(pane.opensAtLogin());
            loginItems_->changeElsewhere(requiresApproval);
            EXPECT_TRUE(pane.needsLoginApproval());
        });
    }
}

TEST_F(SettingsTest, TheIconGoesAwayAtOnceAndForTheNextTime)
{
    std::vector<bool> shown;
    parts_.setIconShown = [&](bool isShown) {
        shown.push_back(isShown);
    };
    onMain([&] {
        GeneralPaneModel pane(parts_);
        EXPECT_TRUE(pane.showsIcon());
        pane.setShowsIcon(false);
        EXPECT_FALSE(GeneralPaneModel(parts_).showsIcon());
    });
    EXPECT_THAT(shown, ElementsAre(false));
    EXPECT_EQ(defaults_->get<bool>("showInMenuBar"), false);
}

TEST_F(SettingsTest, CallAppsAreTheInstalledOnesAndSwitchingOneOffExcludesIt)
{
    workspace_->installed = {{"org.mozilla.firefox", {"/firefox", "Firefox", {}}},
                             {"us.zoom.xos", {"/zoom", "Zoom", {}}},
                             {"org.example.other", {"/other", "Other", {}}}};
    onMain([this] {
        CallsPaneModel pane(parts_);
        EXPECT_THAT(rows(*pane.apps(), {CallAppsModel::appName, CallAppsModel::isOn}),
                    ElementsAre("Zoom true", "Firefox true"));
        pane.setCounts("us.zoom.xos", false);
        EXPECT_THAT(rows(*pane.apps(), {CallAppsModel::appName, CallAppsModel::isOn}),
                    ElementsAre("Zoom false", "Firefox true"));
        EXPECT_THAT(CallModeSettings::load(*defaults_).excludedApps, ElementsAre("us.zoom.xos"));
        pane.setLevel(0.35);
        pane.setAutomatic(false);
        pane.setCounts("us.zoom.xos", true);
        EXPECT_EQ(model_->callModeSettings.get(), CallModeSettings(false, 0.35, {}));
        EXPECT_EQ(pane.levelText(), "35%");
    });
}

TEST_F(SettingsTest, ASummaryListsVolumeMuteAndOutput)
{
    using Text = std::optional<std::string>;
    const struct {
        AppAudioSettings settings;
        const char* expected;
    } cases[] = {
        {{0.7, false, {}, {}}, "70%"},
        {{0.404, true, {}, {}}, "40%, Muted"},
        {{1, false, Text("tv"), Text("LG TV")}, "100%, LG TV"},
        {{0, true, Text("gone"), {}}, "0%, Muted, Other Output"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(RememberedAppsModel::summaryOf(each.settings), each.expected);
    }
}

TEST_F(SettingsTest, ForgettingTakesAwayThatRowAndNoOther)
{
    std::unique_ptr<AppsPaneModel> pane;
    int resets = 0;
    onMain([&] {
        model_->setVolume(0.5, "org.example.a");
        model_->setVolume(0.5, "org.example.b");
        model_->setVolume(0.5, "org.example.c");
        pane = std::make_unique<AppsPaneModel>(parts_);
        QObject::connect(pane->apps(), &QAbstractItemModel::modelReset, [&resets] { ++resets; });
        model_->forget("org.example.b");
        model_->setVolume(0.25, "org.example.c");
        EXPECT_THAT(rows(*pane->apps(), {RememberedAppsModel::appID, RememberedAppsModel::summary}),
                    ElementsAre("org.example.a 50%", "org.example.c 25%"));
        EXPECT_EQ(resets, 0); // The keyboard would lose its place.
        model_->setVolume(0.5, "org.example.b");
        EXPECT_EQ(pane->apps()->count(), 3);
        pane->forgetAll();
        EXPECT_EQ(pane->apps()->count(), 0);
        pane.reset();
    });
}

} // namespace
} // namespace fadewell
