#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <variant>

#include "Base/Instant.h"
#include "Base/RawValue.h"

namespace stintbook {

/// The accessibility permission as capture sees it.
enum class CapturePermissionState {
    notGranted,
    /// The system's prompt was shown and its user has not decided.
    awaitingUserAction,
    granted,
    /// It was granted earlier in this run and has been withdrawn.
    revoked,
};

template <> struct RawValues<CapturePermissionState> {
    static constexpr std::array table{
        std::pair{CapturePermissionState::notGranted, std::string_view("notGranted")},
        std::pair{CapturePermissionState::awaitingUserAction, std::string_view("awaitingUserAction")},
        std::pair{CapturePermissionState::granted, std::string_view("granted")},
        std::pair{CapturePermissionState::revoked, std::string_view("revoked")},
    };
};

struct CaptureRuntimeState {
    enum class Phase { paused, active, stopped };

    Phase phase = Phase::stopped;
    /// Only while paused: when the pause ends by itself; absent when only its user ends it.
    std::optional<Instant> until;

    static CaptureRuntimeState active() { return {Phase::active, {}}; }
    static CaptureRuntimeState stopped() { return {}; }
    static CaptureRuntimeState paused(std::optional<Instant> until) { return {Phase::paused, until}; }

    bool isActive() const { return phase == Phase::active; }
    bool isPaused() const { return phase == Phase::paused; }

    friend bool operator==(const CaptureRuntimeState&, const CaptureRuntimeState&) = default;
};

template <> struct RawValues<CaptureRuntimeState::Phase> {
    static constexpr std::array table{
        std::pair{CaptureRuntimeState::Phase::paused, std::string_view("paused")},
        std::pair{CaptureRuntimeState::Phase::active, std::string_view("active")},
        std::pair{CaptureRuntimeState::Phase::stopped, std::string_view("stopped")},
    };
};

struct CaptureStatus {
    CaptureRuntimeState runtime;
    CapturePermissionState permission = CapturePermissionState::notGranted;

    friend bool operator==(const CaptureStatus&, const CaptureStatus&) = default;
};

/// What became of the closed segments when capture ended.
struct CaptureShutdownOutcome {
    enum class Kind { incomplete, notRunning, persisted };

    Kind kind = Kind::notRunning;
    /// Above zero exactly for `incomplete`.
    int unsavedSegmentCount = 0;

    friend bool operator==(const CaptureShutdownOutcome&, const CaptureShutdownOutcome&) = default;
};

template <> struct RawValues<CaptureShutdownOutcome::Kind> {
    static constexpr std::array table{
        std::pair{CaptureShutdownOutcome::Kind::incomplete, std::string_view("incomplete")},
        std::pair{CaptureShutdownOutcome::Kind::notRunning, std::string_view("notRunning")},
        std::pair{CaptureShutdownOutcome::Kind::persisted, std::string_view("persisted")},
    };
};

} // namespace stintbook
