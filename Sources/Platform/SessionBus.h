#pragma once

/// How copies of this application meet on the session bus.
///
///     Status() → a{sv}   "phase" s, "until" d (paused, with a deadline), "permission" s, "storeFile" s,
///                        "processIdentifier" i, "providers" as, "unsavedSegmentCount" i, and while a
///                        segment is open "openSegmentStart" d, "openSegmentKind" s,
///                        "openSegmentApplication" s
///     Pause(d until)     an instant; 0: until resumed
///     Resume()
namespace stintbook::sessionbus {

inline constexpr const char* name = "app.velloran.Velloran";
inline constexpr const char* path = "/app/velloran/Velloran";
inline constexpr const char* interface = "app.velloran.Velloran";
/// Activate(a{sv}): come forward.
inline constexpr const char* applicationInterface = "org.freedesktop.Application";

} // namespace stintbook::sessionbus
