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
    QString copied;
    std::function<void(const QString&)> chosen;
    DiagnosticsModel model({.gather =
                                [&](bool withNames) {
                                    gathered.push_back(withNames);
                                    return std::string(withNames ? "Firefox 40 %" : "app 1 40 %");
                                },
                            .copy = [&](const QString& text) { copied = text; },
                            .chooseFile =
                                [&](auto then) {
                                    chosen = then;
                                }});
    EXPECT_TRUE(model.leavesOutNames());
    EXPECT_EQ(model.text(), "app 1 40 %");
    model.copy();
    EXPECT_EQ(copied, "app 1 40 %");
    EXPECT_EQ(model.status(), "Copied");

    model.save();
    model.setLeavesOutNames(false); // While the question for the file is open.
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
}

TEST(DiagnosticsTest, AFileChosenAfterTheWindowHasGoneIsNotWritten)
{
    const QTemporaryDir folder;
    std::function<void(const QString&)> chosen;
    {
        DiagnosticsModel model({.gather = [](bool) { return std::string("text"); },
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
