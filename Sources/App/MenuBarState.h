#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "Capture/CapturePause.h"
#include "Domain/CalendarContext.h"
#include "Domain/CaptureStatus.h"

/// What the icon's menu shows.
namespace stintbook::menubar {

enum class Row { openReview, pause, resume, settings, quit };
/// Of the part that shows the status.
enum class WindowRow { statusLine, pauseOrResume, pauseForLengths };

inline constexpr std::array windowRows{WindowRow::statusLine, WindowRow::pauseOrResume,
                                       WindowRow::pauseForLengths};
inline constexpr std::array pauseLengths{TimedPauseOption::fifteenMinutes, TimedPauseOption::oneHour,
                                         TimedPauseOption::untilTomorrow, TimedPauseOption::untilIResume};

/// The rows that make sense now, in their order: work is paused or resumed, and neither while nothing records.
std::vector<Row> rows(const CaptureRuntimeState& runtime);

std::string title(Row row);
std::string_view title(TimedPauseOption length);

/// The time of day as the reader's locale ("de_DE") writes it in short.
std::string statusLine(const CaptureStatus& status, const CalendarContext& calendar,
                       const std::string& locale);

} // namespace stintbook::menubar
