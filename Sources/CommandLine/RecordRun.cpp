#include "CommandLine/RecordRun.h"

#include <csignal>
#include <ctime>
#include <thread>

#include <fmt/format.h>

#include "App/AppPreferences.h"
#include "App/PreferencesFile.h"
#include "App/Recorder.h"
#include "Base/BuildInformation.h"
#include "Base/Log.h"
#include "Capture/BoundedShutdown.h"
#include "Platform/DesktopObservation.h"
#include "Platform/EventLoop.h"
#include "Platform/SessionBusInstance.h"
#include "Platform/SessionBusService.h"

namespace stintbook {

namespace {

/// SIGINT and SIGTERM, held back from every thread that is made from now on, so that one can wait for them.
class EndingSignals {
public:
    EndingSignals()
    {
        sigemptyset(&m_signals);
        sigaddset(&m_signals, SIGINT);
        sigaddset(&m_signals, SIGTERM);
        pthread_sigmask(SIG_BLOCK, &m_signals, nullptr);
    }

    /// Returns when one arrives or the time is over.
    void wait(const std::optional<Seconds>& limit) const
    {
        if (!limit) {
            int signal = 0;
            sigwait(&m_signals, &signal);
            return;
        }
        const auto whole = static_cast<std::time_t>(limit->value);
        const timespec remaining{whole, static_cast<long>((limit->value - static_cast<double>(whole)) * 1e9)};
        sigtimedwait(&m_signals, nullptr, &remaining);
    }

private:
    sigset_t m_signals{};
};

using ShutdownResult = BoundedShutdown::Outcome<CaptureShutdownOutcome>;

void logResult(const ShutdownResult& result)
{
    const auto* outcome = std::get_if<CaptureShutdownOutcome>(&result);
    if (outcome == nullptr) {
        log::error("Termination deadline expired before the shutdown flush finished; any evidence still in "
                   "memory is "
                   "lost");
    } else if (outcome->kind == CaptureShutdownOutcome::Kind::incomplete) {
        log::error("Shutdown flush left {} segment(s) unsaved; the store did not accept them",
                   outcome->unsavedSegmentCount);
    } else if (outcome->kind == CaptureShutdownOutcome::Kind::persisted) {
        log::event("Shutdown flush persisted every observed segment");
    }
}

/// Opens the store as its owner. Another owner is asked to come forward.
std::unique_ptr<OpenedStore> ownedStore(const Session& session)
{
    auto store = session.ownStore();
    if (!store && std::holds_alternative<StoreHeld>(store.error())) {
        log::event("A second launch found the store already held and handed over to it");
        // Whether it does is the other copy's affair; this one has said what there is to say.
        std::ignore = SessionBusInstance().activate();
    }
    return orRefuse(std::move(store));
}

} // namespace

void record(Session& session, const RecordRequest& request)
{
    const EndingSignals signals;
    const auto store = ownedStore(session);
    PreferencesFile file(PreferencesFile::standardLocation(session.environment(), buildKind()));
    const AppPreferences preferences(file);
    PreferencesCapturePauseStore pauses(file);

    SystemTimeSource timeSource;
    const SystemAwakeClock awakeClock;
    EventLoop loop;
    DesktopObservation desktop(loop, timeSource, awakeClock);
    if (!desktop.canSeeApplications())
        throw Refusal{"This desktop does not tell which application is in front, so nothing was recorded."};

    Recorder recorder(*store,
                      {.frontmost = desktop.frontmost(),
                       .focusedWindow = desktop.windowReader(),
                       .browserDomain = desktop.windowReader(),
                       .boundaries = desktop.boundaries(),
                       .idle = desktop.idle(),
                       .accessibilityTrust = desktop.accessibilityTrust(),
                       .calendar = desktop.calendar(),
                       .sources = desktop.sources()},
                      {.timeSource = timeSource, .timers = loop, .capture = loop}, request.configuration,
                      pauses);
    if (request.trace && !recorder.traceTo(*request.trace)) {
        throw Refusal{fmt::format("The trace “{}” could not be written, so nothing was recorded.",
                                  request.trace->string())};
    }
    desktop.boundaries().setBeforeSleep(
        [&](std::function<void()> done) { recorder.settle(std::move(done)); });
    SessionBusService service(loop);
    recorder.followStatus([&](const CaptureStatus&) { service.announceStatus(); });

    loop.post([&] {
        recorder.start(preferences);
        service.publish(recorder);
    });
    ShutdownResult result;
    {
        const std::jthread capture([&] { loop.run(); });
        signals.wait(request.duration);
        result = BoundedShutdown::run<CaptureShutdownOutcome>(
            [&](const auto& complete) { loop.post([&recorder, complete] { recorder.shutdown(complete); }); });
        loop.stop();
    }
    logResult(result);
    const auto* outcome = std::get_if<CaptureShutdownOutcome>(&result);
    if (outcome == nullptr || outcome->kind == CaptureShutdownOutcome::Kind::incomplete)
        throw Refusal{
            "Not everything could be saved. What is missing was kept beside the store and is saved by the "
            "next start."};
}

} // namespace stintbook
