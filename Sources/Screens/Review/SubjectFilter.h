#pragma once

#include <QString>
#include <vector>

#include "Screens/Review/DayView.h"

namespace stintbook {

/// Which rows of a day its list shows, and in which order.
struct SubjectFilter {
    QString search;
    bool onlyUnresolved = false;
    /// "time", "duration" or "client".
    QString order = QStringLiteral("time");

    std::vector<SubjectRow> listed(const DayView& view) const;

    friend bool operator==(const SubjectFilter&, const SubjectFilter&) = default;
};

} // namespace stintbook
