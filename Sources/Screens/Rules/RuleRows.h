#pragma once

#include <QString>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "App/RuleBook.h"
#include "Review/RulePrecedencePreview.h"

namespace stintbook {

/// The names of applications by their identifiers.
using ApplicationNames = std::map<std::string, std::string>;

/// Everything that the rules' screen is made from.
struct RulesContent {
    ListedRules rules;
    std::vector<RuleConflict> conflicts;
    AssignmentDirectory directory;
};

/// An attribution rule in the list.
struct AttributionRuleRow {
    UUID id;
    /// Its place, counted from 1.
    int number = 0;
    QString conditions;
    QString target;
    QString color;
    QString billing;
    /// How much of the recent work it attributes; empty while that is not known.
    QString counts;
    QString remark;
    /// What is wrong with it; empty when nothing is.
    QString badge;
    QString explanation;
    bool isEnabled = true;

    friend bool operator==(const AttributionRuleRow&, const AttributionRuleRow&) = default;
};

/// The other rule of a conflict, from the side of the selected one.
struct ConflictRow {
    UUID id;
    QString conditions;
    QString explanation;
    /// Selects the other rule.
    QString action;

    friend bool operator==(const ConflictRow&, const ConflictRow&) = default;
};

struct ExclusionRow {
    UUID id;
    QString conditions;
    bool isEnabled = true;

    friend bool operator==(const ExclusionRow&, const ExclusionRow&) = default;
};

/// How much each enabled rule attributes of the recent work.
using RuleSummaries = std::map<RuleID, RulePreviewSummary>;

std::vector<AttributionRuleRow> ruleRows(const RulesContent& content, const RuleSummaries& summaries,
                                         const ApplicationNames& names);
std::vector<ConflictRow> conflictRows(const RulesContent& content, RuleID viewed,
                                      const ApplicationNames& names);
std::vector<ExclusionRow> exclusionRows(const RulesContent& content, const ApplicationNames& names);

} // namespace stintbook
