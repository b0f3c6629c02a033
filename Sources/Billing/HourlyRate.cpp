#include "Billing/HourlyRate.h"

#include <algorithm>

#include <fmt/format.h>

#include "Base/Text.h"

namespace stintbook {

namespace {

bool isASCIIDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// An optional sign, digits with at most one point among them, at least one digit.
bool looksLikeNumber(std::string_view text)
{
    if (text.starts_with('-') || text.starts_with('+'))
        text.remove_prefix(1);
    return std::ranges::all_of(text, [](char c) { return isASCIIDigit(c) || c == '.'; })
        && std::ranges::count(text, '.') <= 1 && std::ranges::any_of(text, isASCIIDigit);
}

/// From the first digit that is not zero to the last: 2 for 150 and for 0.0150.
std::size_t significantDigitCount(std::string_view text)
{
    std::string digits;
    std::ranges::copy_if(text, std::back_inserter(digits), isASCIIDigit);
    const auto first = digits.find_first_not_of('0');
    return first == std::string::npos ? 0 : digits.find_last_not_of('0') - first + 1;
}

} // namespace

std::string message(RateProblem problem)
{
    switch (problem) {
    case RateProblem::notANumber:
        return "Enter a number, for example 150 or 87.50.";
    case RateProblem::tooManyDigits:
        return fmt::format("That rate has more digits than can be stored exactly. "
                           "Use at most {} significant digits.",
                           Decimal::significantDigits);
    case RateProblem::negative:
        return "An hourly rate cannot be negative.";
    }
    return {};
}

std::expected<std::optional<Decimal>, RateProblem> validateRate(std::string_view text)
{
    const std::string typed = trimmed(text);
    if (typed.empty())
        return std::nullopt;
    if (!looksLikeNumber(typed))
        return std::unexpected(RateProblem::notANumber);
    if (significantDigitCount(typed) > Decimal::significantDigits)
        return std::unexpected(RateProblem::tooManyDigits);
    auto rate = Decimal::parse(typed);
    if (!rate)
        return std::unexpected(RateProblem::notANumber);
    if (rate->isNegative())
        return std::unexpected(RateProblem::negative);
    return rate;
}

std::optional<Decimal> amount(const Decimal& billedSeconds, const std::optional<Decimal>& hourlyRate,
                              Billability billability)
{
    if (billability == Billability::nonBillable || !hourlyRate)
        return std::nullopt;
    if (billedSeconds <= 0)
        return Decimal(0);
    return Decimal::productOver(billedSeconds, *hourlyRate, 3600);
}

} // namespace stintbook
