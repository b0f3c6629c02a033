#include "Review/RuleEffect.h"

#include <fmt/format.h>

#include "Review/AnswersByLikeness.h"
#include "Rules/RuleExplanation.h"

namespace stintbook {

namespace {

using Assignment = std::optional<AttributionAssignment>;

std::string counted(int count, const char* one, const char* many)
{
    return count == 1 ? std::string("1 ") + one : fmt::format("{} {}", count, many);
}

} // namespace

RuleEffect ruleEffect(const RulePrecedencePreview& proposed, RuleID rule, const AttributionEngine& present,
                      int windowDays)
{
    RuleEffect effect;
    effect.summary.windowDays = windowDays;
    if (proposed.countsByRule.contains(rule))
        effect.summary = previewSummary(proposed, rule, windowDays);

    AnswersByLikeness<Assignment> answers;
    for (const auto& block : proposed.blocks) {
        for (const auto& [segment, source, evaluation, review] : block.lineage) {
            const auto& now = answers.answer(
                segment, [&](const RuleSubject& subject) { return present.evaluate(subject).assignment; });
            if (review.assignment || now == evaluation.assignment)
                continue;
            auto& count = !now           ? effect.newlyAttributed
                : !evaluation.assignment ? effect.noLongerAttributed
                                         : effect.attributedOtherwise;
            ++count;
            break;
        }
    }
    return effect;
}

std::string description(const RuleEffect& effect)
{
    const auto& [counts, windowDays, matchesNothing] = effect.summary;
    const auto window = windowDays == 1 ? std::string("today") : fmt::format("the last {} days", windowDays);
    auto text = counts.applies == 0
        ? fmt::format("It would attribute no block of {}.", window)
        : fmt::format("It would attribute {} of {}.", counted(counts.applies, "block", "blocks"), window);
    if (counts.shadowed > 0)
        text += " " + shadowedText(counts.shadowed);
    if (effect.newlyAttributed > 0)
        text += fmt::format(" {} unattributed now.", counted(effect.newlyAttributed, "is", "are"));
    if (effect.attributedOtherwise > 0)
        text +=
            fmt::format(" {} attributed otherwise now.", counted(effect.attributedOtherwise, "is", "are"));
    if (effect.noLongerAttributed > 0)
        text += fmt::format(" {} would become unassigned.",
                            counted(effect.noLongerAttributed, "block", "blocks"));
    return text;
}

} // namespace stintbook
