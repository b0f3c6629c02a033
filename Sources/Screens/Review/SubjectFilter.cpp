#include "Screens/Review/SubjectFilter.h"

#include <algorithm>
#include <functional>
#include <iterator>

#include "Base/Text.h"

namespace stintbook {

std::vector<SubjectRow> SubjectFilter::listed(const std::vector<SubjectRow>& rows,
                                              const std::unordered_map<UUID, std::string>& words) const
{
    const auto wanted = foldedForSearch(search.trimmed().toStdString());
    std::vector<SubjectRow> shown;
    std::ranges::copy_if(rows, std::back_inserter(shown), [&](const SubjectRow& row) {
        return (!onlyUnresolved || row.isUnresolved) && (wanted.empty() || words.at(row.id).contains(wanted));
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
