#include "App/RuleBook.h"

#include "App/ClientBook.h"
#include "Base/Try.h"
#include "Rules/RuleConflicts.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {

namespace {

/// Reads the list, changes it and stores it, alone in writing.
template <typename Change> RuleEdited<void> changeRules(OpenedStore& store, Change change)
{
    return store.database().write([&](StoreConnection&) -> RuleEdited<void> {
        const auto directory = TRY(ClientBook(store).directory());
        const auto changed = TRY(change(TRY(store.review().attributionRules()), directory));
        TRY(store.review().replaceAttributionRules(changed));
        return {};
    });
}

template <typename Change> RuleEdited<void> changeExclusions(OpenedStore& store, Change change)
{
    return store.database().write([&](StoreConnection&) -> RuleEdited<void> {
        const auto changed = TRY(change(TRY(store.review().exclusionRules())));
        TRY(store.review().replaceExclusionRules(changed));
        return {};
    });
}

} // namespace

std::string message(const RuleBookProblem& problem)
{
    return std::visit([](const auto& which) { return message(which); }, problem);
}

Stored<ListedRules> RuleBook::list() const
{
    return m_store.database().read([&](StoreConnection&) -> Stored<ListedRules> {
        ListedRules rules;
        rules.attributionRules = TRY(m_store.review().attributionRules());
        rules.exclusionRules = TRY(m_store.review().exclusionRules());
        rules.losing = losingRuleIDs(rules.attributionRules, TRY(ClientBook(m_store).directory()));
        return rules;
    });
}

Stored<std::vector<RuleConflict>> RuleBook::conflicts() const
{
    return m_store.database().read([&](StoreConnection&) -> Stored<std::vector<RuleConflict>> {
        const auto rules = TRY(m_store.review().attributionRules());
        return conflictingPairs(rules, TRY(ClientBook(m_store).directory()));
    });
}

RuleEdited<RuleID> RuleBook::add(const NewRule& rule)
{
    AttributionRule added{.id = RuleID::random(),
                          .match = {},
                          .clientID = rule.clientID,
                          .projectID = rule.projectID,
                          .billableOverride = rule.billableOverride};
    added.match = TRY(checked(rule.match));
    TRY(changeRules(m_store, [&](std::vector<AttributionRule> rules, const AssignmentDirectory& directory) {
        return insertedAtTop(std::move(rules), added, directory);
    }));
    return added.id;
}

RuleEdited<void> RuleBook::accept(const RuleProposal& proposal)
{
    return changeRules(m_store,
                       [&](std::vector<AttributionRule> rules, const AssignmentDirectory& directory) {
                           return insertedAtTop(std::move(rules), rule(proposal), directory);
                       });
}

RuleEdited<void> RuleBook::save(const RuleDraft& draft)
{
    return changeRules(m_store,
                       [&](std::vector<AttributionRule> rules, const AssignmentDirectory& directory) {
                           return saved(std::move(rules), draft, directory);
                       });
}

RuleEdited<RuleID> RuleBook::copy(RuleID id)
{
    const auto fresh = RuleID::random();
    TRY(changeRules(m_store, [&](std::vector<AttributionRule> rules, const AssignmentDirectory& directory) {
        return copiedBelow(std::move(rules), id, fresh, directory);
    }));
    return fresh;
}

RuleEdited<void> RuleBook::move(RuleID id, int position)
{
    return changeRules(m_store, [&](std::vector<AttributionRule> rules, const AssignmentDirectory&) {
        return moved(std::move(rules), id, static_cast<std::size_t>(position));
    });
}

RuleEdited<void> RuleBook::setEnabled(RuleID id, bool isEnabled)
{
    return changeRules(m_store, [&](std::vector<AttributionRule> rules, const AssignmentDirectory&) {
        return isEnabled ? enabled(std::move(rules), id) : disabled(std::move(rules), id);
    });
}

RuleEdited<void> RuleBook::remove(RuleID id)
{
    return changeRules(m_store, [&](std::vector<AttributionRule> rules, const AssignmentDirectory&) {
        return removed(std::move(rules), id);
    });
}

RuleEdited<RuleID> RuleBook::addExclusion(const TypedMatch& match)
{
    ExclusionRule added{.id = RuleID::random(), .match = {}};
    added.match = TRY(checked(match));
    TRY(changeExclusions(
        m_store, [&](std::vector<ExclusionRule> rules) { return insertedAtTop(std::move(rules), added); }));
    return added.id;
}

RuleEdited<void> RuleBook::setExclusionEnabled(RuleID id, bool isEnabled)
{
    return changeExclusions(m_store, [&](std::vector<ExclusionRule> rules) {
        return isEnabled ? enabled(std::move(rules), id) : disabled(std::move(rules), id);
    });
}

RuleEdited<void> RuleBook::removeExclusion(RuleID id)
{
    return changeExclusions(m_store,
                            [&](std::vector<ExclusionRule> rules) { return removed(std::move(rules), id); });
}

} // namespace stintbook
