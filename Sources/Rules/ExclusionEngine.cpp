#include "Rules/ExclusionEngine.h"

#include <utility>

#include "Rules/RuleMatcher.h"
#include "Rules/RuleOrder.h"

namespace stintbook {

struct ExclusionEngine::Prepared {
    std::vector<ExclusionRule> orderedRules;
    RuleMatcher matcher;
};

ExclusionEngine::ExclusionEngine(std::vector<ExclusionRule> rules)
{
    auto ordered = enabledInListOrder(std::move(rules));
    std::vector<RuleMatch> matches;
    matches.reserve(ordered.size());
    for (const auto& rule : ordered)
        matches.push_back(rule.match);
    m_prepared =
        std::make_shared<const Prepared>(Prepared{std::move(ordered), RuleMatcher(std::move(matches))});
}

const std::vector<ExclusionRule>& ExclusionEngine::orderedRules() const
{
    return m_prepared->orderedRules;
}

bool ExclusionEngine::excludes(const ActivitySegment& segment) const
{
    return excludes(RuleSubject(segment, foldedTitle(segment)));
}

bool ExclusionEngine::excludes(const RuleSubject& subject) const
{
    return !m_prepared->matcher.matching(subject).empty();
}

} // namespace stintbook
