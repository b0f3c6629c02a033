#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace stintbook {

/// An exact decimal number: coefficient × 10^exponent with at most 38 significant digits, all of them
/// among the `magnitudeDigits` places before and the `magnitudeDigits` places behind the point.
///
/// Sums, differences and products that fit are exact; a result with more digits, and every division
/// that does not come out even, is rounded once to 38 digits, half away from zero. A result beyond the
/// largest magnitude stays there. The value is kept normalised (no trailing zero in the coefficient, zero
/// has exponent 0), so equality is equality of numbers. There is no conversion to or from binary floating
/// point on the way to a bill; the one entrance from measured time is `wholeSeconds`.
class Decimal {
public:
    static constexpr int significantDigits = 38;
    static constexpr int magnitudeDigits = 128;

    Decimal() = default;
    Decimal(std::int64_t value); // NOLINT(google-explicit-constructor): every integer is a decimal

    /// Plain notation: an optional sign, digits, at most one '.', at least one digit, and optionally an
    /// exponent as JSON has it. Absent for anything else, for more than 38 significant digits and for
    /// digits outside the magnitude above.
    static std::optional<Decimal> parse(std::string_view text);

    /// A measured length as a whole number of seconds: truncate(x + 0.49999999999999994 with x's sign);
    /// zero when the length is not greater than zero or not finite.
    static Decimal wholeSeconds(double seconds);

    /// Plain notation with all digits, '.' as separator, no exponent, no trailing zeros.
    std::string text() const;

    bool isZero() const { return m_coefficient == 0; }
    bool isNegative() const { return m_coefficient < 0; }

    /// To `places` digits behind the point, halves away from zero.
    Decimal rounded(int places) const;
    /// Toward +infinity to a whole number.
    Decimal roundedUp() const;

    /// For display only.
    double approximate() const;

    friend Decimal operator+(const Decimal& a, const Decimal& b);
    friend Decimal operator-(const Decimal& a, const Decimal& b);
    friend Decimal operator*(const Decimal& a, const Decimal& b);
    /// The divisor is not zero.
    friend Decimal operator/(const Decimal& a, const Decimal& b);
    Decimal operator-() const;
    Decimal& operator+=(const Decimal& other) { return *this = *this + other; }
    Decimal& operator-=(const Decimal& other) { return *this = *this - other; }

    /// (a × b) ÷ divisor, rounded once. The divisor is not zero.
    static Decimal productOver(const Decimal& a, const Decimal& b, const Decimal& divisor);

    friend bool operator==(const Decimal& a, const Decimal& b) = default;
    friend std::strong_ordering operator<=>(const Decimal& a, const Decimal& b);

private:
    /// The wide integers behind the arithmetic are no business of whoever includes this.
    friend struct DecimalArithmetic;
    __extension__ using Integer = __int128;

    Integer m_coefficient = 0; // |coefficient| < 10^38, which 127 bits hold
    int m_exponent = 0;
};

} // namespace stintbook
