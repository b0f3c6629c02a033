#include "Capture/SegmentSaver.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "Base/Log.h"

namespace stintbook {

namespace {

void appendTo(std::vector<ActivitySegment>& list, std::vector<ActivitySegment>&& more)
{
    if (list.empty())
        list = std::move(more);
    else
        std::ranges::move(more, std::back_inserter(list));
}

/// The distinct texts of an enumeration among the segments, in the enumeration's order.
template <typename E>
std::string rawValues(const std::vector<ActivitySegment>& segments, E ActivitySegment::* field)
{
    std::string texts;
    for (const auto& [value, text] : RawValues<E>::table) {
        if (std::ranges::find(segments, value, field) == segments.end())
            continue;
        texts.append(texts.empty() ? "" : ", ").append(text);
    }
    return texts;
}

} // namespace

SegmentSaver::SegmentSaver(Confined<ActivitySegmentRepository> repository, Executor& capture, Timers& timers,
                           ShutdownRetryPolicy retryPolicy)
    : m_repository(std::move(repository))
    , m_capture(capture)
    , m_timers(timers)
    , m_retryPolicy(retryPolicy)
{
}

void SegmentSaver::append(std::vector<ActivitySegment>&& closed)
{
    appendTo(m_isHeld ? m_closedDuringHold : m_pending, std::move(closed));
}

void SegmentSaver::save()
{
    if (!m_isHeld && !m_inFlight && !m_flushed && !m_pending.empty())
        start(Purpose::ordinary);
}

void SegmentSaver::hold(CaptureWriterBarrier::Resolved reply)
{
    m_isHeld = true;
    m_resolving.push_back(std::move(reply));
    if (!m_inFlight)
        resolve();
}

void SegmentSaver::release()
{
    m_isHeld = false;
    appendTo(m_pending, std::exchange(m_closedDuringHold, {}));
}

void SegmentSaver::flush(Flushed done)
{
    m_flushed = std::move(done);
    if (!m_inFlight)
        attempt();
}

std::size_t SegmentSaver::unsavedCount() const
{
    return (m_inFlight ? m_inFlight->size() : 0) + m_pending.size() + m_closedDuringHold.size();
}

std::vector<ActivitySegment> SegmentSaver::unsaved() const
{
    std::vector<ActivitySegment> all;
    all.reserve(unsavedCount());
    if (m_inFlight)
        all = *m_inFlight;
    all.insert(all.end(), m_pending.begin(), m_pending.end());
    all.insert(all.end(), m_closedDuringHold.begin(), m_closedDuringHold.end());
    return all;
}

void SegmentSaver::start(Purpose purpose)
{
    m_inFlight = std::make_shared<std::vector<ActivitySegment>>(std::exchange(m_pending, {}));
    m_repository.ask(
        [batch = m_inFlight](ActivitySegmentRepository& repository) { return repository.save(*batch); },
        m_capture,
        [this, purpose, batch = m_inFlight, isAlive = std::weak_ptr(m_isAlive)](const Stored<void>& result) {
            if (!isAlive.expired())
                finished(purpose, batch, result);
        });
}

void SegmentSaver::finished(Purpose purpose, const Batch& batch, const Stored<void>& result)
{
    m_inFlight.reset();
    if (result)
        accepted(*batch);
    else
        refused(batch, result.error());

    if (purpose == Purpose::resolving)
        answer();
    else if (purpose == Purpose::flushing)
        attempted();

    if (m_inFlight)
        return;
    if (!m_resolving.empty())
        resolve();
    else if (purpose != Purpose::flushing && m_flushed)
        attempt();
    else if (result)
        save();
}

void SegmentSaver::accepted(const std::vector<ActivitySegment>& batch)
{
    Seconds total;
    for (const auto& segment : batch)
        total += segment.length();
    m_accountedThrough = batch.back().end;
    log::event("Closed {} segment(s); kind {}, evidence {}, duration {:f}s", batch.size(),
               rawValues(batch, &ActivitySegment::kind), rawValues(batch, &ActivitySegment::evidence),
               total.value);
}

void SegmentSaver::refused(const Batch& batch, const PersistenceError& error)
{
    log::error("Deferred {} segment(s) after a store error: {}", batch->size(), message(error));
    auto closedMeanwhile = std::exchange(m_pending, std::move(*batch));
    appendTo(m_pending, std::move(closedMeanwhile));
}

void SegmentSaver::resolve()
{
    if (m_pending.empty())
        answer();
    else
        start(Purpose::resolving);
}

void SegmentSaver::answer()
{
    for (auto& reply : std::exchange(m_resolving, {}))
        reply({m_pending.size()});
}

void SegmentSaver::attempt()
{
    m_nextAttempt.reset();
    if (m_inFlight)
        return;
    if (unsavedCount() == 0)
        return end({CaptureShutdownOutcome::Kind::persisted});
    ++m_attempts;
    if (m_isHeld)
        attempted();
    else
        start(Purpose::flushing);
}

void SegmentSaver::attempted()
{
    if (unsavedCount() == 0)
        return end({CaptureShutdownOutcome::Kind::persisted});
    if (m_attempts < m_retryPolicy.attempts) {
        m_nextAttempt = m_timers.after(m_retryPolicy.delay, [this] { attempt(); });
        return;
    }
    log::error("Shutdown flush gave up after {} attempt(s) with {} segment(s) unsaved", m_attempts,
               unsavedCount());
    end({CaptureShutdownOutcome::Kind::incomplete, static_cast<int>(unsavedCount())});
}

void SegmentSaver::end(CaptureShutdownOutcome outcome)
{
    std::exchange(m_flushed, {})(outcome);
}

} // namespace stintbook
