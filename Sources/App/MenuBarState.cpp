#include "App/MenuBarState.h"

#include <cmath>
#include <memory>

#include <fmt/format.h>
#include <unicode/datefmt.h>
#include <unicode/timezone.h>

#include "Base/BuildInformation.h"
#include "Base/ReadersLocale.h"

namespace stintbook::menubar {

namespace {

std::string shortTime(Instant at, const CalendarContext& calendar, const std::string& locale)
{
    const std::unique_ptr<icu::DateFormat> format(icu::DateFormat::createTimeInstance(
        icu::DateFormat::kShort, icu::Locale(readersLocale(locale).c_str())));
    if (!format)
        return {};
    // The calendar knows the zone's rules; the format only spells the civil time.
    format->setTimeZone(*icu::TimeZone::getGMT());
    icu::UnicodeString text;
    format->format(std::floor(at.secondsSinceEpoch + calendar.secondsFromGMT(at)) * 1000.0, text);
    std::string utf8;
    return text.toUTF8String(utf8);
}

} // namespace

std::vector<Row> rows(const CaptureRuntimeState& runtime)
{
    std::vector<Row> shown{Row::openReview};
    if (runtime.isActive())
        shown.push_back(Row::pause);
    if (runtime.isPaused())
        shown.push_back(Row::resume);
    shown.insert(shown.end(), {Row::settings, Row::quit});
    return shown;
}

std::string title(Row row)
{
    switch (row) {
    case Row::openReview:
        return "Open Review";
    case Row::pause:
        return "Pause";
    case Row::resume:
        return "Resume";
    case Row::settings:
        return "Settings…";
    case Row::quit:
        break;
    }
    return fmt::format("Quit {}", productName);
}

std::string_view title(TimedPauseOption length)
{
    switch (length) {
    case TimedPauseOption::fifteenMinutes:
        return "15 Minutes";
    case TimedPauseOption::oneHour:
        return "1 Hour";
    case TimedPauseOption::untilTomorrow:
        return "Until Tomorrow";
    case TimedPauseOption::untilIResume:
        break;
    }
    return "Until I Resume";
}

std::string statusLine(const CaptureStatus& status, const CalendarContext& calendar,
                       const std::string& locale)
{
    const auto& runtime = status.runtime;
    if (runtime.isPaused())
        return runtime.until ? "Paused until " + shortTime(*runtime.until, calendar, locale)
                             : "Paused until you resume";
    if (!runtime.isActive())
        return "Not recording";
    return status.permission == CapturePermissionState::granted ? "Recording" : "Work context is limited";
}

} // namespace stintbook::menubar
