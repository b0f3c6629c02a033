#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <system_error>

#include "Base/Instant.h"

namespace stintbook {

/// Says beside the store ("Velloran.store.deletion") that a deletion is being committed or that its remains are
/// not erased yet. It outlives the process: the next owner of the store looks for it, and finishes what was
/// committed. Only the holder of the instance lock uses it.
struct DeletionMark {
    /// Where nothing is recorded in this time any more, the deletion was committed.
    Interval extent;
    /// Whether reviewed work went with the recorded activity.
    bool takesReviewedWork = false;
};

/// Absent where there is none, and for one that was not written whole, whose deletion had not begun.
std::optional<DeletionMark> readDeletionMark(const std::filesystem::path& storeFile);
/// On the disk when it returns.
std::expected<void, std::error_code> writeDeletionMark(const std::filesystem::path& storeFile,
                                                       const DeletionMark& mark);
void removeDeletionMark(const std::filesystem::path& storeFile);

} // namespace stintbook
