#include "Screens/Review/DayTimes.h"

#include <algorithm>
#include <cmath>

#include "Screens/Models/Texts.h"

namespace stintbook {

ShownHours shownHours(const DayView& view)
{
    ShownHours hours;
    for (const auto& row : view.subjects) {
        hours.first = std::min(hours.first, row.start);
        hours.last = std::max(hours.last, row.end);
    }
    const auto whole = [](double hour) { return hour * 3600; };
    return {whole(std::floor(hours.first / 3600)),
            std::min(whole(std::ceil(hours.last / 3600)), view.content().bounds.length().value)};
}

QVariantList hourMarks(const DayView& view, const ShownHours& hours)
{
    QVariantList marks;
    for (double second = hours.first; second <= hours.last; second += 3600)
        marks.append(QVariantMap{{QStringLiteral("second"), second},
                                 {QStringLiteral("name"), timeText(view, second)}});
    return marks;
}

QString timeText(const DayView& view, double second)
{
    return timeOf(view.content().bounds.start + Seconds{second}, view.calendar);
}

double secondOf(const DayView& view, const QString& typed, double notBefore)
{
    const auto words = typed.trimmed();
    const auto time = timeFrom(words);
    const bool isDaysEnd = words == QStringLiteral("24:00");
    if (!time.isValid() && !isDaysEnd)
        return -1;
    const auto start = view.content().bounds.start;
    const auto at = view.calendar.instantOn(view.calendar.dateOf(start), isDaysEnd ? 24 : time.hour(),
                                            time.minute(), 0, start + Seconds{notBefore});
    return (at - start).value;
}

} // namespace stintbook
