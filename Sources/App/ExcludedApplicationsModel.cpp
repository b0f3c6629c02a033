#include "App/ExcludedApplicationsModel.h"

#include <algorithm>
#include <utility>

#include "Base/Text.h"
#include "Base/Try.h"

namespace stintbook {

namespace {

using Rules = RuleEdited<std::vector<ExclusionRule>>;

Rules exclusionRules(RuleBook& book)
{
    return TRY(book.list()).exclusionRules;
}

bool excludesAnApplication(const ExclusionRule& rule)
{
    return rule.isEnabled && rule.match.applicationBundleIdentifier && !rule.match.browserDomain
        && !rule.match.titleContains;
}

} // namespace

ExcludedApplicationsModel::ExcludedApplicationsModel(Confined<RuleBook> rules, Executor& main, Naming naming)
    : m_rules(std::move(rules))
    , m_main(main)
    , m_naming(std::move(naming))
{
}

/// Has the rules edited, and shows what they are then.
template <typename Work> void ExcludedApplicationsModel::edit(Work work)
{
    m_rules.ask(std::move(work), m_main, [this, isAlive = std::weak_ptr(m_isAlive)](const Rules& rules) {
        if (isAlive.expired())
            return;
        m_refusal.reset();
        if (rules)
            show(*rules);
        else
            m_refusal = "The excluded applications could not be saved.";
        m_listeners.tell();
    });
}

void ExcludedApplicationsModel::dismissProblem()
{
    m_refusal.reset();
    m_readingProblem.reset();
    m_listeners.tell();
}

void ExcludedApplicationsModel::show(const std::vector<ExclusionRule>& rules)
{
    m_applications.clear();
    m_ruleIDs.clear();
    for (const auto& rule : rules) {
        if (!excludesAnApplication(rule))
            continue;
        const auto& identifier = *rule.match.applicationBundleIdentifier;
        if (!m_ruleIDs.emplace(identifier, rule.id).second)
            continue;
        const auto name = m_naming(identifier);
        m_applications.push_back({identifier, name.empty() ? identifier : name});
    }
    std::ranges::sort(m_applications, {}, [](const ExcludedApplication& application) {
        return std::pair(foldedForSearch(application.displayName), application.bundleIdentifier);
    });
    m_isSeeded = true;
}

void ExcludedApplicationsModel::reload()
{
    m_rules.ask(exclusionRules, m_main, [this, isAlive = std::weak_ptr(m_isAlive)](const Rules& rules) {
        if (isAlive.expired())
            return;
        m_readingProblem.reset();
        if (rules)
            show(*rules);
        else
            m_readingProblem = message(rules.error());
        m_listeners.tell();
    });
}

void ExcludedApplicationsModel::exclude(const std::string& bundleIdentifier)
{
    if (m_ruleIDs.contains(bundleIdentifier))
        return;
    edit([bundleIdentifier](RuleBook& book) -> Rules {
        TRY(book.addExclusion({.application = bundleIdentifier, .domain = {}, .title = {}}));
        return exclusionRules(book);
    });
}

/// Every rule that excludes it: where two do, taking one away would change nothing.
void ExcludedApplicationsModel::include(const std::string& bundleIdentifier)
{
    edit([bundleIdentifier](RuleBook& book) -> Rules {
        for (const auto& rule : TRY(exclusionRules(book))) {
            if (excludesAnApplication(rule) && rule.match.applicationBundleIdentifier == bundleIdentifier)
                TRY(book.removeExclusion(rule.id));
        }
        return exclusionRules(book);
    });
}

} // namespace stintbook
