#pragma once

#include <QString>
#include <QVariantList>

#include "Screens/Review/DayView.h"

/// The times of a day as its screen has them: in seconds since the day's beginning.
namespace stintbook {

/// Whole hours around all work of the day, and around its usual ones.
struct ShownHours {
    double first = 8 * 3600.0;
    double last = 18 * 3600.0;
};
ShownHours shownHours(const DayView& view);

/// Where the hours are written: [{ second, name }].
QVariantList hourMarks(const DayView& view, const ShownHours& hours);

QString timeText(const DayView& view, double second);
/// The second at which the day's clock shows what was typed; negative for anything that is no time of day. Of a time
/// that is shown twice it is the second one, where the first lies before `notBefore`.
double secondOf(const DayView& view, const QString& typed, double notBefore);

} // namespace stintbook
