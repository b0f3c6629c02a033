#include "Review/WorkBlockBuilder.h"

#include <algorithm>
#include <map>
#include <unordered_set>
#include <utility>

#include "Domain/SegmentOrder.h"
#include "Review/BlockAttribution.h"
#include "Review/Run.h"
#include "Review/RunFolding.h"
#include "Review/SegmentEvaluator.h"

namespace stintbook {

namespace {

/// A shorter segment explains a run only where all of the run's are shorter.
constexpr Seconds shortestExplanation{60};

/// That of a segment which nobody corrected.
const SegmentReview noReview;

/// Work that rules do not exclude, in segment order.
std::vector<RunEntry> workEntries(const std::vector<FreeSegment>& segments, const SegmentReviews& reviews,
                                  const CalendarContext& calendar, SegmentEvaluator& evaluator)
{
    std::vector<const FreeSegment*> work;
    work.reserve(segments.size());
    for (const auto& free : segments) {
        if (free.segment.kind == ActivityKind::work)
            work.push_back(&free);
    }
    sortBySegments(work, [](const FreeSegment* free) -> auto& { return free->segment; });

    std::map<ApplicationIdentity, ApplicationTotals::Number> applications{
        {unknownApplication(), unknownApplicationNumber}};
    const auto numberOf = [&](const ApplicationIdentity& application) {
        return applications.try_emplace(application, applications.size()).first->second;
    };

    std::vector<RunEntry> entries;
    entries.reserve(work.size());
    for (const FreeSegment* free : work) {
        const auto* evaluation = evaluator.evaluation(free->segment);
        if (!evaluation)
            continue;
        const auto review = reviews.find(free->sourceSegmentID);
        auto& entry = entries.emplace_back();
        entry.piece = free;
        entry.evaluation = evaluation;
        entry.review = review == reviews.end() ? &noReview : &review->second;
        entry.interval = free->segment.interval();
        entry.day = calendar.boundsOfDayAt(free->segment.start).start;
        if (const auto& application = free->segment.application)
            entry.application = numberOf(*application);
    }
    return entries;
}

/// Whether two neighbours belong to one run from the outset.
bool areOneRun(const RunEntry& earlier, const RunEntry& later)
{
    return earlier.interval.end == later.interval.start && earlier.day == later.day
        && earlier.application == later.application && *earlier.review == *later.review
        && earlier.effectiveAssignment() == later.effectiveAssignment();
}

Run makeRun(std::span<const RunEntry> entries, std::size_t first, std::size_t past)
{
    Run run{.firstEntry = first, .pastEntry = past};
    for (std::size_t i = first; i < past; ++i) {
        const auto length = entries[i].interval.length();
        if (length >= shortestExplanation)
            run.explanation.push_back(i);
        if (entries[i].application)
            run.applications.add(*entries[i].application, length, first);
    }
    if (run.explanation.empty()) {
        for (std::size_t i = first; i < past; ++i)
            run.explanation.push_back(i);
    }
    return run;
}

std::vector<Run> cutIntoRuns(std::span<const RunEntry> entries)
{
    std::vector<Run> runs;
    for (std::size_t first = 0, past = 0; first < entries.size(); first = past) {
        past = first + 1;
        while (past < entries.size() && areOneRun(entries[past - 1], entries[past]))
            ++past;
        runs.push_back(makeRun(entries, first, past));
    }
    return runs;
}

AttributionEvaluation attribution(const Run& run, std::span<const RunEntry> entries)
{
    BlockAttribution attribution;
    // What was said once adds nothing when it is said again.
    std::unordered_set<const AttributionEvaluation*> heard;
    for (const auto i : run.explanation) {
        if (heard.insert(entries[i].evaluation).second)
            attribution.add(*entries[i].evaluation);
    }
    return attribution.combined();
}

WorkBlock makeBlock(const Run& run, std::span<const RunEntry> entries)
{
    WorkBlock block;
    block.attribution = attribution(run, entries);
    block.review = *entries[run.explanation.front()].review;

    block.lineage.reserve(run.pastEntry - run.firstEntry);
    for (const auto& entry : entries.subspan(run.firstEntry, run.pastEntry - run.firstEntry))
        block.lineage.push_back({.segment = entry.piece->segment,
                                 .sourceSegmentID = entry.piece->sourceSegmentID,
                                 .evaluation = *entry.evaluation,
                                 .review = *entry.review});
    const auto& first = block.lineage.front().segment;
    block.id = first.id.uuid;
    block.start = first.start;
    block.end = block.lineage.back().segment.end;
    block.application = dominantApplication(block.lineage);
    block.reducedContextSegmentCount =
        static_cast<int>(std::ranges::count_if(block.lineage, [](const WorkBlockSegment& work) {
            return work.segment.evidence == ContextEvidence::applicationOnly;
        }));
    return block;
}

} // namespace

WorkBlockBuilder::WorkBlockBuilder(CalendarContext calendar, AttributionEngine engine,
                                   ExclusionEngine exclusion)
    : m_calendar(std::move(calendar))
    , m_engine(std::move(engine))
    , m_exclusion(std::move(exclusion))
{
}

std::vector<WorkBlock> WorkBlockBuilder::blocks(const std::vector<FreeSegment>& segments,
                                                const SegmentReviews& reviews) const
{
    // A calendar remembers the day it was last asked for; a copy lets two threads share this builder.
    const CalendarContext calendar = m_calendar;
    SegmentEvaluator evaluator(m_engine, m_exclusion);
    const auto entries = workEntries(segments, reviews, calendar, evaluator);
    const RunQuestions questions(entries);
    const auto runs = chained(folded(cutIntoRuns(entries), questions), questions);

    std::vector<WorkBlock> blocks;
    blocks.reserve(runs.size());
    for (const auto& run : runs)
        blocks.push_back(makeBlock(run, entries));
    return blocks;
}

} // namespace stintbook
