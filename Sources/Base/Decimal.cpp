#include "Base/Decimal.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include <boost/multiprecision/cpp_int.hpp>
#include <fmt/format.h>

namespace stintbook {

namespace {

/// Wide enough for every intermediate: the longest is a sum of two numbers at opposite ends of the
/// magnitude, some 260 digits.
using Wide = boost::multiprecision::int1024_t;

constexpr std::string_view decimalDigits = "0123456789";

Wide powerOfTen(int exponent)
{
    return boost::multiprecision::pow(Wide(10), static_cast<unsigned>(exponent));
}

/// How many decimal digits a number above zero has.
int digitCount(const Wide& positive)
{
    // 0.30103 is log10(2): at most one too few.
    const auto bits = static_cast<int>(boost::multiprecision::msb(positive));
    const int estimate = static_cast<int>(bits * 0.30102999566398119) + 1;
    return positive >= powerOfTen(estimate) ? estimate + 1 : estimate;
}

/// |numerator ÷ 10^places|, halves away from zero. `numerator` is not negative.
Wide withoutLowestDigits(const Wide& numerator, int places)
{
    Wide quotient;
    Wide remainder;
    const Wide divisor = powerOfTen(places);
    boost::multiprecision::divide_qr(numerator, divisor, quotient, remainder);
    if (remainder * 2 >= divisor)
        ++quotient;
    return quotient;
}

struct Notation {
    bool isNegative = false;
    std::string digits; // without leading and trailing zeros
    long long exponent = 0;
};

/// Splits plain or exponent notation into its parts; the exponent may still be absurd.
std::optional<Notation> readNotation(std::string_view text)
{
    Notation notation;
    if (text.starts_with('-') || text.starts_with('+')) {
        notation.isNegative = text.starts_with('-');
        text.remove_prefix(1);
    }

    const auto mantissa = text.substr(0, text.find_first_not_of("0123456789."));
    const auto point = mantissa.find('.');
    const auto fraction = point == std::string_view::npos ? std::string_view() : mantissa.substr(point + 1);
    notation.digits = mantissa.substr(0, point);
    notation.digits += fraction;
    if (notation.digits.empty() || fraction.contains('.'))
        return std::nullopt;

    text.remove_prefix(mantissa.size());
    if (!text.empty()) {
        if (text.front() != 'e' && text.front() != 'E')
            return std::nullopt;
        text.remove_prefix(1);
        const bool isExponentNegative = text.starts_with('-');
        if (isExponentNegative || text.starts_with('+'))
            text.remove_prefix(1);
        if (text.empty() || text.find_first_not_of(decimalDigits) != std::string_view::npos)
            return std::nullopt;
        constexpr long long absurd = std::numeric_limits<int>::max();
        if (std::from_chars(text.data(), text.data() + text.size(), notation.exponent).ec != std::errc())
            notation.exponent = absurd;
        notation.exponent = std::min(notation.exponent, absurd) * (isExponentNegative ? -1 : 1);
    }

    notation.exponent -= static_cast<long long>(fraction.size());
    const auto significant = notation.digits.find_last_not_of('0') + 1;
    notation.exponent += static_cast<long long>(notation.digits.size() - significant);
    notation.digits.resize(significant);
    notation.digits.erase(0, std::min(notation.digits.find_first_not_of('0'), notation.digits.size()));
    return notation;
}

} // namespace

struct DecimalArithmetic {
    /// The one way to a result: rounded to what a decimal holds and to no digit below 10^lowestPlace.
    static Decimal fitted(const Wide& coefficient, int exponent, int lowestPlace = -Decimal::magnitudeDigits)
    {
        Decimal result;
        if (coefficient.is_zero())
            return result;

        const bool isNegative = coefficient < 0;
        Wide magnitude = abs(coefficient);
        const int digits = digitCount(magnitude);
        const int excess = std::max({digits - Decimal::significantDigits, lowestPlace - exponent, 0});
        if (excess > digits)
            return result;
        if (excess > 0) {
            magnitude = withoutLowestDigits(magnitude, excess);
            exponent += excess;
        }
        if (magnitude.is_zero())
            return result;

        if (digitCount(magnitude) + exponent > Decimal::magnitudeDigits) {
            magnitude = powerOfTen(Decimal::significantDigits) - 1;
            exponent = Decimal::magnitudeDigits - Decimal::significantDigits;
        }
        auto narrow = static_cast<Decimal::Integer>(magnitude);
        while (narrow % 10 == 0) {
            narrow /= 10;
            ++exponent;
        }
        result.m_coefficient = isNegative ? -narrow : narrow;
        result.m_exponent = exponent;
        return result;
    }

