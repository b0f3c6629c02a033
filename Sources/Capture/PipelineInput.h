#pragma once

#include <optional>
#include <string>
#include <variant>

#include "Capture/BrowserDomainProviding.h"
#include "Capture/CaptureWriterBarrier.h"
#include "Capture/FrontmostApplicationProviding.h"
#include "Capture/SystemBoundaryProviding.h"
#include "Domain/CalendarContext.h"
#include "Domain/CaptureStatus.h"
#include "Domain/FocusedContext.h"

namespace stintbook {

/// What capture is told, each with its instant. Whoever feeds the coordinator keeps the instants from
/// falling; only `ClockSet` may go back.
namespace input {

/// The application in front changed or, when it is the one already in front, its title did.
struct Frontmost {
    FrontmostApplicationSnapshot snapshot;
    /// As the provider of the focused window answered. What is kept of it is decided when it is observed.
    FocusedContext focused;
    Instant at;
};

struct Boundary {
    SystemBoundary boundary;
    Instant at;
};

struct IdleSample {
    /// Since the last input; not negative.
    Seconds idle;
    /// The machine's uptime without sleep.
    Seconds awake;
    Instant at;
};

/// Nobody has sampled since then.
struct NoObservation {
    Instant since;
    Instant at;
};

struct Pause {
    /// Absent: until resumed.
    std::optional<Instant> until;
    /// As chosen, for display; 0 without a deadline.
    Seconds duration;
    Instant at;
};

struct Resume {
    Instant at;
};

struct PermissionChanged {
    CapturePermissionState permission = CapturePermissionState::notGranted;
    Instant at;
};

struct CalendarContextChanged {
    CalendarContext calendar;
    Instant at;
};

/// One poll of a browser.
struct BrowserDomainPolled {
    BrowserDomainReading reading;
    std::string browserBundleIdentifier;
    Instant at;
};

struct TitleContextRetained {
    bool isRetained = false;
    Instant at;
};

struct BrowserContextEnabled {
    bool isEnabled = false;
    Instant at;
};

/// The wall clock was set from one instant to another.
struct ClockSet {
    Instant from;
    Instant at;
};

/// A deletion settles what was recorded and holds the writer.
struct ResolveForDeletion {
    CaptureWriterBarrier::Resolved reply;
    Instant at;
};

struct ReleaseAfterDeletion {
    CaptureWriterBarrier::Released reply;
    Instant at;
};

/// Answers when every earlier input has been applied.
struct CoordinationPoint {
    std::move_only_function<void()> reply;
    Instant at;
};

/// Capture ends.
struct Stop {
    Instant at;
};

} // namespace input

using PipelineInput =
    std::variant<input::Frontmost, input::Boundary, input::IdleSample, input::NoObservation, input::Pause,
                 input::Resume, input::PermissionChanged, input::CalendarContextChanged,
                 input::BrowserDomainPolled, input::TitleContextRetained, input::BrowserContextEnabled,
                 input::ClockSet, input::ResolveForDeletion, input::ReleaseAfterDeletion,
                 input::CoordinationPoint, input::Stop>;

inline Instant instantOf(const PipelineInput& input)
{
    return std::visit([](const auto& alternative) { return alternative.at; }, input);
}

/// How capture begins.
struct CaptureStart {
    Instant at;
    CalendarContext calendar;
    CapturePermissionState permission = CapturePermissionState::notGranted;
    bool retainsTitleContext = true;
    bool browserContextEnabled = false;
};

} // namespace stintbook
