#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "App/Listeners.h"
#include "App/RuleBook.h"
#include "Base/Executor.h"

namespace stintbook {

struct ExcludedApplication {
    std::string bundleIdentifier;
    std::string displayName;

    friend bool operator==(const ExcludedApplication&, const ExcludedApplication&) = default;
};

/// The applications that are kept out of review: those that an enabled exclusion rule names with no further
/// condition. Other exclusion rules are left to the list of rules.
///
/// Confined to the main executor; the store is asked elsewhere.
class ExcludedApplicationsModel {
public:
    /// An installed application's name for people; empty where it is not known.
    using Naming = std::function<std::string(const std::string& bundleIdentifier)>;

    /// The executor outlives the model.
    ExcludedApplicationsModel(Confined<RuleBook> rules, Executor& main, Naming naming);

    /// By name.
    const std::vector<ExcludedApplication>& applications() const { return m_applications; }
    /// False until the list was read.
    bool isSeeded() const { return m_isSeeded; }
    /// Of the last change that was not made, else of reading.
    const std::optional<std::string>& problemMessage() const
    {
        return m_refusal ? m_refusal : m_readingProblem;
    }

    /// Reads the list, now and when the rules have changed.
    void reload();
    /// Nothing for one that is excluded already.
    void exclude(const std::string& bundleIdentifier);
    void include(const std::string& bundleIdentifier);
    void dismissProblem();

    [[nodiscard]] Listeners::Subscription follow(std::function<void()> listener)
    {
        return m_listeners.add(std::move(listener));
    }

private:
    template <typename Work> void edit(Work work);
    void show(const std::vector<ExclusionRule>& rules);

    Confined<RuleBook> m_rules;
    Executor& m_main;
    Naming m_naming;
    std::vector<ExcludedApplication> m_applications;
    /// The rule that excludes each.
    std::map<std::string, RuleID> m_ruleIDs;
    bool m_isSeeded = false;
    std::optional<std::string> m_refusal;
    std::optional<std::string> m_readingProblem;
    Listeners m_listeners;
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace stintbook
