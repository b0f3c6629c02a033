#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Base/Executor.h"
#include "Base/TimeSource.h"
#include "Capture/ActivitySegmentRepository.h"
#include "Capture/CaptureConfiguration.h"
#include "Capture/CaptureWriterBarrier.h"
#include "Domain/CaptureStatus.h"

namespace stintbook {

/// Hands closed segments to the store, oldest first, all pending ones at once and never two saves at a
/// time. What the store refuses stays pending, in order, and is offered again with the next save.
///
/// Confined to capture's executor, to which the store's answers come back.
class SegmentSaver {
public:
    using Flushed = std::move_only_function<void(CaptureShutdownOutcome)>;

    SegmentSaver(Confined<ActivitySegmentRepository> repository, Executor& capture, Timers& timers,
                 ShutdownRetryPolicy retryPolicy);

    void append(std::vector<ActivitySegment>&& closed);
    /// Asks the store to take what is pending. While a save is under way or the writer is held, that waits.
    void save();

    /// Tries to save what is pending, then writes nothing until `release`, whatever came of it.
    void hold(CaptureWriterBarrier::Resolved reply);
    void release();
    bool isHeld() const { return m_isHeld; }

    /// The last saves: at most as often as the retry policy says.
    void flush(Flushed done);

    std::size_t unsavedCount() const;
    /// In order, those of a save under way included.
    std::vector<ActivitySegment> unsaved() const;
    /// The end of the last interval that the store took.
    std::optional<Instant> accountedThrough() const { return m_accountedThrough; }

private:
    using Batch = std::shared_ptr<std::vector<ActivitySegment>>;
    enum class Purpose { ordinary, resolving, flushing };

    void start(Purpose purpose);
    void finished(Purpose purpose, const Batch& batch, const Stored<void>& result);
    void accepted(const std::vector<ActivitySegment>& batch);
    void refused(const Batch& batch, const PersistenceError& error);
    void resolve();
    void answer();
    void attempt();
    void attempted();
    void end(CaptureShutdownOutcome outcome);

    Confined<ActivitySegmentRepository> m_repository;
    Executor& m_capture;
    Timers& m_timers;
    ShutdownRetryPolicy m_retryPolicy;

    std::vector<ActivitySegment> m_pending;
    /// Closed while the writer was held: they come behind those that were pending.
    std::vector<ActivitySegment> m_closedDuringHold;
    Batch m_inFlight;
    bool m_isHeld = false;
    std::vector<CaptureWriterBarrier::Resolved> m_resolving;
    Flushed m_flushed;
    int m_attempts = 0;
    std::unique_ptr<Timers::Scheduled> m_nextAttempt;
    std::optional<Instant> m_accountedThrough;
    /// Answers that come after the saver's end find this gone.
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace stintbook
