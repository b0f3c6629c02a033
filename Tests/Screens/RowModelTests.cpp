#include <QPersistentModelIndex>
#include <algorithm>
#include <map>
#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Screens/Models/RowModel.h"

namespace stintbook {
namespace {

struct NumberedRow {
    int id = 0;
    int value = 0;

    friend bool operator==(const NumberedRow&, const NumberedRow&) = default;
};

TEST(RowModelTest, ShowsWhatIsWantedInWhateverOrderAndKeepsThePlaceOfWhatStays)
{
    std::mt19937 random{11};
    RowModel<NumberedRow> model({RowModel<NumberedRow>::role("value", &NumberedRow::value)});
    for (int round = 0; round < 400; ++round) {
        std::map<int, QPersistentModelIndex> followed;
        for (int row = 0; row < model.rowCount(); ++row)
            followed.emplace(model.rows()[static_cast<std::size_t>(row)].id, model.index(row));

        auto wanted = model.rows();
        std::erase_if(wanted, [&](const NumberedRow&) { return random() % 6 == 0; });
        for (int added = 0; added < 3; ++added)
            wanted.insert(wanted.begin() + static_cast<std::ptrdiff_t>(random() % (wanted.size() + 1)),
                          {.id = round * 3 + added, .value = round});
        const auto any = wanted.begin() + static_cast<std::ptrdiff_t>(random() % wanted.size());
        if (round % 3 == 0)
            std::ranges::shuffle(wanted, random);
        else if (round % 3 == 1)
            std::rotate(any, any + 1, wanted.end());
        else
            std::rotate(wanted.begin(), any, any + 1);
        model.show(wanted);

        ASSERT_EQ(model.rows(), wanted) << round;
        for (const auto& [id, index] : followed) {
            const bool stays = std::ranges::find(wanted, id, &NumberedRow::id) != wanted.end();
            ASSERT_EQ(index.isValid(), stays) << round;
            if (stays) {
                ASSERT_EQ(wanted[static_cast<std::size_t>(index.row())].id, id) << round;
            }
        }
    }
}

TEST(RowModelTest, PutsRowsOfSomethingElseInThePlacesOfTheFormer)
{
    RowModel<NumberedRow> model({RowModel<NumberedRow>::role("value", &NumberedRow::value)});
    int inserted = 0;
    int removed = 0;
    QObject::connect(&model, &QAbstractItemModel::rowsInserted,
                     [&](const QModelIndex&, int first, int last) { inserted += last - first + 1; });
    QObject::connect(&model, &QAbstractItemModel::rowsRemoved,
                     [&](const QModelIndex&, int first, int last) { removed += last - first + 1; });
    std::vector<std::pair<int, int>> changed;
    QObject::connect(&model, &QAbstractItemModel::dataChanged,
                     [&](const QModelIndex& first, const QModelIndex& last) {
                         changed.emplace_back(first.row(), last.row());
                     });
    using Rows = std::vector<NumberedRow>;
    model.showInPlace({{1, 1}, {2, 2}});
    EXPECT_TRUE(changed.empty());
    EXPECT_EQ(model.rows(), (Rows{{1, 1}, {2, 2}}));
    // One of them is there already, one comes twice.
    model.showInPlace({{3, 3}, {1, 4}, {3, 5}, {6, 6}});
    EXPECT_EQ(model.rows(), (Rows{{3, 3}, {1, 4}, {6, 6}}));
    EXPECT_EQ(inserted, 3);
    EXPECT_EQ(removed, 0);
    model.showInPlace({{7, 7}});
    EXPECT_EQ(model.rows(), (Rows{{7, 7}}));
    EXPECT_EQ(removed, 2);
    EXPECT_EQ(changed, (std::vector<std::pair<int, int>>{{0, 1}, {0, 0}}));
    // What is where is known.
    model.show({{6, 6}, {7, 8}});
    EXPECT_EQ(model.rows(), (Rows{{6, 6}, {7, 8}}));
    EXPECT_EQ(inserted, 4);
}

} // namespace
} // namespace stintbook
