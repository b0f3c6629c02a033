#include "App/RunningCopy.h"

#include <csignal>
#include <utility>

#include <unistd.h>

#include "Base/Log.h"

namespace stintbook {

namespace {

constexpr const char* recordsNothing = "This copy of Velloran is not recording.";

} // namespace

InstanceStatus RunningCopy::status()
{
    InstanceStatus status;
    if (m_recorder != nullptr)
        status = m_recorder->status();
    status.processIdentifier = ::getpid();
    return status;
}

std::expected<void, std::string> RunningCopy::pause(std::optional<Instant> until)
{
    if (m_recorder == nullptr)
        return std::unexpected(recordsNothing);
    m_recorder->pause(until);
    return {};
}

std::expected<void, std::string> RunningCopy::resume()
{
    if (m_recorder == nullptr)
        return std::unexpected(recordsNothing);
    m_recorder->resume();
    return {};
}

void RunningCopy::deleteActivity(const ActivityDataScope& scope, Reply<DeletedActivity> reply,
                                 DeletionProgress progress)
{
    if (m_recorder == nullptr)
        return reply(std::unexpected(recordsNothing));
    m_recorder->deleteActivity(
        scope,
        [reply = std::move(reply)](const ActivityDeleting::Outcome& outcome) mutable {
            if (outcome)
                reply(*outcome);
            else
                reply(std::unexpected(message(outcome.error())));
        },
        std::move(progress));
}

void RunningCopy::flush(Reply<void> reply)
{
    if (m_recorder == nullptr)
        return reply(std::unexpected(recordsNothing));
    m_recorder->flush(std::move(reply));
}

bool RunningCopy::activate(ApplicationWindow window, const std::string& activationToken)
{
    log::event("Another launch asked this copy to come forward");
    if (m_activation)
        m_activation(window, activationToken);
    return bool(m_activation);
}

void RunningCopy::quit()
{
    ::kill(::getpid(), SIGTERM);
}

} // namespace stintbook
