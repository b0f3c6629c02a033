#include "Rules/RuleDraft.h"

#include <algorithm>

#include "Base/Try.h"

namespace stintbook {

namespace {

std::string sentence(RuleDraftRefusal refusal)
{
    switch (refusal) {
    case RuleDraftRefusal::everyDimensionUsed:
        return "Every dimension is already used";
    case RuleDraftRefusal::dimensionUsedTwice:
        return "A rule takes each dimension once — remove one of the two conditions";
    case RuleDraftRefusal::targetNotChosen:
        return "A rule needs a client and a project to attribute work to.";
    }
    return {};
}

template <typename Problem> std::string sentence(const Problem& problem)
{
    return message(problem);
}

bool uses(const RuleDraft& draft, RuleDimension dimension)
{
    return std::ranges::find(draft.conditions, dimension, &RuleCondition::dimension)
        != draft.conditions.end();
}

RuleDraft draftOf(const AttributionRule& rule)
{
    RuleDraft draft{.id = rule.id,
                    .conditions = {},
                    .clientID = rule.clientID,
                    .projectID = rule.projectID,
                    .billableOverride = rule.billableOverride,
                    .isEnabled = rule.isEnabled,
                    .priority = rule.priority,
                    .origin = {}};
    const auto& [application, domain, title] = rule.match;
    if (application)
        draft.conditions.push_back({RuleDimension::application, *application});
    if (title)
        draft.conditions.push_back({RuleDimension::windowTitle, *title});
    if (domain)
        draft.conditions.push_back({RuleDimension::domain, domain->host()});
    return draft;
}

std::optional<std::string>& textFor(RuleDimension dimension, TypedMatch& typed)
{
    switch (dimension) {
    case RuleDimension::application:
        return typed.application;
    case RuleDimension::windowTitle:
        return typed.title;
    case RuleDimension::domain:
        break;
    }
    return typed.domain;
}

Drafted<RuleMatch> match(const std::vector<RuleCondition>& conditions)
{
    TypedMatch typed;
    for (const auto& [dimension, value] : conditions) {
        if (value.empty())
            continue;
        auto& text = textFor(dimension, typed);
        if (text)
            return std::unexpected(RuleDraftRefusal::dimensionUsedTwice);
        text = value;
    }
    auto match = TRY(checked(typed));
    if (match.isEmpty())
        return std::unexpected(RuleEditProblem(RuleListProblem::noCondition));
    return match;
}

} // namespace

RuleDraft RuleDraft::ofNewRule(RuleID id)
{
    RuleDraft draft;
    draft.id = id;
    draft.conditions.emplace_back();
    return draft;
}

RuleDraft RuleDraft::ofCopy(const AttributionRule& original, RuleID id)
{
    auto draft = draftOf(original);
    draft.id = id;
    draft.origin = CopiedRule{original.id};
    return draft;
}

RuleDraft RuleDraft::ofExisting(const AttributionRule& rule)
{
    auto draft = draftOf(rule);
    draft.origin = ExistingRule{};
    return draft;
}

std::string message(const RuleDraftProblem& problem)
{
    return std::visit([](const auto& which) { return sentence(which); }, problem);
}

Drafted<RuleDraft> withAnotherCondition(RuleDraft draft)
{
    for (const auto& [dimension, text] : RawValues<RuleDimension>::table) {
        if (!uses(draft, dimension)) {
            draft.conditions.push_back({dimension, {}});
            return draft;
        }
    }
    return std::unexpected(RuleDraftRefusal::everyDimensionUsed);
}

Drafted<AttributionRule> rule(const RuleDraft& draft)
{
    if (!draft.clientID || !draft.projectID)
        return std::unexpected(RuleDraftRefusal::targetNotChosen);
    AttributionRule rule{.id = draft.id,
                         .isEnabled = draft.isEnabled,
                         .priority = draft.priority,
                         .match = {},
                         .clientID = *draft.clientID,
                         .projectID = *draft.projectID,
                         .billableOverride = draft.billableOverride};
    rule.match = TRY(match(draft.conditions));
    return rule;
}

Drafted<std::vector<AttributionRule>> saved(std::vector<AttributionRule> rules, const RuleDraft& draft,
                                            const AssignmentDirectory& directory)
{
    const auto drafted = TRY(rule(draft));
    if (const auto* copy = std::get_if<RuleDraft::CopiedRule>(&draft.origin))
        return TRY(insertedBelow(std::move(rules), copy->original, drafted, directory));
    if (std::holds_alternative<RuleDraft::ExistingRule>(draft.origin))
        return TRY(replaced(std::move(rules), drafted, directory));
    return TRY(insertedAtTop(std::move(rules), drafted, directory));
}

} // namespace stintbook
