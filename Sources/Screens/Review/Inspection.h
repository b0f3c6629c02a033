#pragma once

#include <QVariantMap>
#include <vector>

#include "Screens/Review/DayView.h"

namespace stintbook {

/// What the inspector shows of the selection.
struct Inspection {
    /// By the names that its QML knows:
    ///
    /// kind: "none", "work", "idle" or "gap"; count; title; subtitle; state; note
    /// description, clientID, projectID, client, project, color: what all have in common, else empty
    /// billable: a Qt::CheckState; isIgnored
    /// canAssign; canSetBillable; canConfirm; canDescribe; canSplit; canMerge; canMakeRule: what may be asked for
    /// subjectID: of one
    /// shares: [{ name, duration, fraction }]
    /// why: a sentence; reasons: [{ ruleID, role, text, target }]; alsoMatched: a sentence, or empty
    QVariantMap values;
    std::vector<LineageRow> lineage;
};

/// Of subjects, or of one span.
Inspection inspection(const DayView& view, const std::vector<UUID>& selected);

} // namespace stintbook
