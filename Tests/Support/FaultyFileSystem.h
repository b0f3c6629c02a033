#pragma once

#include <memory>
#include <string>

namespace stintbook {

/// An SQLite VFS over the system's whose writing operations (write, sync, truncate, delete) fail from a given
/// one on: what a full disk, a broken one or a crash leaves behind can then be looked at with the system's own.
///
/// One at a time in a process.
class FaultyFileSystem {
public:
    enum class Fault {
        /// Writes and growth are refused; what is written already stays.
        diskFull,
        /// Everything that would change the disk is refused.
        inputOutput,
        /// One operation is refused.
        inputOutputOnce,
        /// As `inputOutput`, and of the write that meets it the first half arrives.
        tornWrite,
        /// The process is killed.
        kill,
        /// As `inputOutput`; then see `losePower`.
        powerLoss,
    };

    FaultyFileSystem();
    ~FaultyFileSystem();
    FaultyFileSystem(const FaultyFileSystem&) = delete;
    FaultyFileSystem& operator=(const FaultyFileSystem&) = delete;

    /// To be given where a store is opened.
    std::string name() const;

    /// Counts writing operations from now on, the first being 1.
    void failFrom(int operation, Fault fault);
    /// The disk is well again.
    void recover();
    /// After `powerLoss`, when no connection is open any more: of what was written since a file was last synced,
    /// the disk has kept some writes and lost others; which, the seed decides.
    void losePower(unsigned seed);
    bool hasFailed() const;

private:
    struct Registration;
    std::unique_ptr<Registration> m_registration;
};

} // namespace stintbook
