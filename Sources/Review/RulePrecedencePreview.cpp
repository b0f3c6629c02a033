#include "Review/RulePrecedencePreview.h"

#include <limits>
#include <unordered_map>
#include <utility>

#include "Review/AnswersByLikeness.h"
#include "Rules/RuleExplanation.h"
#include "Rules/RuleMatcher.h"
#include "Rules/RuleOrder.h"

namespace stintbook {

namespace {

using Position = RuleMatcher::Position;

/// Tells which rules match a block, each once.
class BlockMatcher {
public:
    explicit BlockMatcher(const std::vector<AttributionRule>& rules)
        : m_matcher(matches(rules))
        , m_lastBlock(rules.size(), std::numeric_limits<std::size_t>::max())
    {
    }

    /// Calls `visit(position)` for every rule that matches a segment of the block with this number.
    template <typename Visit> void forEachMatch(std::size_t number, const WorkBlock& block, Visit visit)
    {
        for (const auto& entry : block.lineage) {
            const auto& positions = m_answers.answer(
                entry.segment, [this](const RuleSubject& subject) { return m_matcher.matching(subject); });
            for (const auto position : positions) {
                if (std::exchange(m_lastBlock[position], number) != number)
                    visit(position);
            }
        }
    }

private:
    static std::vector<RuleMatch> matches(const std::vector<AttributionRule>& rules)
    {
        std::vector<RuleMatch> matches;
        matches.reserve(rules.size());
        for (const auto& rule : rules)
            matches.push_back(rule.match);
        return matches;
    }

    RuleMatcher m_matcher;
    AnswersByLikeness<std::vector<Position>> m_answers;
    /// By rule: the block for which it was named last.
    std::vector<std::size_t> m_lastBlock;
};

} // namespace

RulePrecedencePreview rulePrecedencePreview(std::vector<AttributionRule> rules, std::vector<WorkBlock> blocks)
{
    RulePrecedencePreview preview;
    preview.rules = enabledInListOrder(std::move(rules));
    preview.blocks = std::move(blocks);

    std::unordered_map<RuleID, Position> positions;
    for (Position position = 0; position < preview.rules.size(); ++position)
        positions.emplace(preview.rules[position].id, position);

    std::vector<RulePrecedencePreview::Matches> matches(preview.rules.size());
    std::vector<bool> isMatching(preview.rules.size());
    BlockMatcher matcher(preview.rules);
    for (std::size_t number = 0; number < preview.blocks.size(); ++number) {
        const auto& block = preview.blocks[number];
        const auto& winningRule = block.attribution.winningRuleID;
        const auto winner = winningRule ? positions.find(*winningRule) : positions.end();
        matcher.forEachMatch(number, block, [&](Position position) {
            isMatching[position] = true;
            if (winner == positions.end())
                return;
            if (position == winner->second)
                matches[position].applied.push_back(number);
            else if (position > winner->second)
                matches[position].shadowed.push_back(number);
        });
    }

    for (std::size_t position = 0; position < preview.rules.size(); ++position) {
        const auto& id = preview.rules[position].id;
        auto& found = matches[position];
        preview.countsByRule[id] = {static_cast<int>(found.applied.size()),
                                    static_cast<int>(found.shadowed.size())};
        preview.matchesByRule[id] = std::move(found);
        if (!isMatching[position])
            preview.rulesWithoutMatch.insert(id);
    }
    return preview;
}

RulePreviewSummary previewSummary(const RulePrecedencePreview& preview, RuleID rule, int windowDays)
{
    return {preview.countsByRule.at(rule), windowDays, preview.rulesWithoutMatch.contains(rule)};
}

std::string remark(const RulePreviewSummary& summary)
{
    if (summary.counts.shadowed > 0)
        return shadowedText(summary.counts.shadowed);
    return summary.matchesNothing && summary.windowDays == 1 ? std::string(noBlockMatchesText) : "";
}

} // namespace stintbook
