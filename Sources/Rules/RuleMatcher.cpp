#include "Rules/RuleMatcher.h"

#include <algorithm>
#include <utility>

#include "Base/Text.h"

namespace stintbook {

RuleMatcher::RuleMatcher(std::vector<RuleMatch> matches)
    : m_matches(std::move(matches))
{
    for (Position position = 0; position < m_matches.size(); ++position) {
        const auto& match = m_matches[position];
        if (match.titleContains) {
            const auto text = m_titles.add(foldedForSearch(*match.titleContains));
            if (text == m_byTitle.size())
                m_byTitle.emplace_back();
            m_byTitle[text].push_back(position);
        } else if (match.applicationBundleIdentifier) {
            m_byApplication[*match.applicationBundleIdentifier].push_back(position);
        } else if (match.browserDomain) {
            m_byHost[match.browserDomain->host()].push_back(position);
        } else {
            m_unconditional.push_back(position);
        }
    }
    m_titles.prepare();
}

std::vector<RuleMatcher::Position> RuleMatcher::matching(const RuleSubject& subject) const
{
    std::vector<Position> found = m_unconditional;
    const auto ask = [&](const std::vector<Position>& candidates) {
        std::ranges::copy_if(candidates, std::back_inserter(found), [&](Position candidate) {
            return applicationAndDomainHold(m_matches[candidate], subject);
        });
    };
    const auto askUnder = [&](const PositionsByText& index, std::string_view text) {
        if (const auto candidates = index.find(text); candidates != index.end())
            ask(candidates->second);
    };

    if (subject.foldedTitle && !m_byTitle.empty()) {
        for (const auto text : m_titles.occurringIn(*subject.foldedTitle))
            ask(m_byTitle[text]);
    }
    if (subject.applicationBundleIdentifier)
        askUnder(m_byApplication, *subject.applicationBundleIdentifier);
    if (subject.browserDomain && !m_byHost.empty()) {
        std::string_view domain = subject.browserDomain->host();
        askUnder(m_byHost, domain);
        for (auto dot = domain.find('.'); dot != std::string_view::npos; dot = domain.find('.')) {
            domain.remove_prefix(dot + 1);
            askUnder(m_byHost, domain);
        }
    }
    std::ranges::sort(found);
    return found;
}

bool RuleMatcher::applicationAndDomainHold(const RuleMatch& match, const RuleSubject& subject) const
{
    if (match.applicationBundleIdentifier
        && (!subject.applicationBundleIdentifier
            || *subject.applicationBundleIdentifier != *match.applicationBundleIdentifier))
        return false;
    return !match.browserDomain
        || (subject.browserDomain && subject.browserDomain->isWithin(*match.browserDomain));
}

} // namespace stintbook
