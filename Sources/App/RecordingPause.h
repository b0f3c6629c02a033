#pragma once

#include <expected>
#include <string>

#include "App/Ports/RunningInstance.h"
#include "Capture/CapturePause.h"

namespace stintbook {

/// The running copy did not do what it was asked to; its words.
struct InstanceProblem {
    std::string sentence;
};
std::string message(const InstanceProblem& problem);

/// Hands a pause to the running copy; without one it is remembered for the next start.
std::expected<void, InstanceProblem> pauseRecording(RunningInstance& instance, CapturePauseStoring& pauses,
                                                    const RequestedPause& pause);
std::expected<void, InstanceProblem> resumeRecording(RunningInstance& instance, CapturePauseStoring& pauses);

} // namespace stintbook
