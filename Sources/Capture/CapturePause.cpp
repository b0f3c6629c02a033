#include "Capture/CapturePause.h"

#include <string>

namespace stintbook {

namespace {

constexpr const char* timedKind = "timed";
constexpr const char* indefiniteKind = "indefinite";

template <typename T> std::optional<T> stored(const PreferenceStoring& preferences, std::string_view key)
{
    const auto value = preferences.value(key);
    const auto* found = value ? std::get_if<T>(&*value) : nullptr;
    return found ? std::optional(*found) : std::nullopt;
}

/// A length that is a whole number of seconds may come back as one.
std::optional<double> storedNumber(const PreferenceStoring& preferences, std::string_view key)
{
    if (const auto whole = stored<std::int64_t>(preferences, key))
        return static_cast<double>(*whole);
    return stored<double>(preferences, key);
}

RequestedPause until(Instant deadline, Instant now)
{
    return {deadline, deadline - now};
}

} // namespace

RequestedPause requestedPause(TimedPauseOption option, Instant now, const CalendarContext& calendar)
{
    switch (option) {
    case TimedPauseOption::fifteenMinutes:
        return until(now + Seconds{900}, now);
    case TimedPauseOption::oneHour:
        return until(now + Seconds{3600}, now);
    case TimedPauseOption::untilTomorrow:
        return until(calendar.nextDayStart(now), now);
    case TimedPauseOption::untilIResume:
        break;
    }
    return {};
}

std::optional<CapturePause> PreferencesCapturePauseStore::load() const
{
    // It may have been chosen from a terminal while this copy did not record yet.
    m_preferences.refresh();
    const auto kind = stored<std::string>(m_preferences, kindKey);
    if (kind == indefiniteKind)
        return CapturePause{};
    if (kind != timedKind)
        return std::nullopt;
    const auto deadline = stored<Instant>(m_preferences, deadlineKey);
    const auto length = storedNumber(m_preferences, lengthKey);
    if (!deadline || !length)
        return std::nullopt;
    return CapturePause{deadline, {*length}};
}

bool PreferencesCapturePauseStore::save(const std::optional<CapturePause>& pause)
{
    std::optional<PreferenceValue> kind;
    std::optional<PreferenceValue> deadline;
    std::optional<PreferenceValue> length;
    if (pause)
        kind = pause->deadline ? timedKind : indefiniteKind;
    if (pause && pause->deadline) {
        deadline = *pause->deadline;
        length = pause->length.value;
    }
    // The kind comes last when there is a pause and first when there is none: what stands there after an
    // interruption is never a kind without its deadline.
    const auto saveKind = [&] { return m_preferences.store(kindKey, kind); };
    const auto saveTime = [&] {
        return m_preferences.store(deadlineKey, deadline) && m_preferences.store(lengthKey, length);
    };
    return pause ? saveTime() && saveKind() : saveKind() && saveTime();
}

} // namespace stintbook
