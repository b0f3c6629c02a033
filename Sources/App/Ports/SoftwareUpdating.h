#pragma once

#include <expected>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>

namespace stintbook {

/// A newer version of this program.
struct SoftwareUpdate {
    std::string version;
    /// By which whoever installs it knows it.
    std::string identifier;

    friend bool operator==(const SoftwareUpdate&, const SoftwareUpdate&) = default;
};

/// Why nothing was found out, or nothing installed.
struct SoftwareUpdateProblem {
    enum class Kind {
        /// Nothing here keeps this program up to date, or it was not installed by what does.
        notAvailableHere,
        /// Whoever asked for it was not allowed to, or took it back.
        refused,
        failed,
    };
    Kind kind = Kind::failed;
    /// The installer's own words; may be empty.
    std::string reason;

    friend bool operator==(const SoftwareUpdateProblem&, const SoftwareUpdateProblem&) = default;
};
inline std::string message(const SoftwareUpdateProblem& problem)
{
    switch (problem.kind) {
    case SoftwareUpdateProblem::Kind::notAvailableHere:
        return "Updates are not available here: Velloran was not installed by this system's package manager.";
    case SoftwareUpdateProblem::Kind::refused:
        return "The update was not allowed, so nothing was changed.";
    case SoftwareUpdateProblem::Kind::failed:
        break;
    }
    return problem.reason.empty() ? "The package manager did not answer." : problem.reason;
}

/// Whatever keeps the installed programs up to date. Its calls take as long as that takes, unless they are stopped.
class SoftwareUpdating {
public:
    virtual ~SoftwareUpdating() = default;
    /// Absent: this version is the newest.
    virtual std::expected<std::optional<SoftwareUpdate>, SoftwareUpdateProblem> check(
        std::stop_token stop) = 0;
    /// Told how much is done, from 0 to 1. The new version runs from the next start on.
    virtual std::expected<void, SoftwareUpdateProblem> install(const SoftwareUpdate& update,
                                                               const std::function<void(double)>& progress,
                                                               std::stop_token stop) = 0;
};

} // namespace stintbook
