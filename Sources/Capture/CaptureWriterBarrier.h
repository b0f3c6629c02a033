#pragma once

#include <cstddef>
#include <functional>

namespace stintbook {

/// What settling the recorded evidence came to.
struct CaptureWriterBarrierOutcome {
    /// Zero: every segment up to the hold is in the store (`resolved`). Otherwise that many are not.
    std::size_t unsavedSegmentCount = 0;

    bool isResolved() const { return unsavedSegmentCount == 0; }

    friend bool operator==(const CaptureWriterBarrierOutcome&, const CaptureWriterBarrierOutcome&) = default;
};

/// Lets a deletion of history settle what capture has recorded and keep it from writing meanwhile.
///
/// Both calls return at once, from any thread, and are ordered with everything that capture observes. The
/// reply comes exactly once, on capture's thread.
class CaptureWriterBarrier {
public:
    using Resolved = std::move_only_function<void(CaptureWriterBarrierOutcome)>;
    using Released = std::move_only_function<void()>;

    virtual ~CaptureWriterBarrier() = default;
    /// Closes the open segment, tries to save what is pending and holds the writer, whatever the outcome.
    virtual void resolveEvidenceForDeletion(Resolved reply) = 0;
    /// Lifts the hold. Due after every `resolveEvidenceForDeletion`.
    virtual void releaseAfterDeletion(Released reply) = 0;
};

} // namespace stintbook
