#pragma once

#include <cmath>
#include <compare>
#include <functional>

namespace stintbook {

/// A length of time in seconds, signed, double precision.
struct Seconds {
    double value = 0;

    friend constexpr auto operator<=>(Seconds, Seconds) = default;
    constexpr Seconds operator-() const { return {-value}; }
    friend constexpr Seconds operator+(Seconds a, Seconds b) { return {a.value + b.value}; }
    friend constexpr Seconds operator-(Seconds a, Seconds b) { return {a.value - b.value}; }
    friend constexpr Seconds operator*(Seconds a, double factor) { return {a.value * factor}; }
    friend constexpr double operator/(Seconds a, Seconds b) { return a.value / b.value; }
    constexpr Seconds& operator+=(Seconds other)
    {
        value += other.value;
        return *this;
    }
    constexpr Seconds& operator-=(Seconds other)
    {
        value -= other.value;
        return *this;
    }
};

/// A point in time: seconds since 1970-01-01T00:00:00Z without leap seconds, double precision.
struct Instant {
    double secondsSinceEpoch = 0;

    friend constexpr auto operator<=>(Instant, Instant) = default;
    friend constexpr Instant operator+(Instant a, Seconds b) { return {a.secondsSinceEpoch + b.value}; }
    friend constexpr Instant operator-(Instant a, Seconds b) { return {a.secondsSinceEpoch - b.value}; }
    friend constexpr Seconds operator-(Instant a, Instant b)
    {
        return {a.secondsSinceEpoch - b.secondsSinceEpoch};
    }
    bool isFinite() const { return std::isfinite(secondsSinceEpoch); }
};

/// The half-open stretch [start, end).
struct Interval {
    Instant start;
    Instant end;

    friend constexpr bool operator==(const Interval&, const Interval&) = default;
    constexpr Seconds length() const { return end - start; }
    constexpr bool isEmpty() const { return !(start < end); }
    constexpr bool contains(Instant at) const { return start <= at && at < end; }
    /// Touching ends do not overlap.
    constexpr bool overlaps(const Interval& other) const { return start < other.end && other.start < end; }
};

} // namespace stintbook

template <> struct std::hash<stintbook::Instant> {
    std::size_t operator()(stintbook::Instant at) const { return std::hash<double>{}(at.secondsSinceEpoch); }
};
