#pragma once

#include <optional>
#include <string>

#include "Domain/ActivityDataScope.h"

/// How copies of this application meet on the session bus.
///
///     Status() → a{sv}   "phase" s, "until" d (paused, with a deadline), "permission" s, "storeFile" s,
///                        "processIdentifier" i, "providers" as, "unsavedSegmentCount" i, and while a
///                        segment is open "openSegmentStart" d, "openSegmentKind" s,
///                        "openSegmentApplication" s
///     Pause(d until)     an instant; 0: until resumed
///     Resume()
///     DeleteActivity(s scope, s from, s through) → i days, b isErased
///                        scope "localDays", "before" (from is the cutoff) or "allHistory"; days as
///                        "2026-11-20@Europe/Berlin"; answered when it is done. isErased is false where a
///                        reader of the store keeps its files from being cleared until the next start.
///     Flush()            answered when all that was recorded before is in the store
///     StatusChanged(a{sv})   a signal, with what Status answers
///     DeletionProgress(d)    a signal to the caller of DeleteActivity alone, from 0 to 1
///
/// DeleteActivity and Flush hold capture's writer: they are done one after the other, and begin at most once a
/// second. Whoever has too many of them waiting is refused.
namespace stintbook::sessionbus {

inline constexpr const char* name = "app.velloran.Velloran";
inline constexpr const char* path = "/app/velloran/Velloran";
inline constexpr const char* interface = "app.velloran.Velloran";
/// Activate(a{sv}) and Open without files: come forward. ActivateAction: "pause" (until resumed), "resume", "review",
/// "settings", "quit".
inline constexpr const char* applicationInterface = "org.freedesktop.Application";
/// Among what a launch says of itself: the desktop's leave, a string, for one window to come forward.
inline constexpr const char* activationToken = "activation-token";

/// The three arguments of DeleteActivity.
struct ScopeArguments {
    std::string scope;
    std::string from;
    std::string through;
};
ScopeArguments argumentsOf(const ActivityDataScope& scope);
/// Absent where they name no scope.
std::optional<ActivityDataScope> scopeFrom(const ScopeArguments& arguments);

} // namespace stintbook::sessionbus
