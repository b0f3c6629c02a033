#include "App/RecordingPause.h"

namespace stintbook {

namespace {

/// Whether a copy is on the bus.
std::expected<bool, InstanceProblem> isRunning(RunningInstance& instance)
{
    const auto status = instance.status();
    if (!status)
        return std::unexpected(InstanceProblem{status.error()});
    return status->has_value();
}

std::expected<void, InstanceProblem> answered(std::expected<void, std::string> answer)
{
    if (!answer)
        return std::unexpected(InstanceProblem{std::move(answer).error()});
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
    const auto isThere = isRunning(instance);
    if (!isThere)
        return std::unexpected(isThere.error());
    if (*isThere)
        return answered(instance.pause(pause.deadline));
    pauses.save(CapturePause{pause.deadline, pause.length});
    return {};
}

std::expected<void, InstanceProblem> resumeRecording(RunningInstance& instance, CapturePauseStoring& pauses)
{
    const auto isThere = isRunning(instance);
    if (!isThere)
        return std::unexpected(isThere.error());
    if (*isThere)
        return answered(instance.resume());
    pauses.save(std::nullopt);
    return {};
}

} // namespace stintbook
