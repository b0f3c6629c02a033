#pragma once

#include "App/Ports/RunningInstance.h"
#include "Platform/BusConnection.h"

namespace stintbook {

/// The running copy, met on the session bus. Connects anew for every question, which suits the seldom ones
/// of a command line.
class SessionBusInstance final : public RunningInstance {
public:
    std::expected<std::optional<InstanceStatus>, std::string> status() override;
    std::expected<void, std::string> pause(std::optional<Instant> until) override;
    std::expected<void, std::string> resume() override;
    std::expected<DeletedActivity, std::string> deleteActivity(const ActivityDataScope& scope,
                                                               const DeletionProgress& progress) override;
    std::expected<void, std::string> flush() override;
    std::expected<void, std::string> activate(const std::string& activationToken) override;
};

} // namespace stintbook
