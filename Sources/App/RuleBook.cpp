#include "App/RuleBook.h"

#include "App/ClientBook.h"
#include "Base/Try.h"
#include "Rules/RuleConflicts.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {

namespace {

std::string sentence(const DomainRefused& refused)
{
    return "“" + refused.text
        + "” is no web domain, so nothing was saved. Write a host, for example docs.example.org.";
}

template <typename Problem> std::string sentence(const Problem& problem)
{
    return message(problem);
}

RuleEdited<RuleMatch> checkedMatch(const TypedMatch& typed)
{
    RuleMatch match{typed.application, {}, typed.title};
    if (typed.domain) {
        match.browserDomain = BrowserDomain::fromText(*typed.domain);
        if (!match.browserDomain)
            return std::unexpected(DomainRefused{*typed.domain});
    }
    return match;
}

/// Reads the list, changes it and stores it, alone in writing.
template <typename Change> RuleEdited<void> changeRules(OpenedStore& store, Change change)
{
    return store.database().write([&](StoreConnection&) -> RuleEdited<void> {
        const auto changed = TRY(change(TRY(store.review().attributionRules())));
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
    return std::visit([](const auto& which) { return sentence(which); }, problem);
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

RuleEdited<RuleID> RuleBook::add(const NewRule& rule)
{
    const AttributionRule added{.id = RuleID::random(),
                                .match = TRY(checkedMatch(rule.match)),
                                .clientID = rule.clientID,
                                .projectID = rule.projectID,
                                .billableOverride = rule.billableOverride};
    return m_store.database().write([&](StoreConnection&) -> RuleEdited<RuleID> {
        const auto directory = TRY(ClientBook(m_store).directory());
        const auto changed = TRY(insertedAtTop(TRY(m_store.review().attributionRules()), added, directory));
        TRY(m_store.review().replaceAttributionRules(changed));
        return added.id;
    });
}

RuleEdited<RuleID> RuleBook::copy(RuleID id)
{
    const auto fresh = RuleID::random();
    return m_store.database().write([&](StoreConnection&) -> RuleEdited<RuleID> {
        const auto directory = TRY(ClientBook(m_store).directory());
        const auto changed = TRY(copiedBelow(TRY(m_store.review().attributionRules()), id, fresh, directory));
        TRY(m_store.review().replaceAttributionRules(changed));
        return fresh;
    });
}

RuleEdited<void> RuleBook::move(RuleID id, int position)
{
    return changeRules(m_store, [&](std::vector<AttributionRule> rules) {
        return moved(std::move(rules), id, static_cast<std::size_t>(position));
    });
}

RuleEdited<void> RuleBook::setEnabled(RuleID id, bool isEnabled)
{
    return changeRules(m_store, [&](std::vector<AttributionRule> rules) {
        return isEnabled ? enabled(std::move(rules), id) : disabled(std::move(rules), id);
    });
}

RuleEdited<void> RuleBook::remove(RuleID id)
{
    return changeRules(m_store,
                       [&](std::vector<AttributionRule> rules) { return removed(std::move(rules), id); });
}

RuleEdited<RuleID> RuleBook::addExclusion(const TypedMatch& match)
{
    const ExclusionRule added{.id = RuleID::random(), .match = TRY(checkedMatch(match))};
    TRY(changeExclusions(
        m_store, [&](std::vector<ExclusionRule> rules) { return insertedAtTop(std::move(rules), added); }));
    return added.id;
}

RuleEdited<void> RuleBook::removeExclusion(RuleID id)
{
    return changeExclusions(m_store,
                            [&](std::vector<ExclusionRule> rules) { return removed(std::move(rules), id); });
}

} // namespace stintbook
