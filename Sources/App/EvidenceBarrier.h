#pragma once

#include <deque>
#include <memory>

#include "Base/Executor.h"
#include "Capture/CaptureWriterBarrier.h"
#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/UnsavedSegmentFile.h"

namespace stintbook {

/// The writer's barrier for several who hold it, one after the other. What an earlier run recorded and the store
/// has refused since is evidence, too: it is offered again first.
///
/// Asked on any thread, as the barrier behind it; everything else happens on capture's.
class EvidenceBarrier final : public CaptureWriterBarrier {
public:
    /// The writer and the file outlive the barrier.
    EvidenceBarrier(CaptureWriterBarrier& writer, UnsavedSegmentFile& unsaved,
                    Confined<PersistentActivitySegmentRepository> repository, Executor& capture);

    void resolveEvidenceForDeletion(Resolved reply) override;
    void releaseAfterDeletion(Released reply) override;

private:
    void next();
    void settleCarried();
    template <typename Work> auto whileAlive(Work work);

    CaptureWriterBarrier& m_writer;
    UnsavedSegmentFile& m_unsaved;
    Confined<PersistentActivitySegmentRepository> m_repository;
    Executor& m_capture;
    std::deque<Resolved> m_waiting;
    bool m_isHeld = false;
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace stintbook
