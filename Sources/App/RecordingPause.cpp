#include "App/RecordingPause.h"

namespace stintbook {

namespace {

/// Whether a copy on the bus records.
std::expected<bool, InstanceProblem> isRecording(RunningInstance& instance)
{
    const auto status = instance.status();
    if (!status)
        return std::unexpected(InstanceProblem{status.error()});
    return *status && (*status)->capture.runtime.phase != CaptureRuntimeState::Phase::stopped;
}

std::expected<void, InstanceProblem> answered(std::expected<void, std::string> answer)
{
    if (!answer)
        return std::unexpected(InstanceProblem{std::move(answer).error()});
    return {};
}

/// What a copy that starts later is to find.
std::expected<void, InstanceProblem> kept(bool isKept)
{
    if (!isKept)
        return std::unexpected(
            InstanceProblem{"The preferences could not be saved, so nothing was changed."});
    return {};
}

} // namespace

std::string message(const InstanceProblem& problem)
{
    return problem.sentence;
}

std::expected<void, InstanceProblem> pauseRecording(RunningInstance& instance, CapturePauseStoring& pauses,
                                                    const RequestedPause& pause)
{
    const auto isRecorded = isRecording(instance);
    if (!isRecorded)
        return std::unexpected(isRecorded.error());
    if (*isRecorded)
        return answered(instance.pause(pause.deadline));
    return kept(pauses.save(CapturePause{pause.deadline, pause.length}));
}

std::expected<void, InstanceProblem> resumeRecording(RunningInstance& instance, CapturePauseStoring& pauses)
{
    const auto isRecorded = isRecording(instance);
    if (!isRecorded)
        return std::unexpected(isRecorded.error());
    if (*isRecorded)
        return answered(instance.resume());
    return kept(pauses.save(std::nullopt));
}

} // namespace stintbook
