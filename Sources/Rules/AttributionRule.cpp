#include "Rules/AttributionRule.h"

#include "Domain/AssignmentDirectory.h"

namespace stintbook {

AttributionAssignment assignmentOf(const AttributionRule& rule, const AssignmentDirectory& directory)
{
    const Project* project = directory.project(rule.projectID);
    const bool isBillableByDefault = project ? project->defaultBillable : true;
    return {rule.clientID, rule.projectID, rule.billableOverride.value_or(isBillableByDefault)};
}

} // namespace stintbook
