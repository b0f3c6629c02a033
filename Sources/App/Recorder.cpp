#include "App/Recorder.h"

#include <utility>

#include <fmt/format.h>

#include "Base/Log.h"
#include "Store/PersistentActivitySegmentRepository.h"

namespace stintbook {

namespace {

/// Accessibility that is switched on or off shows within this time.
constexpr Seconds permissionPollInterval{15};

} // namespace

Recorder::Recorder(OpenedStore& store, DesktopProviders desktop, Clockwork clockwork,
                   CaptureConfiguration configuration, CapturePauseStoring& pauses)
    : m_store(store)
    , m_sources(std::move(desktop.sources))
    , m_timeSource(clockwork.timeSource)
    , m_capture(clockwork.capture)
    , m_unsavedSegments(store.file())
    , m_repository(m_storeQueue, store.sharedSegments())
    , m_coordinator(configuration,
                    {.repository = m_repository,
                     .capture = clockwork.capture,
                     .timers = clockwork.timers,
                     .pauseStore = pauses,
                     .unsavedSegments = &m_unsavedSegments})
    , m_permission({.capture = clockwork.capture,
                    .timers = clockwork.timers,
                    .probe = {m_accessibilityQueue, std::move(desktop.accessibilityTrust)},
                    .pollInterval = permissionPollInterval})
    , m_pipeline(
          configuration,
          {.frontmost = desktop.frontmost,
           .focusedWindow = {m_accessibilityQueue, std::move(desktop.focusedWindow)},
           .browserDomain = {m_accessibilityQueue, std::move(desktop.browserDomain)},
           .boundaries = desktop.boundaries,
           .idle = desktop.idle,
           .permission = m_permission,
           .calendar = desktop.calendar},
          {.timeSource = clockwork.timeSource, .timers = clockwork.timers, .capture = clockwork.capture},
          m_coordinator)
    , m_barrier(m_pipeline, m_unsavedSegments, {m_storeQueue, store.sharedSegments()}, clockwork.capture)
    , m_deletion({.store = store.sharedDatabase(),
                  .writer = &m_barrier,
                  .work = std::make_shared<SerialExecutor>("deletion"),
                  .home = clockwork.capture,
                  .calendar = [&calendar = desktop.calendar] { return calendar.current(); },
                  .deleted =
                      [this] {
                          if (m_followers.deletion)
                              m_followers.deletion();
                      }})
{
}

bool Recorder::traceTo(const std::filesystem::path& file)
{
    m_traceFile.open(file, std::ios::binary | std::ios::trunc);
    // What led to a crash is worth reading, too.
    m_traceFile << std::unitbuf;
    if (!m_traceFile)
        return false;
    m_pipeline.traceTo(m_trace.emplace(m_traceFile));
    return true;
}

void Recorder::follow(Followers followers)
{
    m_followers = std::move(followers);
    m_coordinator.followStatus(m_followers.status);
    m_pipeline.followCalendar(m_followers.calendar);
}

void Recorder::start(const ObservedContext& context)
{
    m_context = context;
    const auto recovered = m_unsavedSegments.recover(m_store.segments());
    if (!recovered)
        log::error("Segments of an earlier run could not be saved yet: {}", message(recovered.error()));
    else if (*recovered > 0)
        log::event("Recovered {} segment(s) of an earlier run", *recovered);
    m_pipeline.start(context.includesTitles, context.includesDomains);
}

void Recorder::observe(const ObservedContext& context)
{
    const auto former = std::exchange(m_context, context);
    if (context.includesTitles != former.includesTitles)
        m_pipeline.setRetainsTitleContext(context.includesTitles);
    if (context.includesDomains != former.includesDomains)
        m_pipeline.setBrowserContextEnabled(context.includesDomains);
}

void Recorder::requestAccessibility(std::function<void()> done)
{
    m_permission.prompt();
    // The queue is in order: behind the question.
    m_accessibilityQueue->post(
        [&capture = m_capture, done = std::move(done)]() mutable { capture.post(std::move(done)); });
}

void Recorder::settle(std::function<void()> done)
{
    // The store's queue is in order: behind whatever was handed to it before.
    m_repository.ask([](ActivitySegmentRepository&) { return true; }, m_capture,
                     [done = std::move(done)](bool) { done(); });
}

void Recorder::shutdown(CaptureCoordinator::ShutDown done)
{
    // One that holds the writer would keep the last saves waiting for longer than they are tried.
    m_deletion.stop();
    m_pipeline.shutdown([this, done = std::move(done)](CaptureShutdownOutcome outcome) mutable {
        m_traceFile.flush();
        done(outcome);
    });
}

InstanceStatus Recorder::status() const
{
    InstanceStatus status{.capture = m_coordinator.status(),
                          .storeFile = m_store.file().string(),
                          .providers = m_sources,
                          .openSegment = {},
                          .unsavedSegmentCount = static_cast<int>(m_coordinator.unsavedCount())};
    if (const auto& open = m_coordinator.openSegment()) {
        status.openSegment = {.start = open->start,
                              .kind = std::string(rawValue(open->kind)),
                              .applicationName = open->application ? open->application->displayName : ""};
    }
    return status;
}

void Recorder::pause(std::optional<Instant> until)
{
    m_pipeline.pause({.deadline = until, .length = until ? *until - m_timeSource.now() : Seconds{}});
}

void Recorder::resume()
{
    m_pipeline.resume();
}

void Recorder::deleteActivity(const ActivityDataScope& scope, ActivityDeleting::Reply reply,
                              DeletionProgress progress)
{
    m_deletion.deleteActivity(scope, std::move(reply), std::move(progress));
}

void Recorder::flush(InstanceRequestHandling::Reply<void> reply)
{
    m_barrier.resolveEvidenceForDeletion(
        [this, reply = std::move(reply)](CaptureWriterBarrierOutcome outcome) mutable {
            m_barrier.releaseAfterDeletion([outcome, reply = std::move(reply)]() mutable {
                if (outcome.isResolved())
                    return reply({});
                reply(std::unexpected(
                    fmt::format("The local store would not accept {} recently recorded interval{}.",
                                outcome.unsavedSegmentCount, outcome.unsavedSegmentCount == 1 ? "" : "s")));
            });
        });
}

} // namespace stintbook
