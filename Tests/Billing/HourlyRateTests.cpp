#include <gtest/gtest.h>

#include "Billing/HourlyRate.h"

namespace stintbook {

namespace {

const std::string thirtyEight(38, '7');

std::string rateText(std::string_view typed)
{
    const auto rate = validateRate(typed);
    if (!rate)
        return message(rate.error());
    return *rate ? (*rate)->text() : "no rate";
}

TEST(HourlyRate, AcceptsPlainNumbersAndNothing)
{
    EXPECT_EQ(rateText(" 87.50\n"), "87.5");
    EXPECT_EQ(rateText("+150"), "150");
    EXPECT_EQ(rateText(".5"), "0.5");
    EXPECT_EQ(rateText("5."), "5");
    EXPECT_EQ(rateText("-0"), "0");
    EXPECT_EQ(rateText("\t \u00a0\r\n"), "no rate");
}

TEST(HourlyRate, RefusesWhatIsNoPlainNumber)
{
    for (const auto* typed : {"1.2.3", "1e3", "150 EUR", "12-3", "1,5", "--1", "+-1", "+", ".", "-.", "1\n2",
                              "nan", "\u0661\u0662", "1\u0301", "0x10"})
        EXPECT_EQ(rateText(typed), "Enter a number, for example 150 or 87.50.") << typed;
}

TEST(HourlyRate, CountsSignificantDigitsWithoutTheZerosAtBothEnds)
{
    const auto tooMany = message(RateProblem::tooManyDigits);
    EXPECT_EQ(rateText(thirtyEight + "000"), thirtyEight + "000");
    EXPECT_EQ(rateText("0.00" + thirtyEight), "0.00" + thirtyEight);
    EXPECT_EQ(rateText(thirtyEight + "7"), tooMany);
    EXPECT_EQ(rateText("7." + thirtyEight), tooMany);
    EXPECT_EQ(rateText("-" + thirtyEight + "7"), tooMany);
    EXPECT_EQ(rateText("7" + std::string(37, '0') + "7"), tooMany);
    // Few digits, but more places than a decimal has.
    EXPECT_EQ(rateText("1" + std::string(200, '0')), message(RateProblem::notANumber));
}

TEST(HourlyRate, PricesBilledTimeExactlyAndRoundsOnce)
{
    const auto priced = [](int seconds, std::string_view rate) {
        return amount(seconds, Decimal::parse(rate), Billability::billable).value_or(-1).text();
    };
    EXPECT_EQ(priced(420, "60"), "7"); // 420 ÷ 3600 alone would not end
    EXPECT_EQ(priced(5400, "87.50"), "131.25");
    EXPECT_EQ(priced(1, "100"), "0.027777777777777777777777777777777777778");
    EXPECT_EQ(priced(-5, "100"), "0");
    EXPECT_EQ(priced(3600, "0"), "0");
    EXPECT_EQ(amount(3600, std::nullopt, Billability::billable), std::nullopt);
    EXPECT_EQ(amount(3600, Decimal(100), Billability::nonBillable), std::nullopt);
}

} // namespace

} // namespace stintbook
