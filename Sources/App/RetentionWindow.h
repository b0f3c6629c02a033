#pragma once

#include <cstdint>
#include <optional>

namespace stintbook {

/// How long observed activity is kept: a number of local calendar days, today included, or until it is deleted.
class RetentionWindow {
public:
    static RetentionWindow keepUntilDeleted() { return {}; }
    /// Absent for a count that is not positive.
    static std::optional<RetentionWindow> days(std::int64_t count)
    {
        if (count <= 0)
            return std::nullopt;
        RetentionWindow window;
        window.m_days = count;
        return window;
    }

    /// Absent: until it is deleted.
    std::optional<std::int64_t> dayCount() const { return m_days; }
    bool isLongerThan(const RetentionWindow& other) const
    {
        return other.m_days && (!m_days || *m_days > *other.m_days);
    }

    friend bool operator==(const RetentionWindow&, const RetentionWindow&) = default;

private:
    RetentionWindow() = default;

    std::optional<std::int64_t> m_days;
};

} // namespace stintbook
