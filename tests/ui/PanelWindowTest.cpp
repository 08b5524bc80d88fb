// The panel's window and views, operated by keyboard.

#include "tests/ui/PanelFixture.h"
#include "ui/style/MenuTracking.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTranslator>

#include <functional>
#include <set>

namespace fadewell {
namespace {

class PanelWindowTest : public PanelFixture {
protected:
    /// The nearest item at or above the one that has the keyboard which has this property.
    [[nodiscard]] static QVariant ofFocus(const char* property)
    {
        for (auto* item = window().activeFocusItem(); item != nullptr; item = item->parentItem()) {
            if (item->property(property).isValid()) {
                return item->property(property);
            }
        }
        return {};
    }

    static void forEach(QQuickItem* item, const std::function<void(QQuickItem&)>& visit)
    {
        if (item->isVisible()) {
            visit(*item);
            for (auto* child : item->childItems()) {
                forEach(child, visit);
            }
        }
    }
};

/// Marks every translatable text.
class PseudoTranslator final : public QTranslator {
public:
    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* /*context*/,
                                    const char* source,
                                    const char* /*disambiguation*/,
                                    int /*number*/) const override
    {
        return QStringLiteral("«") + QString::fromUtf8(source) + QStringLiteral("»");
    }
};

TEST_F(PanelWindowTest, TheKeyboardReachesEveryRowInOrderBothWays)
{
    constexpr int apps = 40; // Far more than are visible at once.
    for (int number = 0; number < apps; ++number) {
        addApp(100 + number, "org.example.app" + std::to_string(number), std::to_string(number));
    }
    open({.quit = [] {
    }});
    const auto walk = [&](Qt::Key key) {
        std::vector<int> rows;
        for (int step = 0; step < 4 * apps; ++step) {
            press(key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
            const auto row = ofFocus("index");
            if (row.isValid() && (rows.empty() || rows.back() != row.toInt())) {
                rows.push_back(row.toInt());
            }
            if (!row.isValid() && !rows.empty()) {
                break;
            }
        }
        return rows;
    };
    std::vector<int> expected(apps);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(walk(Qt::Key_Tab), expected);
    std::ranges::reverse(expected);
    EXPECT_EQ(walk(Qt::Key_Backtab), expected);
}

TEST_F(PanelWindowTest, KeysOperateWhatTheyReach)
{
    addApp(10, "org.example.music", "Music");
    open({.quit = [] {
    }});
    const auto settings = [&] {
        return row("org.example.music")->settings;
    };
    press(Qt::Key_Tab); // the menu
    press(Qt::Key_Tab); // the output
    press(Qt::Key_Space);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(settings().outputDeviceUID, "headset");
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_TRUE(settings().isMuted);
    press(Qt::Key_Tab);
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_NEAR(settings().volume(), 0.9, 1e-9);
    EXPECT_FALSE(settings().isMuted);
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_TRUE(model_->isCallModeActive.get());
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_TRUE(model_->microphone.get().isMuted);
}

TEST_F(PanelWindowTest, EscapeClosesAMenuFirstAndThenThePanel)
{
    open({.quit = [] {
    }});
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    press(Qt::Key_Escape);
    EXPECT_TRUE(panel_->isVisible());
    press(Qt::Key_Escape);
    EXPECT_FALSE(panel_->isVisible());
}

TEST_F(PanelWindowTest, AMenuHasTheKeysWhileItIsOpenInTheWindowThatHasThem)
{
    std::vector<bool> told;
    QObject context;
    QObject::connect(&MenuTracking::instance(), &MenuTracking::changed, &context, [&](bool is) {
        told.push_back(is);
    });
    open({.quit = [] {
    }});
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_EQ(told, (std::vector<bool>{true}));
    press(Qt::Key_Escape);
    press(Qt::Key_Space);
    EXPECT_EQ(told, (std::vector<bool>{true, false, true}));
    QWindow other;
    onMain([&] {
        other.show();
        other.requestActivate();
    });
    settle();
    EXPECT_EQ(told, (std::vector<bool>{true, false, true, false}));
}

TEST_F(PanelWindowTest, AMenuClosesWithItsRow)
{
    const auto process = addApp(10, "org.example.music", "Music");
    open();
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    hardware_->removeProcess(process);
    time_->advance(10); // The row lingers for a while.
    settle();
    EXPECT_EQ(model().apps()->count(), 0);
    press(Qt::Key_Down); // Nobody is there to choose for.
    press(Qt::Key_Return);
    onMain([&] { EXPECT_TRUE(model_->settings("org.example.music").isDefault()); });
    press(Qt::Key_Escape);
    EXPECT_FALSE(panel_->isVisible());
}

TEST_F(PanelWindowTest, TheClickThatClosesItDoesNotOpenItAgain)
{
    open();
    const auto click = [&] {
        onMain([&] { panel_->toggle(QRect(500, 0, 20, 20)); });
    };
    QFocusEvent lost(QEvent::FocusOut);
    onMain([&] { QCoreApplication::sendEvent(&window(), &lost); });
    EXPECT_FALSE(panel_->isVisible());
    click();
    EXPECT_FALSE(panel_->isVisible());
    click();
    EXPECT_TRUE(panel_->isVisible());
    click();
    EXPECT_FALSE(panel_->isVisible());
}

TEST_F(PanelWindowTest, AnOrdinaryWindowStaysWhenAnotherIsClicked)
{
    open();
    onMain([&] {
        panel_->hide();
        panel_->show();
        QFocusEvent lost(QEvent::FocusOut);
        QCoreApplication::sendEvent(&window(), &lost);
    });
    EXPECT_TRUE(panel_->isVisible());
}

TEST_F(PanelWindowTest, AnOrdinaryWindowIsWhereTheDesktopPutsIt)
{
    open();
    const auto placeAfter = [&](const std::optional<QRect>& anchor) {
        onMain([&] {
            panel_->hide();
            panel_->show(anchor);
        });
        settle();
        return window().position();
    };
    const auto dropped = placeAfter(QRect(500, 0, 20, 20));
    const auto ordinary = placeAfter(std::nullopt);
    EXPECT_NE(ordinary, dropped);
    EXPECT_EQ(placeAfter(QRect(500, 0, 20, 20)), dropped);
    onMain([&] {
        panel_ = std::make_unique<PanelWindow>(PanelWindow::Parts{model_, workspace_, obstacles_},
                                               PanelWindow::Actions{});
        panel_->show();
    });
    settle();
    EXPECT_EQ(window().position(), ordinary) << "as if it had never had another place";
}

TEST_F(PanelWindowTest, AThousandRowsMakeOnlyWhatIsVisible)
{
    std::vector<AppRowState> rows(1000);
    for (std::size_t number = 0; number < rows.size(); ++number) {
        rows[number].id = rows[number].name = "app " + std::to_string(number);
    }
    onMain([&] { model_->apps.set(rows); });
    open();
    EXPECT_EQ(window().width(), 320);
    EXPECT_LT(window().height(), 700);
    int made = 0;
    forEach(window().rootObject(),
            [&](QQuickItem& item) { made += item.property("appID").isValid() ? 1 : 0; });
    EXPECT_GT(made, 5);
    EXPECT_LT(made, 30);
}

TEST_F(PanelWindowTest, NoTextIsLeftOutOfTranslation)
{
    addApp(10, "us.zoom.xos", "ZZ");
    PseudoTranslator pseudo;
    QCoreApplication::installTranslator(&pseudo);
    onMain([&] {
        model_->needsAudioPermission.set(true);
        model_->isCallModeActive.set(true);
        model_->microphoneUserNames.set({"ZZ"});
    });
    open({.openSettings = [] {},
          .showAbout = [] {},
          .quit = [] {},
          .openPermissionSettings =
              [] {
              }});
    const std::set<QString> others{"", "Fadewell", "ZZ", "100%", "Microphone"}; // or programs' own
    int translated = 0;
    forEach(window().rootObject(), [&](QQuickItem& item) {
        for (const auto* property : {"text", "name", "title", "caption", "help"}) {
            const auto text = item.property(property).toString();
            translated += text.contains(QStringLiteral("«")) ? 1 : 0;
            const bool isSymbol = item.inherits("QQuickImage");
            EXPECT_TRUE(isSymbol || others.contains(text) || text.contains(QStringLiteral("«")))
                << text.toStdString();
        }
    });
    for (const auto& title : titles(*model().moreMenu())) {
        EXPECT_NE(title.find("«"), std::string::npos) << title;
    }
    EXPECT_GT(translated, 15);
    QCoreApplication::removeTranslator(&pseudo);
}

TEST(TranslationsTest, EveryCatalogueHasEveryText)
{
    for (const QString language : {"de", "ar"}) {
        const QTemporaryDir folder;
        const auto catalogue = folder.filePath("fadewell_" + language + ".ts");
        const QString source = FADEWELL_SOURCE_DIR;
        ASSERT_TRUE(
            QFile::copy(source + "/ui/translations/fadewell_" + language + ".ts", catalogue));
        QProcess update;
        update.setWorkingDirectory(source);
        update.start(FADEWELL_LUPDATE,
                     {"ui", "-I", ".", "-no-obsolete", "-silent", "-ts", catalogue});
        ASSERT_TRUE(update.waitForFinished());
        ASSERT_EQ(update.exitCode(), 0);
        QFile file(catalogue);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const auto text = file.readAll();
        EXPECT_GT(text.count("<message>"), 30);
        EXPECT_FALSE(text.contains("unfinished")) << "scripts/translations.sh adds what is new";
    }
}

} // namespace
} // namespace fadewell
