#include "Screens/Rules/RuleRows.h"

#include <QObject>
#include <algorithm>

#include "Base/Text.h"
#include "Rules/RuleExplanation.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

QString conditionsOf(const RuleMatch& match, const ApplicationNames& names)
{
    const auto& application = match.applicationBundleIdentifier;
    const auto name = application ? names.find(*application) : names.end();
    auto sentence = name == names.end() ? conditionsText(match) : conditionsText(match, name->second);
    auto shown = text(sentence);
    // It stands by itself here.
    if (!shown.isEmpty())
        shown.front() = shown.front().toUpper();
    return shown;
}

QString countsText(const RulePreviewSummary& summary)
{
    const auto blocks = summary.counts.applies == 1 ? QObject::tr("1 block")
                                                    : QObject::tr("%1 blocks").arg(summary.counts.applies);
    return QObject::tr("%1 in the last %2 days").arg(blocks).arg(summary.windowDays);
}

QString billingText(const std::optional<bool>& billableOverride)
{
    if (!billableOverride)
        return {};
    return *billableOverride ? QObject::tr("Billable") : QObject::tr("Not billable");
}

const AttributionRule* ruleOf(const RulesContent& content, RuleID id)
{
    const auto& rules = content.rules.attributionRules;
    const auto found = std::ranges::find(rules, id, &AttributionRule::id);
    return found == rules.end() ? nullptr : &*found;
}

} // namespace

std::vector<AttributionRuleRow> ruleRows(const RulesContent& content, const RuleSummaries& summaries,
                                         const ApplicationNames& names)
{
    std::vector<AttributionRuleRow> rows;
    for (const auto& rule : content.rules.attributionRules) {
        auto& row = rows.emplace_back();
        row.id = rule.id.uuid;
        row.number = static_cast<int>(rows.size());
        row.conditions = conditionsOf(rule.match, names);
        row.target = text(ruleTargetText(rule.clientID, rule.projectID, content.directory));
        const auto* client = content.directory.client(rule.clientID);
        if (client != nullptr && client->color)
            row.color = text(client->color->hex());
        row.billing = billingText(rule.billableOverride);
        row.isEnabled = rule.isEnabled;
        if (const auto summary = summaries.find(rule.id); rule.isEnabled && summary != summaries.end()) {
            row.counts = countsText(summary->second);
            row.remark = text(remark(summary->second));
        }
        if (const auto problem = content.directory.problem(rule.clientID, rule.projectID)) {
            row.badge = text(unusableTargetBadge(*problem));
            row.explanation = text(unusableTargetExplanation(*problem));
        } else if (content.rules.losing.contains(rule.id)) {
            row.badge = text(losesConflictBadge);
        }
    }
    return rows;
}

std::vector<ConflictRow> conflictRows(const RulesContent& content, RuleID viewed,
                                      const ApplicationNames& names)
{
    std::vector<ConflictRow> rows;
    for (const auto& conflict : content.conflicts) {
        if (conflict.winner != viewed && conflict.loser != viewed)
            continue;
        const bool isWinner = conflict.winner == viewed;
        const auto* other = ruleOf(content, isWinner ? conflict.loser : conflict.winner);
        if (other == nullptr)
            continue;
        rows.push_back({.id = other->id.uuid,
                        .conditions = conditionsOf(other->match, names),
                        .explanation = text(conflictExplanation(conflict, viewed)),
                        .action = text(isWinner ? showOverlappedRuleAction : showWinningRuleAction)});
    }
    return rows;
}

std::vector<ExclusionRow> exclusionRows(const RulesContent& content, const ApplicationNames& names)
{
    std::vector<ExclusionRow> rows;
    for (const auto& rule : content.rules.exclusionRules)
        rows.push_back({rule.id.uuid, conditionsOf(rule.match, names), rule.isEnabled});
    return rows;
}

} // namespace stintbook
