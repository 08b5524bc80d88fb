#include "ui/diagnostics/DiagnosticsModel.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace fadewell {
namespace {

using testing::ElementsAre;

TEST(DiagnosticsTest, NamesAreLeftOutUntilTheyAreWantedAndWhatIsShownIsWhatLeaves)
{
    const QTemporaryDir folder;
    std::vector<bool> gathered;
    std::vector<std::function<void()>> answers; // as late as the test likes
    QString copied;
    std::function<void(const QString&)> chosen;
    DiagnosticsModel model({.gather =
                                [&](bool withNames, auto done) {
                                    gathered.push_back(withNames);
                                    answers.push_back(
                                        [=] { done(withNames ? "Firefox 40 %" : "app 1 40 %"); });
                                },
                            .copy = [&](const QString& text) { copied = text; },
                            .chooseFile =
                                [&](auto then) {
                                    chosen = then;
                                }});
    EXPECT_TRUE(model.leavesOutNames());
    EXPECT_TRUE(model.isGathering());
    EXPECT_EQ(model.text(), "");
    answers[0]();
    EXPECT_FALSE(model.isGathering());
    EXPECT_EQ(model.text(), "app 1 40 %");
    model.copy();
    EXPECT_EQ(copied, "app 1 40 %");
    EXPECT_EQ(model.status(), "Copied");

    model.save();
    model.setLeavesOutNames(false); // While the question for the file is open.
    EXPECT_EQ(model.status(), "Gathering…");
    EXPECT_EQ(model.text(), "");
    answers[1]();
    EXPECT_EQ(model.status(), "");
    EXPECT_EQ(model.text(), "Firefox 40 %");
    chosen(folder.filePath("a.txt"));
    EXPECT_EQ(model.status(), "Saved as a.txt");
    QFile file(folder.filePath("a.txt"));
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    EXPECT_EQ(file.readAll(), "app 1 40 %");

    chosen(folder.filePath("missing/a.txt"));
    EXPECT_TRUE(model.status().startsWith("It couldn’t be saved: "))
        << model.status().toStdString();
    model.setLeavesOutNames(false);
    EXPECT_THAT(gathered, ElementsAre(false, true)) << "gathered again without a reason";

    model.setLeavesOutNames(true);
    model.setLeavesOutNames(false);
    model.setLeavesOutNames(true);
    answers[3]();
    EXPECT_EQ(model.text(), "") << "names that are not wanted any more";
    answers[4]();
    EXPECT_EQ(model.text(), "app 1 40 %");
}

TEST(DiagnosticsTest, AFileChosenAfterTheWindowHasGoneIsNotWritten)
{
    const QTemporaryDir folder;
    std::function<void(const QString&)> chosen;
    {
        DiagnosticsModel model({.gather = [](bool, auto done) { done("text"); },
                                .copy = {},
                                .chooseFile =
                                    [&](auto then) {
                                        chosen = then;
                                    }});
        model.save();
    }
    chosen(folder.filePath("a.txt"));
    EXPECT_FALSE(QFile::exists(folder.filePath("a.txt")));
}

} // namespace
} // namespace fadewell
