#pragma once

#include <string>

#include "App/Ports/SoftwareUpdating.h"

namespace stintbook {

/// This program's package as PackageKit keeps it up to date. Connects to the system bus anew for each question; may
/// be asked on any one thread, which waits.
class PackageKitUpdates final : public SoftwareUpdating {
public:
    explicit PackageKitUpdates(std::string package);

    /// First fetches anew what the machine's package sources offer.
    std::expected<std::optional<SoftwareUpdate>, SoftwareUpdateProblem> check(std::stop_token stop) override;
    std::expected<void, SoftwareUpdateProblem> install(const SoftwareUpdate& update,
                                                       const std::function<void(double)>& progress,
                                                       std::stop_token stop) override;

private:
    std::string m_package;
};

} // namespace stintbook
