#pragma once

#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "Capture/FreshSegmentID.h"
#include "Domain/ActivitySegment.h"

namespace stintbook {

/// The frontmost application and what was seen of its work.
struct ContextObservation {
    ApplicationIdentity application;
    FocusedContext context;
    std::optional<BrowserDomain> browserDomain;
    ContextEvidence evidence = ContextEvidence::applicationOnly;
    Instant observedAt;
};

/// The user became idle or came back.
struct IdleChanged {
    bool isIdle = false;
    Instant at;
};

struct GapBegan {
    GapReason reason = GapReason::noObservation;
    Instant at;
};

using SegmentInput = std::variant<ContextObservation, IdleChanged, GapBegan>;

/// Turns observations, idle changes and gaps into recorded segments: a pure state machine that holds at
/// most one unfinished segment. Every call returns what it closed, in time order, cut where days begin.
///
/// A value without locks. An observation that continues the open stretch allocates nothing.
class SegmentBuilder {
public:
    /// What is being built. Its end and its zone are fixed when it closes.
    struct OpenSegment {
        Instant start;
        ActivityKind kind = ActivityKind::work;
        std::optional<ApplicationIdentity> application;
        FocusedContext context;
        std::optional<BrowserDomain> browserDomain;
        ContextEvidence evidence = ContextEvidence::none;
        std::optional<GapReason> gapReason;
        /// What its first piece will be called: drawn early, so that an extent kept in case of a crash can
        /// be told from the stored segment.
        SegmentID id = freshSegmentID();
        /// The same for further pieces, as far as an extent has needed them.
        std::vector<SegmentID> laterIDs = {};
    };

    explicit SegmentBuilder(CalendarContext calendar)
        : calendarContext(std::move(calendar))
    {
    }

    std::vector<ActivitySegment> ingest(const ContextObservation& observation);
    std::vector<ActivitySegment> ingest(const IdleChanged& change);
    std::vector<ActivitySegment> ingest(const GapBegan& gap);
    std::vector<ActivitySegment> ingest(const SegmentInput& input);
    /// Ends the open segment, if any; nothing comes of one that would not be longer than zero.
    std::vector<ActivitySegment> close(Instant at);
    /// `close`, and the same stretch goes on from `at` as a new segment.
    std::vector<ActivitySegment> closeAndContinue(Instant at);
    /// What `close(at)` would return, under the identifiers that it would have; the segment stays open.
    std::vector<ActivitySegment> extent(Instant at);

    CalendarContext calendarContext;
    std::optional<OpenSegment> open;
    bool isIdle = false;

private:
    std::vector<ActivitySegment> pieces(OpenSegment& segment, Instant end) const;
};

} // namespace stintbook
