#include "Capture/ObservationPipeline.h"

#include <algorithm>
#include <utility>

#include "Capture/SupportedBrowser.h"

namespace stintbook {

namespace {

/// A wall clock behind the last input by less has not been set: clocks of different sources are a little
/// apart, and time services slew.
constexpr Seconds clockTolerance{1};

/// So many samples missing in a row mean that nobody observes.
constexpr int watchedSamples = 4;

} // namespace

ObservationPipeline::ObservationPipeline(CaptureConfiguration configuration, Providers providers,
                                         Clockwork clockwork, CaptureCoordinator& coordinator)
    : m_configuration(configuration)
    , m_providers(std::move(providers))
    , m_clockwork(clockwork)
    , m_coordinator(coordinator)
{
}

void ObservationPipeline::traceTo(TraceWriter& trace)
{
    m_trace = &trace;
    m_coordinator.followInputs([&trace](const PipelineInput& input) { trace.write(input); });
}

void ObservationPipeline::start(bool retainsTitleContext, bool browserContextEnabled)
{
    const CaptureStart start{.at = m_clockwork.timeSource.now(),
                             .calendar = m_providers.calendar.current(),
                             .retainsTitleContext = retainsTitleContext,
                             .browserContextEnabled = browserContextEnabled};
    m_startedAt = start.at;
    m_lastAt = start.at;
    m_isRunning = true;
    if (m_trace)
        m_trace->write(start);
    m_coordinator.start(start);
    schedulePauseEnd();

    // The first answer counts from the start, so that no title is missing only because the answer was
    // still under way.
    m_firstPermission = m_inputs.reserve(std::nullopt);
    m_providers.permission.follow([this](CapturePermissionState state) { permissionAnswered(state); });
    m_providers.calendar.follow([this](const CalendarContext& calendar) {
        feed(input::CalendarContextChanged{calendar, now()});
        if (m_calendarFollower)
            m_calendarFollower();
    });
    m_providers.boundaries.follow([this](const SystemBoundary& boundary) {
        const auto reported = std::visit([](const auto& either) { return either.at; }, boundary);
        m_inputs.push(input::Boundary{boundary, happened(reported)});
        // The machine may be asleep before an answer comes.
        if (std::holds_alternative<ActivitySuspended>(boundary))
            m_inputs.giveUpWaiting();
        applyReady();
    });
    m_idlePoll = m_clockwork.timers.every(m_configuration.idlePollInterval, [this] { pollIdle(); });
    m_providers.frontmost.follow([this](const FrontmostWindow& window) { frontReported(window); });
}

void ObservationPipeline::shutdown(CaptureCoordinator::ShutDown done)
{
    const auto at = now();
    if (std::exchange(m_isRunning, false)) {
        m_providers.frontmost.stop();
        m_providers.boundaries.stop();
        m_providers.permission.stop();
        m_providers.calendar.stop();
        for (auto* timer : {&m_idlePoll, &m_browserPoll, &m_laterTitle, &m_pauseEnd})
            timer->reset();
        m_inputs.giveUpWaiting();
        applyReady();
    }
    m_coordinator.shutdown(at, std::move(done));
}

void ObservationPipeline::pause(const RequestedPause& pause)
{
    feed(input::Pause{pause.deadline, pause.length, now()});
}

void ObservationPipeline::resume()
{
    feed(input::Resume{now()});
}

void ObservationPipeline::setRetainsTitleContext(bool isRetained)
{
    feed(input::TitleContextRetained{isRetained, now()});
}

void ObservationPipeline::setBrowserContextEnabled(bool isEnabled)
{
    feed(input::BrowserContextEnabled{isEnabled, now()});
}

void ObservationPipeline::resolveEvidenceForDeletion(Resolved reply)
{
    m_clockwork.capture.post([this, isAlive = std::weak_ptr(m_isAlive), reply = std::move(reply)]() mutable {
        if (!isAlive.expired())
            feed(input::ResolveForDeletion{std::move(reply), now()});
    });
}

void ObservationPipeline::releaseAfterDeletion(Released reply)
{
    m_clockwork.capture.post([this, isAlive = std::weak_ptr(m_isAlive), reply = std::move(reply)]() mutable {
        if (!isAlive.expired())
            feed(input::ReleaseAfterDeletion{std::move(reply), now()});
    });
}

// Instants that never fall, unless the clock is set

Instant ObservationPipeline::now()
{
    return happened(m_clockwork.timeSource.now());
}

Instant ObservationPipeline::happened(Instant reported)
{
    const auto wall = m_clockwork.timeSource.now();
    noticeClockSet(wall);
    m_lastAt = std::max(m_lastAt, std::min(reported, wall));
    return m_lastAt;
}

void ObservationPipeline::noticeClockSet(Instant wall)
{
    if (!m_isRunning || m_lastAt - wall < clockTolerance)
        return;
    m_inputs.push(input::ClockSet{m_lastAt, wall});
    if (m_lastSample)
        m_lastSample->at = m_lastSample->at + (wall - m_lastAt);
    m_lastTitleAt.reset();
    m_lastAt = wall;
}

// The stream

template <typename Input> void ObservationPipeline::feed(Input input)
{
    m_inputs.push(std::move(input));
    applyReady();
}

void ObservationPipeline::applyReady()
{
    if (std::exchange(m_isApplying, true))
        return;
    while (auto input = m_inputs.next())
        applyNext(*std::move(input));
    m_isApplying = false;
    if (m_isRunning) {
        scheduleBrowserPoll();
        schedulePauseEnd();
    }
}

/// What becomes worth reading by an input is read at its instant.
void ObservationPipeline::applyNext(PipelineInput input)
{
    const bool wasHeld = m_coordinator.isHeld();
    const auto before = interest();
    m_coordinator.apply(std::move(input));
    if (!m_isRunning || !m_front)
        return;
    // After a hold the machine may have slept, and its user be away.
    if (wasHeld && !m_coordinator.isHeld())
        sampleIdle(m_lastAt);
    const auto after = interest();
    if ((after.inTitle && !before.inTitle) || (after.inDomain && !before.inDomain))
        observeFront(m_lastAt);
}

ObservationPipeline::Interest ObservationPipeline::interest() const
{
    if (m_coordinator.isHeld() || !m_front)
        return {};
    return {.inTitle = m_coordinator.keepsTitles(),
            .inDomain = m_coordinator.isBrowserContextEnabled()
                && supportedBrowser(m_front->application.identity.bundleIdentifier)};
}

void ObservationPipeline::scheduleBrowserPoll()
{
    if (!interest().inDomain) {
        m_browserPoll.reset();
    } else if (!m_browserPoll) {
        m_browserPoll = m_clockwork.timers.every(m_configuration.browserObservationInterval, [this] {
            if (!m_isReadingDomain)
                readDomain(now());
        });
    }
}

void ObservationPipeline::schedulePauseEnd()
{
    const auto until = m_coordinator.status().runtime.until;
    if (until == m_scheduledPauseEnd)
        return;
    m_scheduledPauseEnd = until;
    m_pauseEnd.reset();
    if (!until)
        return;
    // Any input ends a pause that is due; this one has no other purpose.
    m_pauseEnd = m_clockwork.timers.at(
        *until, [this, deadline = *until] { feed(input::CoordinationPoint{[] { }, happened(deadline)}); });
}

// What the providers say

void ObservationPipeline::permissionAnswered(CapturePermissionState state)
{
    if (const auto first = std::exchange(m_firstPermission, std::nullopt)) {
        const bool isNews = state != m_coordinator.status().permission;
        m_inputs.fill(*first,
                      isNews ? std::optional<PipelineInput>(input::PermissionChanged{state, m_startedAt})
                             : std::nullopt);
        applyReady();
    } else {
        feed(input::PermissionChanged{state, now()});
    }
}

void ObservationPipeline::frontReported(const FrontmostWindow& window)
{
    const auto at = happened(window.application.observedAt);
    const auto former = std::exchange(m_front, window);
    const bool isSwitch = !former
        || former->application.identity.bundleIdentifier != window.application.identity.bundleIdentifier;
    if (isSwitch) {
        m_laterTitle.reset();
        m_lastTitleAt.reset();
        observeFront(at);
        if (!former)
            sampleIdle(at);
    } else if (interest().inTitle || interest().inDomain) {
        titleChanged(at);
    }
}

void ObservationPipeline::titleChanged(Instant at)
{
    if (m_laterTitle)
        return; // it will see this one too
    const auto next = m_lastTitleAt ? *m_lastTitleAt + m_configuration.titleChangeInterval : at;
    if (next <= at)
        return observeTitle(at);
    m_laterTitle = m_clockwork.timers.after(next - at, [this] {
        m_laterTitle.reset();
        observeTitle(now());
    });
}

void ObservationPipeline::observeTitle(Instant at)
{
    m_lastTitleAt = at;
    // A user who is back is active from then on.
    sampleIdle(at);
    observeFront(at);
}

void ObservationPipeline::observeFront(Instant at)
{
    input::Frontmost seen{.snapshot = m_front->application, .at = at};
    seen.snapshot.observedAt = at;
    const auto wanted = interest();
    if (wanted.inTitle) {
        const auto place = m_inputs.reserve(seen);
        m_providers.focusedWindow.ask(
            [window = *m_front](FocusedWindowProviding& provider) { return provider.context(window); },
            m_clockwork.capture,
            [this, place, seen, isAlive = std::weak_ptr(m_isAlive)](FocusedContext focused) mutable {
                if (isAlive.expired())
                    return;
                if (m_coordinator.keepsTitles())
                    seen.focused = std::move(focused);
                m_inputs.fill(place, std::move(seen));
                applyReady();
            });
    } else {
        m_inputs.push(std::move(seen));
    }
    if (wanted.inDomain)
        readDomain(at);
    applyReady();
}

void ObservationPipeline::readDomain(Instant at)
{
    m_isReadingDomain = true;
    const auto place = m_inputs.reserve(std::nullopt);
    m_providers.browserDomain.ask(
        [window = *m_front](BrowserDomainProviding& provider) { return provider.reading(window); },
        m_clockwork.capture,
        [this, place, at, browser = m_front->application.identity.bundleIdentifier,
         isAlive = std::weak_ptr(m_isAlive)](BrowserDomainReading reading) mutable {
            if (isAlive.expired())
                return;
            m_isReadingDomain = false;
            std::optional<PipelineInput> poll;
            if (m_coordinator.isBrowserContextEnabled())
                poll = input::BrowserDomainPolled{std::move(reading), std::move(browser), at};
            m_inputs.fill(place, std::move(poll));
            applyReady();
        });
}

void ObservationPipeline::pollIdle()
{
    const auto at = now();
    if (sampleIdle(at) || !m_lastSample)
        return;
    ++m_missedSamples;
    if (m_missedSamples >= watchedSamples && !m_coordinator.isHeld())
        noticeMissing(at);
}

bool ObservationPipeline::sampleIdle(Instant at)
{
    // Before there is anything in front nobody can be idle in it.
    if (!m_front)
        return true;
    const auto sample = m_providers.idle.sample();
    if (!sample)
        return false;
    // This process itself may have stood still.
    const auto watched = m_configuration.idlePollInterval * watchedSamples;
    if (m_lastSample && sample->awake - m_lastSample->awake >= watched && !m_coordinator.isHeld())
        noticeMissing(at);
    m_lastSample = {at, sample->awake};
    m_missedSamples = 0;
    feed(input::IdleSample{std::max(sample->idle, Seconds{}), sample->awake, at});
    return true;
}

/// Says so once; the next sample begins anew.
void ObservationPipeline::noticeMissing(Instant at)
{
    const auto last = *std::exchange(m_lastSample, std::nullopt);
    feed(input::NoObservation{std::min(last.at, at), at});
}

} // namespace stintbook
