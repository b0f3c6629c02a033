#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "Base/Decimal.h"

namespace stintbook {

void PrintTo(const Decimal& number, std::ostream* stream)
{
    *stream << number.text();
}

namespace {

Decimal number(std::string_view text)
{
    return Decimal::parse(text).value();
}

std::string normalised(std::string_view text)
{
    const auto parsed = Decimal::parse(text);
    return parsed ? parsed->text() : "refused";
}

TEST(Decimal, ReadsPlainAndExponentNotationAndWritesPlain)
{
    EXPECT_EQ(normalised("+0012.500"), "12.5");
    EXPECT_EQ(normalised("-.05"), "-0.05");
    EXPECT_EQ(normalised("5."), "5");
    EXPECT_EQ(normalised("-0.00"), "0");
    EXPECT_EQ(normalised("1.25e3"), "1250");
    EXPECT_EQ(normalised("125E-4"), "0.0125");
    EXPECT_EQ(normalised("0e99999999999999999999"), "0");
}

TEST(Decimal, RefusesWhatIsNoNumberAndWhatHasTooManyDigitsOrTooLargeAnExponent)
{
    const std::string longest(38, '9');
    EXPECT_EQ(normalised(longest + "000"), longest + "000") << "zeros at the end are no significant digits";
    EXPECT_EQ(normalised("0." + std::string(60, '0') + longest).size(), 2U + 60 + 38);
    EXPECT_EQ(normalised("1e127").size(), 128U);
    EXPECT_EQ(normalised("1e-128").size(), 130U);
    for (const auto& text :
         {"", ".", "-", "+-1", "1.2.3", "1,5", " 1", "1 ", "0x1", "nan", "1e", "1e1.5", "e1", "1e128",
          "1e-129", "1e999999999", "1e-999999999", "1e99999999999999999999"})
        EXPECT_EQ(normalised(text), "refused") << text;
    EXPECT_EQ(normalised(longest + "9"), "refused");
}

TEST(Decimal, RoundsHalvesAwayFromZero)
{
    EXPECT_EQ(number("2.345").rounded(2), number("2.35"));
    EXPECT_EQ(number("-2.345").rounded(2), number("-2.35"));
    EXPECT_EQ(number("0.5").rounded(0), Decimal(1));
    EXPECT_EQ(number("0.004").rounded(0), Decimal(0));
    EXPECT_EQ(number("9.996").rounded(2), Decimal(10));
    EXPECT_EQ(number("1.5").rounded(500), number("1.5"));
    EXPECT_EQ(number("2.01").roundedUp(), Decimal(3));
    EXPECT_EQ(number("-2.9").roundedUp(), Decimal(-2));
    EXPECT_EQ(number("7").roundedUp(), Decimal(7));
}

TEST(Decimal, RoundsAProductAndAQuotientOnceToThirtyEightDigits)
{
    EXPECT_EQ((Decimal(2) / 3).text(), "0." + std::string(37, '6') + "7");
    // 1499…998.5 is two digits too long, and the carry runs through all the others.
    EXPECT_EQ((number(std::string(38, '9')) * number("1.5")).text(), "15" + std::string(37, '0'));
    EXPECT_EQ(Decimal::productOver(420, 60, 3600), Decimal(7));
    EXPECT_NE(Decimal(420) / 3600 * 60, Decimal(7)) << "which is why the product comes first";
}

TEST(Decimal, StaysAtTheLargestMagnitudeInsteadOfOverflowing)
{
    const Decimal large = number("1e127");
    EXPECT_EQ(large * large, large * 100);
    EXPECT_GT(large * large, large);
    EXPECT_EQ(-large * large, -(large * large));
    EXPECT_TRUE((number("1e-128") * number("0.1")).isZero());
}

TEST(Decimal, TakesMeasuredLengthsAsWholeSeconds)
{
    EXPECT_EQ(Decimal::wholeSeconds(59.5), Decimal(60));
    EXPECT_EQ(Decimal::wholeSeconds(0.49999999999999994), Decimal(0));
    EXPECT_EQ(Decimal::wholeSeconds(1e18), number("1e18"));
    for (const double nothing : {0.0, -5.0, std::nan(""), std::numeric_limits<double>::infinity()})
        EXPECT_TRUE(Decimal::wholeSeconds(nothing).isZero());
}

TEST(Decimal, SurvivesItsTextAndUndoesItsSums)
{
    std::mt19937_64 random(7);
    for (int i = 0; i < 2000; ++i) {
        const auto draw = [&] {
            const auto exponent = static_cast<int>(random() % 20) - 10;
            return number(std::to_string(static_cast<std::int64_t>(random())) + "e"
                          + std::to_string(exponent));
        };
        const Decimal a = draw();
        const Decimal b = draw();
        EXPECT_EQ(number(a.text()), a);
        EXPECT_EQ(a + b, b + a);
        EXPECT_EQ(a + b - b, a);
        EXPECT_EQ(a<b, b - a> Decimal(0));
        EXPECT_DOUBLE_EQ(a.approximate(), std::stod(a.text()));
    }
}

} // namespace
} // namespace stintbook
