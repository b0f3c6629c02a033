#pragma once

#include <algorithm>
#include <optional>
#include <vector>

#include "Domain/CalendarContext.h"
#include "Review/WorkBlockBuilder.h"

namespace stintbook {

/// Builds blocks as one would by hand: whole lists are copied, sorted and walked again for every question.
/// What the builder must agree with.
class BlockModel {
public:
    BlockModel(CalendarContext calendar, AttributionEngine engine, ExclusionEngine exclusion)
        : m_calendar(std::move(calendar))
        , m_engine(std::move(engine))
        , m_exclusion(std::move(exclusion))
    {
    }

    std::vector<WorkBlock> blocks(const std::vector<FreeSegment>& segments,
                                  const SegmentReviews& reviews) const
    {
        auto runs = chained(folded(firstRuns(segments, reviews)));
        std::vector<WorkBlock> result;
        for (const auto& run : runs)
            result.push_back(block(run));
        return result;
    }

private:
    using Entries = std::vector<WorkBlockSegment>;

    struct Run {
        Entries entries;
        Entries explanation;

        Instant start() const { return entries.front().segment.start; }
        Instant end() const { return entries.back().segment.end; }
        bool isShort() const { return end() - start() < Seconds{120}; }
        const SegmentReview& review() const { return explanation.front().review; }
    };

    bool onOneDay(const Run& a, const Run& b) const
    {
        return m_calendar.dayOf(a.start()) == m_calendar.dayOf(b.start());
    }

    static void addEntries(Run& run, const Entries& entries)
    {
        run.entries.insert(run.entries.end(), entries.begin(), entries.end());
        std::ranges::sort(run.entries, segmentOrder, &WorkBlockSegment::segment);
    }

    static void addExplanation(Run& run, const Entries& entries)
    {
        run.explanation.insert(run.explanation.end(), entries.begin(), entries.end());
    }

    std::vector<Run> firstRuns(const std::vector<FreeSegment>& segments, const SegmentReviews& reviews) const
    {
        Entries entries;
        for (const auto& free : segments) {
            if (free.segment.kind != ActivityKind::work || m_exclusion.excludes(free.segment))
                continue;
            const auto review = reviews.find(free.sourceSegmentID);
            entries.push_back({free.segment, free.sourceSegmentID, m_engine.evaluate(free.segment),
                               review == reviews.end() ? SegmentReview() : review->second});
        }
        std::ranges::sort(entries, segmentOrder, &WorkBlockSegment::segment);

        std::vector<Run> runs;
        for (const auto& entry : entries) {
            const Run single{{entry}, {entry}};
            if (!runs.empty() && runs.back().end() == entry.segment.start && onOneDay(runs.back(), single)
                && runs.back().entries.back().segment.application == entry.segment.application
                && runs.back().entries.back().review == entry.review
                && runs.back().entries.back().effectiveAssignment() == entry.effectiveAssignment())
                runs.back().entries.push_back(entry);
            else
                runs.push_back(single);
        }
        for (auto& run : runs) {
            run.explanation.clear();
            std::ranges::copy_if(run.entries, std::back_inserter(run.explanation),
                                 [](const auto& entry) { return entry.segment.length() >= Seconds{60}; });
            if (run.explanation.empty())
                run.explanation = run.entries;
        }
        return runs;
    }

    bool takesIn(const Run& receiver, const Run& run) const
    {
        return (receiver.end() == run.start() || run.end() == receiver.start()) && onOneDay(receiver, run)
            && !receiver.isShort() && receiver.review() == run.review();
    }

    bool areJoinable(const Run& a, const Run& b) const
    {
        const auto& first = a.explanation.front();
        const auto& second = b.explanation.front();
        return a.end() == b.start() && onOneDay(a, b)
            && dominantApplication(a.entries) == dominantApplication(b.entries)
            && first.review == second.review && first.effectiveAssignment() == second.effectiveAssignment()
            && first.evaluation.assignment == second.evaluation.assignment
            && first.evaluation.conflictingRuleIDs.empty() == second.evaluation.conflictingRuleIDs.empty();
    }

