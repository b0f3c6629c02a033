#pragma once

#include <optional>

#include "App/Ports/RunningInstance.h"
#include "Capture/CapturePause.h"
#include "CommandLine/Session.h"

namespace stintbook {

/// Absent: no copy is running.
void printStatus(Session& session, const std::optional<InstanceStatus>& status);
void printPause(Session& session, const RequestedPause& pause);
void printResumed(Session& session);

} // namespace stintbook
