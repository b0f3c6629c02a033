#include "Screens/Review/SubjectFilter.h"

#include <algorithm>
#include <functional>
#include <iterator>

#include "Base/Text.h"

namespace stintbook {

std::vector<SubjectRow> SubjectFilter::listed(const DayView& view) const
{
    const auto wanted = foldedForSearch(search.trimmed().toStdString());
    std::vector<SubjectRow> shown;
    std::ranges::copy_if(view.subjects, std::back_inserter(shown), [&](const SubjectRow& row) {
        return (!onlyUnresolved || row.isUnresolved)
            && (wanted.empty() || view.words().at(row.id).contains(wanted));
    });
    if (order == QLatin1String("duration")) {
        std::ranges::stable_sort(shown, std::greater(),
                                 [](const SubjectRow& row) { return row.end - row.start; });
    } else if (order == QLatin1String("client")) {
        std::ranges::stable_sort(shown, [](const SubjectRow& a, const SubjectRow& b) {
            return QString::localeAwareCompare(a.client, b.client) < 0;
        });
    }
    return shown;
}

} // namespace stintbook