    /// The coefficient as if the exponent were `exponent`, which is not above the real one.
    static Wide coefficientAt(const Decimal& number, int exponent)
    {
        return Wide(number.m_coefficient) * powerOfTen(number.m_exponent - exponent);
    }
};

Decimal::Decimal(std::int64_t value)
    : Decimal(DecimalArithmetic::fitted(value, 0))
{
}

std::optional<Decimal> Decimal::parse(std::string_view text)
{
    const auto notation = readNotation(text);
    if (!notation)
        return std::nullopt;
    if (notation->digits.empty())
        return Decimal();
    const auto digits = static_cast<long long>(notation->digits.size());
    if (digits > significantDigits || notation->exponent < -magnitudeDigits
        || digits + notation->exponent > magnitudeDigits)
        return std::nullopt;

    const Wide magnitude(notation->digits);
    return DecimalArithmetic::fitted(notation->isNegative ? Wide(-magnitude) : magnitude,
                                     static_cast<int>(notation->exponent));
}

Decimal Decimal::wholeSeconds(double seconds)
{
    if (!(seconds > 0) || !std::isfinite(seconds))
        return {};
    // The largest double below one half: with one half itself, 0.49999999999999994 would round up.
    return DecimalArithmetic::fitted(Wide(std::trunc(seconds + 0.49999999999999994)), 0);
}

std::string Decimal::text() const
{
    std::string digits = Wide(abs(Wide(m_coefficient))).str();
    if (m_exponent >= 0) {
        digits.append(static_cast<std::size_t>(m_exponent), '0');
    } else {
        const auto places = static_cast<std::size_t>(-m_exponent);
        if (digits.size() <= places)
            digits.insert(0, places + 1 - digits.size(), '0');
        digits.insert(digits.size() - places, 1, '.');
    }
    if (isZero())
        return "0";
    return isNegative() ? "-" + digits : digits;
}

Decimal Decimal::rounded(int places) const
{
    return DecimalArithmetic::fitted(Wide(m_coefficient), m_exponent, std::max(-places, -magnitudeDigits));
}

Decimal Decimal::roundedUp() const
{
    if (m_exponent >= 0)
        return *this;
    const Decimal whole = rounded(0);
    return whole < *this ? whole + 1 : whole;
}

double Decimal::approximate() const
{
    const std::string notation = fmt::format("{}e{}", Wide(m_coefficient).str(), m_exponent);
    double value = 0;
    std::from_chars(notation.data(), notation.data() + notation.size(), value);
    return value;
}

Decimal operator+(const Decimal& a, const Decimal& b)
{
    const int exponent = std::min(a.m_exponent, b.m_exponent);
    return DecimalArithmetic::fitted(DecimalArithmetic::coefficientAt(a, exponent)
                                         + DecimalArithmetic::coefficientAt(b, exponent),
                                     exponent);
}

Decimal operator-(const Decimal& a, const Decimal& b)
{
    return a + -b;
}

Decimal operator*(const Decimal& a, const Decimal& b)
{
    return DecimalArithmetic::fitted(Wide(a.m_coefficient) * Wide(b.m_coefficient),
                                     a.m_exponent + b.m_exponent);
}

Decimal operator/(const Decimal& a, const Decimal& b)
{
    return Decimal::productOver(a, 1, b);
}

Decimal Decimal::operator-() const
{
    Decimal negated = *this;
    negated.m_coefficient = -negated.m_coefficient;
    return negated;
}

Decimal Decimal::productOver(const Decimal& a, const Decimal& b, const Decimal& divisor)
{
    // With two digits more than are kept, those cut off by the integer division cannot change the
    // rounding: which way it goes shows in the first digit dropped.
    const int scale = 2 * significantDigits + 2;
    const Wide product = Wide(a.m_coefficient) * Wide(b.m_coefficient) * powerOfTen(scale);
    return DecimalArithmetic::fitted(product / Wide(divisor.m_coefficient),
                                     a.m_exponent + b.m_exponent - divisor.m_exponent - scale);
}

std::strong_ordering operator<=>(const Decimal& a, const Decimal& b)
{
    const int exponent = std::min(a.m_exponent, b.m_exponent);
    const int order =
        DecimalArithmetic::coefficientAt(a, exponent).compare(DecimalArithmetic::coefficientAt(b, exponent));
    return order <=> 0;
}

} // namespace stintbook
