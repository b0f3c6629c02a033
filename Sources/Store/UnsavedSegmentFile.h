#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Capture/UnsavedSegmentKeeping.h"
#include "Store/PersistentActivitySegmentRepository.h"

namespace stintbook {

/// Keeps segments in a file beside the store ("Velloran.store.unsaved") that is replaced as a whole and on the
/// disk when `keep` returns. Only the holder of the instance lock uses it; one thread at a time.
class UnsavedSegmentFile final : public UnsavedSegmentKeeping {
public:
    explicit UnsavedSegmentFile(const std::filesystem::path& storeFile);

    /// A failure is logged when it begins, not every time.
    void keep(std::span<const ActivitySegment> segments) override;

    /// Saves what an earlier run left behind, as far as it is not stored, and removes the file; to be called
    /// before anything is kept. Answers how many segments were missing.
    ///
    /// When the store refuses, they stay kept with everything that comes after, until a later start saves them.
    /// A damaged file is put aside and logged.
    Stored<int> recover(PersistentActivitySegmentRepository& repository);

    /// What an earlier run left behind and the store has refused so far.
    const std::vector<ActivitySegment>& carried() const { return m_carried; }
    /// The store has it now; the next `keep` leaves it out.
    void forgetCarried() { m_carried.clear(); }

private:
    void report(const std::string& problem);

    std::filesystem::path m_file;
    /// What could not be recovered yet.
    std::vector<ActivitySegment> m_carried;
    std::string m_reported;
};

} // namespace stintbook
