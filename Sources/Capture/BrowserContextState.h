#pragma once

#include <array>
#include <string_view>

#include "Base/RawValue.h"
#include "Domain/CaptureStatus.h"

namespace stintbook {

/// What people are told about the recording of web domains.
enum class BrowserContextState {
    off,
    active,
    needsPermission,
    /// The permission was there and has been withdrawn.
    denied,
    /// Nothing is recorded here, or there is no way to look into browsers.
    unavailable,
};

template <> struct RawValues<BrowserContextState> {
    static constexpr std::array table{
        std::pair{BrowserContextState::off, std::string_view("off")},
        std::pair{BrowserContextState::active, std::string_view("active")},
        std::pair{BrowserContextState::needsPermission, std::string_view("needsPermission")},
        std::pair{BrowserContextState::denied, std::string_view("denied")},
        std::pair{BrowserContextState::unavailable, std::string_view("unavailable")},
    };
};

/// Of a context that is wanted, while capture is running: browsers are read through accessibility alone.
constexpr BrowserContextState browserContextState(CapturePermissionState permission)
{
    switch (permission) {
    case CapturePermissionState::granted:
        return BrowserContextState::active;
    case CapturePermissionState::revoked:
        return BrowserContextState::denied;
    case CapturePermissionState::notGranted:
    case CapturePermissionState::awaitingUserAction:
        break;
    }
    return BrowserContextState::needsPermission;
}

} // namespace stintbook
