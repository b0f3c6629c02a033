#include "App/EvidenceBarrier.h"

#include <utility>

namespace stintbook {

EvidenceBarrier::EvidenceBarrier(CaptureWriterBarrier& writer, UnsavedSegmentFile& unsaved,
                                 Confined<PersistentActivitySegmentRepository> repository, Executor& capture)
    : m_writer(writer)
    , m_unsaved(unsaved)
    , m_repository(std::move(repository))
    , m_capture(capture)
{
}

/// What comes back after the barrier's end comes to nothing.
template <typename Work> auto EvidenceBarrier::whileAlive(Work work)
{
    return [isAlive = std::weak_ptr(m_isAlive), work = std::move(work)](auto&&... arguments) mutable {
        if (!isAlive.expired())
            work(std::forward<decltype(arguments)>(arguments)...);
    };
}

void EvidenceBarrier::resolveEvidenceForDeletion(Resolved reply)
{
    m_capture.post(whileAlive([this, reply = std::move(reply)]() mutable {
        m_waiting.push_back(std::move(reply));
        next();
    }));
}

void EvidenceBarrier::releaseAfterDeletion(Released reply)
{
    m_writer.releaseAfterDeletion(whileAlive([this, reply = std::move(reply)]() mutable {
        m_isHeld = false;
        reply();
        next();
    }));
}

void EvidenceBarrier::next()
{
    if (m_isHeld || m_waiting.empty())
        return;
    m_isHeld = true;
    settleCarried();
}

void EvidenceBarrier::settleCarried()
{
    auto reply = std::move(m_waiting.front());
    m_waiting.pop_front();
    if (m_unsaved.carried().empty())
        return m_writer.resolveEvidenceForDeletion(std::move(reply));
    m_repository.ask(
        [carried = m_unsaved.carried()](PersistentActivitySegmentRepository& repository) {
            return repository.saveMissing(carried);
        },
        m_capture, whileAlive([this, reply = std::move(reply)](const Stored<int>& saved) mutable {
            if (!saved)
                return reply({m_unsaved.carried().size()});
            m_unsaved.forgetCarried();
            m_writer.resolveEvidenceForDeletion(std::move(reply));
        }));
}

} // namespace stintbook
