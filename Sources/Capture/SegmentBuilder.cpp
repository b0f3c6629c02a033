#include "Capture/SegmentBuilder.h"

namespace stintbook {

namespace {

/// Where a stretch began and why a gap is one take no part.
bool continues(const SegmentBuilder::OpenSegment& open, const ContextObservation& observation)
{
    return open.kind == ActivityKind::work && open.application == observation.application
        && open.context == observation.context && open.browserDomain == observation.browserDomain
        && open.evidence == observation.evidence;
}

} // namespace

std::vector<ActivitySegment> SegmentBuilder::ingest(const ContextObservation& observation)
{
    isIdle = false;
    if (open && continues(*open, observation))
        return {};

    auto closed = close(observation.observedAt);
    open = OpenSegment{.start = observation.observedAt,
                       .kind = ActivityKind::work,
                       .application = observation.application,
                       .context = observation.context,
                       .browserDomain = observation.browserDomain,
                       .evidence = observation.evidence};
    return closed;
}

std::vector<ActivitySegment> SegmentBuilder::ingest(const IdleChanged& change)
{
    if (change.isIdle == isIdle)
        return {};
    isIdle = change.isIdle;
    if (open && open->kind == ActivityKind::gap)
        return {};
    if (!isIdle)
        return close(change.at);

    OpenSegment idle{
        .start = change.at, .kind = ActivityKind::idle, .evidence = ContextEvidence::applicationOnly};
    if (open) {
        idle.application = open->application;
        idle.context = open->context;
        idle.browserDomain = open->browserDomain;
        idle.evidence = open->evidence;
    }
    auto closed = close(change.at);
    open = std::move(idle);
    return closed;
}

std::vector<ActivitySegment> SegmentBuilder::ingest(const GapBegan& gap)
{
    if (open && open->kind == ActivityKind::gap && open->gapReason == gap.reason)
        return {};
    auto closed = close(gap.at);
    open = OpenSegment{.start = gap.at, .kind = ActivityKind::gap, .gapReason = gap.reason};
    return closed;
}

std::vector<ActivitySegment> SegmentBuilder::ingest(const SegmentInput& input)
{
    return std::visit([this](const auto& alternative) { return ingest(alternative); }, input);
}

std::vector<ActivitySegment> SegmentBuilder::close(Instant at)
{
    if (!open)
        return {};
    auto closed = pieces(*open, at);
    open.reset();
    return closed;
}

std::vector<ActivitySegment> SegmentBuilder::closeAndContinue(Instant at)
{
    if (!open || !(open->start < at))
        return {};
    auto closed = pieces(*open, at);
    open->start = at;
    open->id = freshSegmentID();
    open->laterIDs.clear();
    return closed;
}

std::vector<ActivitySegment> SegmentBuilder::extent(Instant at)
{
    if (!open)
        return {};
    return pieces(*open, at);
}

std::vector<ActivitySegment> SegmentBuilder::pieces(OpenSegment& segment, Instant end) const
{
    std::vector<ActivitySegment> result;
    if (!(segment.start < end))
        return result;

    const auto nextID = [&] {
        if (result.empty())
            return segment.id;
        if (segment.laterIDs.size() < result.size())
            segment.laterIDs.push_back(freshSegmentID());
        return segment.laterIDs[result.size() - 1];
    };
    const auto emit = [&](Instant from, Instant to) {
        result.push_back({.id = nextID(),
                          .start = from,
                          .end = to,
                          .kind = segment.kind,
                          .application = segment.application,
                          .context = segment.context,
                          .browserDomain = segment.browserDomain,
                          .evidence = segment.evidence,
                          .origin = SegmentOrigin::observed,
                          .timeZone = calendarContext.stamp(from),
                          .gapReason = segment.gapReason});
    };

    auto cursor = segment.start;
    for (;;) {
        const auto boundary = calendarContext.nextDayStart(cursor);
        // Beyond the calendar's years no day begins any more: the rest stays one piece.
        if (!(cursor < boundary && boundary < end))
            break;
        emit(cursor, boundary);
        cursor = boundary;
    }
    emit(cursor, end);
    return result;
}

} // namespace stintbook
