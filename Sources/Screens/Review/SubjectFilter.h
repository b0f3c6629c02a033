#pragma once

#include <QString>
#include <vector>

#include "Screens/Review/ReviewRows.h"

namespace stintbook {

/// Which rows of a day its list shows, and in which order.
struct SubjectFilter {
    QString search;
    bool onlyUnresolved = false;
    /// "time", "duration" or "client".
    QString order = QStringLiteral("time");

    std::vector<SubjectRow> listed(const std::vector<SubjectRow>& rows) const;

    friend bool operator==(const SubjectFilter&, const SubjectFilter&) = default;
};

} // namespace stintbook
