#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "Base/Instant.h"
#include "Base/Preferences.h"
#include "Base/RawValue.h"
#include "Domain/CalendarContext.h"

namespace stintbook {

/// A pause as it is remembered across restarts.
struct CapturePause {
    /// Absent: until its user resumes.
    std::optional<Instant> deadline;
    /// A timed pause's full length as chosen, for display; 0 for an indefinite one.
    Seconds length;

    friend bool operator==(const CapturePause&, const CapturePause&) = default;
};

/// The choices, in menu order.
enum class TimedPauseOption { fifteenMinutes, oneHour, untilTomorrow, untilIResume };

template <> struct RawValues<TimedPauseOption> {
    static constexpr std::array table{
        std::pair{TimedPauseOption::fifteenMinutes, std::string_view("fifteenMinutes")},
        std::pair{TimedPauseOption::oneHour, std::string_view("oneHour")},
        std::pair{TimedPauseOption::untilTomorrow, std::string_view("untilTomorrow")},
        std::pair{TimedPauseOption::untilIResume, std::string_view("untilIResume")},
    };
};

/// What a choice comes to at the moment it is made.
struct RequestedPause {
    std::optional<Instant> deadline;
    Seconds length;
};

RequestedPause requestedPause(TimedPauseOption option, Instant now, const CalendarContext& calendar);

class CapturePauseStoring {
public:
    virtual ~CapturePauseStoring() = default;
    virtual std::optional<CapturePause> load() const = 0;
    /// Absent clears it. False when it could not be kept.
    virtual bool save(const std::optional<CapturePause>& pause) = 0;
};

class InMemoryCapturePauseStore final : public CapturePauseStoring {
public:
    std::optional<CapturePause> load() const override { return pause; }
    bool save(const std::optional<CapturePause>& newPause) override
    {
        pause = newPause;
        return true;
    }

    std::optional<CapturePause> pause;
};

/// Keeps the pause among the preferences.
class PreferencesCapturePauseStore final : public CapturePauseStoring {
public:
    static constexpr std::string_view kindKey = "stintbook.capture.pauseKind";
    static constexpr std::string_view deadlineKey = "stintbook.capture.pauseDeadline";
    static constexpr std::string_view lengthKey = "stintbook.capture.pauseLength";

    explicit PreferencesCapturePauseStore(PreferenceStoring& preferences)
        : m_preferences(preferences)
    {
    }
    std::optional<CapturePause> load() const override;
    bool save(const std::optional<CapturePause>& pause) override;

private:
    PreferenceStoring& m_preferences;
};

} // namespace stintbook
