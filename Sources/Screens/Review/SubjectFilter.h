#pragma once

#include <QString>
#include <string>
#include <unordered_map>
#include <vector>

#include "Screens/Review/ReviewRows.h"

namespace stintbook {

/// Which rows of a day its list shows, and in which order.
struct SubjectFilter {
    QString search;
    bool onlyUnresolved = false;
    /// "time", "duration" or "client".
    QString order = QStringLiteral("time");

    /// The words are those of `searchedWords`; without a search nobody looks into them.
    std::vector<SubjectRow> listed(const std::vector<SubjectRow>& rows,
                                   const std::unordered_map<UUID, std::string>& words) const;

    friend bool operator==(const SubjectFilter&, const SubjectFilter&) = default;
};

} // namespace stintbook
