#include "CommandLine/RecordRun.h"

#include <csignal>
#include <cstdlib>
#include <memory>

#include "App/AppEnvironment.h"
#include "Platform/DesktopThread.h"
#include "Platform/EventLoop.h"
#include "Platform/SessionBusInstance.h"

namespace stintbook {

namespace {

/// Until the loop is stopped, the time is over, or it turns out that there is nothing to record.
void run(AppEnvironment& environment, EventLoop& loop, const std::optional<Seconds>& duration)
{
    const auto isRefused = [&] { return environment.openingProblem() || environment.captureProblem(); };
    std::unique_ptr<Timers::Scheduled> limit;
    const auto changes = environment.follow([&] {
        if (isRefused())
            loop.stop();
        if (duration && !limit && environment.isCapturing())
            limit = loop.after(*duration, [&] { loop.stop(); });
    });
    if (environment.start() == AppEnvironment::Launch::going && !isRefused())
        loop.run();
}

} // namespace

void record(Session& session, const RecordRequest& request)
{
    EventLoop main;
    const auto signals = main.onSignals({SIGINT, SIGTERM}, [&](int) { main.stop(); });
    auto file = session.preferences();
    PreferencesCapturePauseStore pauses(file);
    SystemTimeSource timeSource;
    const SystemAwakeClock awakeClock;
    SessionBusInstance otherInstance;
    DesktopThread desktop(timeSource, awakeClock);
    AppEnvironment environment(
        {.locale = session.locale("LC_MONETARY"), .capture = request.configuration, .trace = request.trace},
        {.main = main,
         .timers = main,
         .timeSource = timeSource,
         .calendar = [&session] { return session.calendar(); },
         .variables = session.environment(),
         .preferences = file,
         .pauses = pauses,
         .otherInstance = otherInstance,
         .desktop = desktop});
    run(environment, main, request.duration);
    if (environment.openingProblem())
        throw Refusal{message(*environment.openingProblem())};
    if (environment.captureProblem())
        throw Refusal{*environment.captureProblem()};

    constexpr auto notSaved =
        "Not everything could be saved. What is missing was kept beside the store and is "
        "saved by the next start.";
    const auto result = environment.shutdown();
    const auto* outcome = std::get_if<CaptureShutdownOutcome>(&result);
    if (outcome == nullptr) {
        // What still runs waits for a store that does not answer, and would be waited for. The store is made for
        // an end like that of a power cut.
        session.errors() << notSaved << std::endl;
        std::_Exit(1);
    }
    if (outcome->kind == CaptureShutdownOutcome::Kind::incomplete)
        throw Refusal{notSaved};
}

} // namespace stintbook
