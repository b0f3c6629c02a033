#pragma once

#include <filesystem>
#include <optional>

#include "Base/Instant.h"
#include "Capture/CaptureConfiguration.h"
#include "CommandLine/Session.h"

namespace stintbook {

struct RecordRequest {
    /// Absent: until interrupted.
    std::optional<Seconds> duration;
    std::optional<std::filesystem::path> trace;
    CaptureConfiguration configuration;
};

/// Records until the time is over or SIGINT or SIGTERM arrives, then flushes.
void record(Session& session, const RecordRequest& request);

} // namespace stintbook
