#include "Review/WorkBlockBuilder.h"

#include <algorithm>
#include <map>
#include <unordered_set>
#include <utility>

#include "Review/BlockAttribution.h"
#include "Review/Run.h"
#include "Review/RunFolding.h"
#include "Review/SegmentEvaluator.h"

namespace stintbook {

namespace {

/// A shorter segment explains a run only where all of the run's are shorter.
constexpr Seconds shortestExplanation{60};

/// Work that rules do not exclude, in segment order.
std::vector<RunEntry> workEntries(const std::vector<FreeSegment>& segments, const SegmentReviews& reviews,
                                  const CalendarContext& calendar, SegmentEvaluator evaluator)
{
    std::vector<const FreeSegment*> work;
    work.reserve(segments.size());
    for (const auto& free : segments) {
        if (free.segment.kind == ActivityKind::work)
            work.push_back(&free);
    }
    std::ranges::sort(work, segmentOrder, [](const FreeSegment* free) -> auto& { return free->segment; });

    std::map<ApplicationIdentity, ApplicationTotals::Number> applications{
        {unknownApplication(), unknownApplicationNumber}};
    const auto numberOf = [&](const ApplicationIdentity& application) {
        return applications.try_emplace(application, applications.size()).first->second;
    };

    std::vector<RunEntry> entries;
    entries.reserve(work.size());
    for (const FreeSegment* free : work) {
        const auto& [evaluation, number] = evaluator.verdict(free->segment);
        if (!evaluation)
            continue;
        const auto review = reviews.find(free->sourceSegmentID);
        auto& entry = entries.emplace_back();
        entry.work = {.segment = free->segment,
                      .sourceSegmentID = free->sourceSegmentID,
                      .evaluation = *evaluation,
                      .review = review == reviews.end() ? SegmentReview() : review->second};
        entry.day = calendar.boundsOfDayAt(free->segment.start).start;
        if (const auto& application = free->segment.application)
            entry.application = numberOf(*application);
        entry.evaluationNumber = number;
    }
    return entries;
}

/// Whether two neighbours belong to one run from the outset.
bool areOneRun(const RunEntry& earlier, const RunEntry& later)
{
    return earlier.work.segment.end == later.work.segment.start && earlier.day == later.day
        && earlier.application == later.application && earlier.work.review == later.work.review
        && earlier.work.effectiveAssignment() == later.work.effectiveAssignment();
}

Run makeRun(std::span<const RunEntry> entries, std::size_t first, std::size_t past)
{
    Run run{.firstEntry = first, .pastEntry = past};
    for (std::size_t i = first; i < past; ++i) {
        const auto length = entries[i].work.segment.length();
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
    std::unordered_set<std::size_t> heard;
    for (const auto i : run.explanation) {
        if (heard.insert(entries[i].evaluationNumber).second)
            attribution.add(entries[i].work.evaluation);
    }
    return attribution.combined();
}

/// Moves the run's work out of the entries.
WorkBlock makeBlock(const Run& run, std::span<RunEntry> entries)
{
    WorkBlock block;
    block.attribution = attribution(run, entries);
    block.review = entries[run.explanation.front()].work.review;

    block.lineage.reserve(run.pastEntry - run.firstEntry);
    for (auto& entry : entries.subspan(run.firstEntry, run.pastEntry - run.firstEntry))
        block.lineage.push_back(std::move(entry.work));
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
    auto entries = workEntries(segments, reviews, calendar, SegmentEvaluator(m_engine, m_exclusion));
    const RunQuestions questions(entries);
    const auto runs = chained(folded(cutIntoRuns(entries), questions), questions);

    std::vector<WorkBlock> blocks;
    blocks.reserve(runs.size());
    for (const auto& run : runs)
        blocks.push_back(makeBlock(run, entries));
    return blocks;
}

} // namespace stintbook
