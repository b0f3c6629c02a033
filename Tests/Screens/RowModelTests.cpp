#include <QPersistentModelIndex>
#include <algorithm>
#include <map>
#include <random>
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

} // namespace
} // namespace stintbook
