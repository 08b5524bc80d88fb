#include "ui/AppRowsModel.h"

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>

#include <gmock/gmock.h>

namespace fadewell {
namespace {

std::vector<AppRowView> rows(const std::string& ids)
{
    std::vector<AppRowView> rows;
    for (const char id : ids) {
        rows.push_back({.id = QString(QLatin1Char(id))});
    }
    return rows;
}

TEST(AppRowsModelTest, BecomesWhatItIsGivenAndRowsStayThemselves)
{
    AppRowsModel model(nullptr);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setRows(rows("m"));
    const QPersistentModelIndex kept = model.index(0);
    for (const auto* ids : {"amz", "zma", "m", "mabc", "cbam", "xmy", "ymx", "dm", "m"}) {
        model.setRows(rows(ids));
        std::string shown;
        for (int row = 0; row < model.count(); ++row) {
            shown += model.data(model.index(row), AppRowsModel::appID).toString().toStdString();
        }
        EXPECT_EQ(shown, ids);
        ASSERT_TRUE(kept.isValid()) << ids;
        EXPECT_EQ(kept.data(AppRowsModel::appID).toString(), "m");
    }
}

TEST(AppRowsModelTest, TellsOnlyOfRowsThatDiffer)
{
    AppRowsModel model(nullptr);
    auto shown = rows("abc");
    model.setRows(shown);
    std::vector<int> changed;
    QObject::connect(&model, &AppRowsModel::dataChanged, [&](const QModelIndex& first) {
        changed.push_back(first.row());
    });
    shown[1].volume = 0.5;
    model.setRows(shown);
    model.setRows(shown);
    EXPECT_THAT(changed, testing::ElementsAre(1));
}

} // namespace
} // namespace fadewell
