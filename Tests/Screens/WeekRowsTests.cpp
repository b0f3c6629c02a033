#include <QSet>

#include <gtest/gtest.h>

#include "Screens/Review/WeekRows.h"

namespace stintbook {
namespace {

TEST(WeekRowsTest, TellTheDaysOfAWeekApartInFewLetters)
{
    EXPECT_EQ(weekdayMarks(QLocale(QStringLiteral("de_DE"))).join(u' '),
              QStringLiteral("Mo Di Mi Do Fr Sa So"));
    EXPECT_EQ(weekdayMarks(QLocale(QStringLiteral("en_GB"))).join(u' '),
              QStringLiteral("Mo Tu We Th Fr Sa Su"));
    // There the names begin alike.
    for (const auto* name : {"ar_EG", "he_IL"}) {
        const auto marks = weekdayMarks(QLocale(QString::fromLatin1(name)));
        EXPECT_EQ(QSet(marks.begin(), marks.end()).size(), 7) << name;
        EXPECT_LE(marks.join(QString()).size(), 14) << name;
    }
}

} // namespace
} // namespace stintbook
