#pragma once

#include <expected>
#include <string>

namespace stintbook {

/// The desktop's list of what opens when its user logs in, for this application alone. The errors are for the
/// log.
class LaunchAtLoginRegistering {
public:
    virtual ~LaunchAtLoginRegistering() = default;
    virtual bool isRegistered() const = 0;
    virtual std::expected<void, std::string> add() = 0;
    virtual std::expected<void, std::string> remove() = 0;
};

} // namespace stintbook
