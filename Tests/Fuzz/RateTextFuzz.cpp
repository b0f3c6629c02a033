// A typed rate that is accepted is a number that is not negative, says exactly what was typed, and is read
// back from its own text; one that is refused is refused with spaces around it too.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Base/Text.h"
#include "Billing/HourlyRate.h"
#include "Require.h"

namespace {

/// A number's digits without sign, point and the zeros at both ends.
std::string significantDigits(std::string_view text)
{
    std::string digits;
    for (const char c : text) {
        if (c >= '0' && c <= '9')
            digits += c;
    }
    digits.erase(0, digits.find_first_not_of('0'));
    digits.erase(digits.find_last_not_of('0') + 1);
    return digits;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string typed(data, data + size);
    const auto rate = stintbook::validateRate(typed);
    require(stintbook::validateRate(" \t" + typed + "\n") == rate);
    if (!rate)
        return 0;

    require(rate->has_value() != stintbook::isBlank(typed));
    if (!rate->has_value())
        return 0;
    const auto& number = **rate;
    require(!number.isNegative());
    require(significantDigits(number.text()) == significantDigits(typed));
    require(stintbook::validateRate(number.text()) == rate);
    const auto hour = stintbook::amount(3600, number, stintbook::Billability::billable);
    require(hour == number);
    return 0;
}
