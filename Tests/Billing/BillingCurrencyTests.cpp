#include <gtest/gtest.h>

#include "Billing/AmountFormat.h"

namespace stintbook {

namespace {

std::string codeOf(const std::optional<BillingCurrency>& currency)
{
    return currency ? currency->code() : "none";
}

std::string formatted(std::string_view amount, std::string_view code, std::string_view locale)
{
    return formattedAmount(Decimal::parse(amount).value(), BillingCurrency::fromText(code).value(), locale);
}

TEST(BillingCurrency, IsAnISOCodeOnceTrimmedAndUpperCased)
{
    EXPECT_EQ(codeOf(BillingCurrency::fromText(" eur\n")), "EUR");
    for (const auto* text : {"", "EU", "EURO", "E R", "\u20ac", "ABC", "ZZZ"})
        EXPECT_EQ(codeOf(BillingCurrency::fromText(text)), "none") << text;
}

TEST(BillingCurrency, FollowsTheRegionOfALocale)
{
    EXPECT_EQ(codeOf(BillingCurrency::ofLocale("de_CH")), "CHF");
    EXPECT_EQ(codeOf(BillingCurrency::ofLocale("ja_JP.eucJP")), "JPY");
    for (const auto* locale : {"", "C", "C.UTF-8", "de", "not a locale"})
        EXPECT_EQ(codeOf(BillingCurrency::ofLocale(locale)), "none") << locale;
}

TEST(BillingCurrency, FormatsAmountsAsTheLocaleWritesThemInTheCurrencysOwnPlaces)
{
    EXPECT_EQ(formatted("1234.5", "EUR", "de_DE"), "1.234,50\u00a0\u20ac");
    EXPECT_EQ(formatted("1234.6", "JPY", "en_US"), "\u00a51,235");
    EXPECT_EQ(formatted("0.027777777777777777777777777777777777778", "USD", "en_US"), "$0.03");
    // Beyond what a double holds.
    EXPECT_EQ(formatted("12345678901234567890.12", "USD", "en_US"), "$12,345,678,901,234,567,890.12");
}

} // namespace

} // namespace stintbook
