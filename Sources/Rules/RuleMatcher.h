#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Rules/RuleMatch.h"
#include "Rules/RuleSubject.h"
#include "Rules/TitleSearch.h"

namespace stintbook {

/// Tells which of many condition blocks hold for a segment without asking each: every block waits under
/// its most telling condition, and only blocks found there are asked for their others. Immutable.
class RuleMatcher {
public:
    /// A block's place among those given.
    using Position = std::uint32_t;

    explicit RuleMatcher(std::vector<RuleMatch> matches);

    /// The blocks that hold, in ascending order. A block without any condition always holds.
    std::vector<Position> matching(const RuleSubject& subject) const;

private:
    struct TextHash {
        using is_transparent = void; // NOLINT(readability-identifier-naming)
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
    };
    using PositionsByText = std::unordered_map<std::string, std::vector<Position>, TextHash, std::equal_to<>>;

    /// Whether the conditions other than the title's hold.
    bool applicationAndDomainHold(const RuleMatch& match, const RuleSubject& subject) const;

    std::vector<RuleMatch> m_matches;
    TitleSearch m_titles;
    /// By the title text's number.
    std::vector<std::vector<Position>> m_byTitle;
    PositionsByText m_byApplication;
    PositionsByText m_byHost;
    std::vector<Position> m_unconditional;
};

} // namespace stintbook