    bool absorbShortRuns(std::vector<Run>& runs) const
    {
        bool hasChanged = false;
        for (std::size_t i = 0; i < runs.size();) {
            std::optional<std::size_t> receiver;
            if (runs[i].isShort() && i > 0 && takesIn(runs[i - 1], runs[i]))
                receiver = i - 1;
            else if (runs[i].isShort() && i + 1 < runs.size() && takesIn(runs[i + 1], runs[i]))
                receiver = i + 1;
            if (!receiver) {
                ++i;
                continue;
            }
            addEntries(runs[*receiver], runs[i].entries);
            runs.erase(runs.begin() + static_cast<std::ptrdiff_t>(i));
            hasChanged = true;
        }
        return hasChanged;
    }

    bool joinEqualNeighbours(std::vector<Run>& runs) const
    {
        bool hasChanged = false;
        for (std::size_t i = 0; i + 1 < runs.size();) {
            if (!areJoinable(runs[i], runs[i + 1])) {
                ++i;
                continue;
            }
            addEntries(runs[i], runs[i + 1].entries);
            addExplanation(runs[i], runs[i + 1].explanation);
            runs.erase(runs.begin() + static_cast<std::ptrdiff_t>(i + 1));
            hasChanged = true;
        }
        return hasChanged;
    }

    std::vector<Run> folded(std::vector<Run> runs) const
    {
        for (bool hasChanged = true; hasChanged;) {
            hasChanged = absorbShortRuns(runs);
            hasChanged = joinEqualNeighbours(runs) || hasChanged;
        }
        return runs;
    }

    std::vector<Run> chained(const std::vector<Run>& runs) const
    {
        std::vector<Run> result;
        for (std::size_t i = 0; i < runs.size();) {
            Run chain = runs[i++];
            if (chain.isShort()) {
                while (i < runs.size() && runs[i].isShort() && runs[i].review() == chain.review()
                       && chain.end() == runs[i].start() && onOneDay(chain, runs[i])) {
                    addEntries(chain, runs[i].entries);
                    addExplanation(chain, runs[i].explanation);
                    ++i;
                }
            }
            result.push_back(chain);
        }
        return result;
    }

    static AttributionEvaluation combined(const Entries& explanation)
    {
        AttributionEvaluation block;
        const auto add = [&](std::vector<RuleID>& list, const std::vector<RuleID>& rules) {
            for (const auto& rule : rules) {
                if (rule != block.winningRuleID && std::ranges::find(list, rule) == list.end())
                    list.push_back(rule);
            }
        };
        for (const auto& [segment, source, evaluation, review] : explanation) {
            if (!evaluation.assignment)
                continue;
            if (!block.assignment) {
                block = evaluation;
            } else if (evaluation.assignment == block.assignment) {
                add(block.supportingRuleIDs, {*evaluation.winningRuleID});
                add(block.supportingRuleIDs, evaluation.supportingRuleIDs);
                add(block.conflictingRuleIDs, evaluation.conflictingRuleIDs);
            } else {
                add(block.conflictingRuleIDs, {*evaluation.winningRuleID});
            }
        }
        return block;
    }

    static WorkBlock block(const Run& run)
    {
        return {.id = run.entries.front().segment.id.uuid,
                .start = run.start(),
                .end = run.end(),
                .lineage = run.entries,
                .application = dominantApplication(run.entries),
                .attribution = combined(run.explanation),
                .review = run.review(),
                .reducedContextSegmentCount =
                    static_cast<int>(std::ranges::count(run.entries, ContextEvidence::applicationOnly,
                                                        [](const auto& e) { return e.segment.evidence; }))};
    }

    CalendarContext m_calendar;
    AttributionEngine m_engine;
    ExclusionEngine m_exclusion;
};

} // namespace stintbook
