#include "Rules/RuleList.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "Base/Try.h"
#include "Rules/RuleOrder.h"

namespace stintbook {

namespace {

std::string sentence(RuleListProblem problem)
{
    switch (problem) {
    case RuleListProblem::noCondition:
        return "A rule needs at least one condition — give one of them a value";
    case RuleListProblem::ruleMissing:
        return "That rule is no longer in the list.";
    case RuleListProblem::positionOutsideList:
        return "The list has no such position.";
    }
    return {};
}

std::string sentence(AssignmentTargetProblem problem)
{
    return message(problem);
}

using Checked = std::expected<void, RuleEditProblem>;

Checked mustHaveConditions(const RuleMatch& match)
{
    const auto isEmptyText = [](const std::optional<std::string>& text) { return text && text->empty(); };
    if (match.isEmpty() || isEmptyText(match.applicationBundleIdentifier) || isEmptyText(match.titleContains))
        return std::unexpected(RuleListProblem::noCondition);
    return {};
}

Checked mustReceiveNewWork(const AttributionRule& rule, const AssignmentDirectory& directory)
{
    if (const auto problem = directory.problem(rule.clientID, rule.projectID))
        return std::unexpected(*problem);
    return {};
}

template <typename Rule> std::vector<Rule> renumbered(std::vector<Rule> rules)
{
    for (std::size_t i = 0; i < rules.size(); ++i)
        rules[i].priority = static_cast<int>(i);
    return rules;
}

template <typename Rule> using Place = typename std::vector<Rule>::iterator;

template <typename Rule> std::expected<Place<Rule>, RuleEditProblem> find(std::vector<Rule>& rules, RuleID id)
{
    const auto found = std::ranges::find(rules, id, &Rule::id);
    if (found == rules.end())
        return std::unexpected(RuleListProblem::ruleMissing);
    return found;
}

template <typename Rule> std::vector<Rule> inserted(std::vector<Rule> rules, std::size_t index, Rule rule)
{
    rules.insert(rules.begin() + static_cast<std::ptrdiff_t>(index), std::move(rule));
    return renumbered(std::move(rules));
}

template <typename Rule> EditedRules<Rule> switched(std::vector<Rule> rules, RuleID id, bool isEnabled)
{
    rules = inListOrder(std::move(rules));
    TRY(find(rules, id))->isEnabled = isEnabled;
    return renumbered(std::move(rules));
}

} // namespace

std::string message(const RuleEditProblem& problem)
{
    return std::visit([](auto one) { return sentence(one); }, problem);
}

EditedRules<AttributionRule> insertedAtTop(std::vector<AttributionRule> rules, AttributionRule rule,
                                           const AssignmentDirectory& directory)
{
    TRY(mustHaveConditions(rule.match));
    TRY(mustReceiveNewWork(rule, directory));
    return inserted(inListOrder(std::move(rules)), 0, std::move(rule));
}

EditedRules<ExclusionRule> insertedAtTop(std::vector<ExclusionRule> rules, ExclusionRule rule)
{
    TRY(mustHaveConditions(rule.match));
    return inserted(inListOrder(std::move(rules)), 0, std::move(rule));
}

EditedRules<AttributionRule> copiedBelow(std::vector<AttributionRule> rules, RuleID original, RuleID copy,
                                         const AssignmentDirectory& directory)
{
    auto rule = *TRY(find(rules, original));
    rule.id = copy;
    return insertedBelow(std::move(rules), original, std::move(rule), directory);
}

EditedRules<AttributionRule> insertedBelow(std::vector<AttributionRule> rules, RuleID original,
                                           AttributionRule rule, const AssignmentDirectory& directory)
{
    rules = inListOrder(std::move(rules));
    const auto above = TRY(find(rules, original)) - rules.begin();
    TRY(mustHaveConditions(rule.match));
    TRY(mustReceiveNewWork(rule, directory));
    return inserted(std::move(rules), static_cast<std::size_t>(above) + 1, std::move(rule));
}

EditedRules<AttributionRule> replaced(std::vector<AttributionRule> rules, AttributionRule rule,
                                      const AssignmentDirectory& directory)
{
    rules = inListOrder(std::move(rules));
    const auto stored = TRY(find(rules, rule.id));
    TRY(mustHaveConditions(rule.match));
    if (stored->clientID != rule.clientID || stored->projectID != rule.projectID)
        TRY(mustReceiveNewWork(rule, directory));
    *stored = std::move(rule);
    return renumbered(std::move(rules));
}

EditedRules<ExclusionRule> copiedBelow(std::vector<ExclusionRule> rules, RuleID original, RuleID copy)
{
    rules = inListOrder(std::move(rules));
    const auto above = TRY(find(rules, original));
    auto rule = *above;
    rule.id = copy;
    const auto index = static_cast<std::size_t>(above - rules.begin()) + 1;
    return inserted(std::move(rules), index, std::move(rule));
}

template <typename Rule> EditedRules<Rule> moved(std::vector<Rule> rules, RuleID rule, std::size_t position)
{
    rules = inListOrder(std::move(rules));
    const auto from = TRY(find(rules, rule));
    if (position < 1 || position > rules.size())
        return std::unexpected(RuleListProblem::positionOutsideList);
    const auto to = rules.begin() + static_cast<std::ptrdiff_t>(position - 1);
    if (from < to)
        std::rotate(from, std::next(from), std::next(to));
    else
        std::rotate(to, from, std::next(from));
    return renumbered(std::move(rules));
}

template <typename Rule> EditedRules<Rule> enabled(std::vector<Rule> rules, RuleID rule)
{
    return switched(std::move(rules), rule, true);
}

template <typename Rule> EditedRules<Rule> disabled(std::vector<Rule> rules, RuleID rule)
{
    return switched(std::move(rules), rule, false);
}

template <typename Rule> EditedRules<Rule> removed(std::vector<Rule> rules, RuleID rule)
{
    rules = inListOrder(std::move(rules));
    rules.erase(TRY(find(rules, rule)));
    return renumbered(std::move(rules));
}

template EditedRules<AttributionRule> moved(std::vector<AttributionRule>, RuleID, std::size_t);
template EditedRules<AttributionRule> enabled(std::vector<AttributionRule>, RuleID);
template EditedRules<AttributionRule> disabled(std::vector<AttributionRule>, RuleID);
template EditedRules<AttributionRule> removed(std::vector<AttributionRule>, RuleID);
template EditedRules<ExclusionRule> moved(std::vector<ExclusionRule>, RuleID, std::size_t);
template EditedRules<ExclusionRule> enabled(std::vector<ExclusionRule>, RuleID);
template EditedRules<ExclusionRule> disabled(std::vector<ExclusionRule>, RuleID);
template EditedRules<ExclusionRule> removed(std::vector<ExclusionRule>, RuleID);

} // namespace stintbook
