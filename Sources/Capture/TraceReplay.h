#pragma once

#include <cstddef>
#include <istream>
#include <memory>
#include <optional>
#include <vector>

#include "Capture/ActivitySegmentRepository.h"
#include "Capture/CaptureConfiguration.h"
#include "Capture/TraceLine.h"
#include "Domain/CaptureStatus.h"

namespace stintbook {

/// Whether a replay hands back the segments themselves or only how many there were.
enum class ReplayedSegments { handedBack, counted };

struct TraceReplayResult {
    /// In the order in which the store took them; empty when they were only counted.
    std::vector<ActivitySegment> segments;
    std::size_t savedCount = 0;
    std::size_t unsavedCount = 0;
    CaptureShutdownOutcome outcome;
    /// Why the trace ended early; what came before it has been replayed and saved.
    std::optional<TraceProblem> problem;
};

/// Runs a trace through a real coordinator into the repository, on this thread and as fast as it goes.
/// Saves are gathered into larger ones, always oldest first. A recording with another idle threshold than the
/// usual one is to be replayed with that.
TraceReplayResult replayTrace(std::istream& trace, std::shared_ptr<ActivitySegmentRepository> repository,
                              ReplayedSegments segments = ReplayedSegments::handedBack,
                              Seconds idleThreshold = CaptureConfiguration{}.idleThreshold);

} // namespace stintbook
