#include "Capture/TraceReplay.h"

#include <utility>

#include "Base/VirtualTime.h"
#include "Capture/CaptureCoordinator.h"
#include "Capture/TraceReader.h"

namespace stintbook {

namespace {

/// The repository of a replay: refuses where the trace says so, and remembers what was taken.
class RehearsedRepository final : public ActivitySegmentRepository {
public:
    RehearsedRepository(std::shared_ptr<ActivitySegmentRepository> repository, ReplayedSegments segments)
        : m_repository(std::move(repository))
        , m_handsBack(segments == ReplayedSegments::handedBack)
    {
    }

    Stored<void> save(std::span<const ActivitySegment> segments) override
    {
        if (refuses)
            return std::unexpected(StoreFailure{"the trace has it refuse"});
        auto result = m_repository->save(segments);
        if (result) {
            savedCount += segments.size();
            if (m_handsBack)
                saved.insert(saved.end(), segments.begin(), segments.end());
        }
        return result;
    }
    Stored<std::vector<ActivitySegment>> segments(Interval overlapping) const override
    {
        return m_repository->segments(overlapping);
    }
    Stored<std::vector<ObservedApplication>> observedApplications() const override
    {
        return m_repository->observedApplications();
    }
    Stored<std::optional<ActivitySegment>> latestSegment() const override
    {
        return m_repository->latestSegment();
    }

    bool refuses = false;
    std::size_t savedCount = 0;
    std::vector<ActivitySegment> saved;

private:
    std::shared_ptr<ActivitySegmentRepository> m_repository;
    bool m_handsBack;
};

class TraceReplay {
public:
    TraceReplay(std::shared_ptr<ActivitySegmentRepository> repository, ReplayedSegments segments,
                Seconds idleThreshold)
        : m_repository(std::make_shared<RehearsedRepository>(std::move(repository), segments))
        , m_coordinator({.idleThreshold = idleThreshold, .savePolicy = SavePolicy::whenAsked},
                        {.repository = {m_executor, m_repository},
                         .capture = *m_executor,
                         .timers = m_time,
                         .pauseStore = m_pauseStore})
    {
    }

    void run(TraceLine line)
    {
        m_at = line.at;
        if (const auto* start = std::get_if<CaptureStart>(&line.event)) {
            m_coordinator.start(*start);
        } else if (const auto* store = std::get_if<TraceStoreSwitch>(&line.event)) {
            if (m_coordinator.advanceTo(line.at))
                m_isSaveDue = true;
            switchStore(*store);
        } else {
            m_coordinator.apply(std::get<PipelineInput>(std::move(line.event)));
            m_isSaveDue = true;
            gather();
        }
    }

    TraceReplayResult end(std::optional<TraceProblem> problem)
    {
        std::optional<CaptureShutdownOutcome> outcome;
        m_coordinator.shutdown(m_at, [&](CaptureShutdownOutcome reached) { outcome = reached; });
        while (!outcome)
            m_time.advance(CaptureConfiguration{}.shutdownRetryPolicy.delay);
        return {.segments = std::move(m_repository->saved),
                .savedCount = m_repository->savedCount,
                .unsavedCount = m_coordinator.unsavedCount(),
                .outcome = *outcome,
                .problem = std::move(problem)};
    }

private:
    static constexpr std::size_t gatheredSegments = 4096;

    /// Every input would have offered what was pending to a store that accepted it.
    void switchStore(const TraceStoreSwitch& store)
    {
        if (std::exchange(m_isSaveDue, false) && !m_repository->refuses)
            m_coordinator.savePending();
        m_repository->refuses = store.refuses;
    }

    void gather()
    {
        if (m_repository->refuses || m_coordinator.unsavedCount() < m_nextSave)
            return;
        m_coordinator.savePending();
        m_nextSave = m_coordinator.unsavedCount() + gatheredSegments;
    }

    std::shared_ptr<InlineExecutor> m_executor = std::make_shared<InlineExecutor>();
    VirtualTime m_time{Instant{}};
    InMemoryCapturePauseStore m_pauseStore;
    std::shared_ptr<RehearsedRepository> m_repository;
    CaptureCoordinator m_coordinator;
    /// The last line's.
    Instant m_at;
    bool m_isSaveDue = false;
    std::size_t m_nextSave = gatheredSegments;
};

} // namespace

TraceReplayResult replayTrace(std::istream& trace, std::shared_ptr<ActivitySegmentRepository> repository,
                              ReplayedSegments segments, Seconds idleThreshold)
{
    TraceReader reader(trace);
    TraceReplay replay(std::move(repository), segments, idleThreshold);
    for (;;) {
        auto line = reader.next();
        if (!line)
            return replay.end(std::move(line).error());
        if (!*line)
            return replay.end(std::nullopt);
        replay.run(**std::move(line));
    }
}

} // namespace stintbook
