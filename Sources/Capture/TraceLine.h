#pragma once

#include <cstddef>
#include <string>
#include <variant>

#include "Capture/PipelineInput.h"

namespace stintbook {

/// From here on the store refuses, or accepts, what it is asked to save.
struct TraceStoreSwitch {
    bool refuses = false;
};

/// One line of a recorded or written trace.
struct TraceLine {
    Instant at;
    std::variant<CaptureStart, PipelineInput, TraceStoreSwitch> event;
};

/// Why a trace ends before its end.
struct TraceProblem {
    /// From 1.
    std::size_t lineNumber = 0;
    /// What is wrong with that line, as "\"at\" is missing".
    std::string reason;

    friend bool operator==(const TraceProblem&, const TraceProblem&) = default;
};

/// "Line 7: \"at\" is missing"
std::string message(const TraceProblem& problem);

} // namespace stintbook
