#pragma once

#include <filesystem>
#include <optional>

#include "Base/FileReplacement.h"
#include "Base/Instant.h"

namespace stintbook {

/// Says beside the store ("Velloran.store.deletion") that a deletion is being committed or that its remains are
/// not erased yet. It outlives the process: the next owner of the store looks for it, and finishes what was
/// committed. One mark serves all deletions until their remains are erased. Only the holder of the instance lock
/// uses it.
struct DeletionMark {
    /// What is taken. A deletion that was ended abruptly was committed where nothing of it is recorded any more;
    /// nobody records in between.
    Interval extent;
    /// Whether reviewed work goes with the recorded activity.
    bool takesReviewedWork = false;
    /// Known to be: what is recorded in the extent since then says nothing.
    bool isCommitted = false;
};

/// Absent where there is none, and for one that cannot be read.
std::optional<DeletionMark> readDeletionMark(const std::filesystem::path& storeFile);
/// On the disk when it returns.
FileWritten writeDeletionMark(const std::filesystem::path& storeFile, const DeletionMark& mark);
/// Has the mark, where there is one, say so. A disk that refuses leaves it as it was.
void markDeletionCommitted(const std::filesystem::path& storeFile);
void removeDeletionMark(const std::filesystem::path& storeFile);

} // namespace stintbook
