#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <string>

#include "App/Ports/RunningInstance.h"

namespace stintbook {

/// Of the running copy that has this very store open; absent where none has. The error is a sentence.
std::expected<std::optional<InstanceStatus>, std::string> statusOfCopyWith(
    RunningInstance& instance, const std::filesystem::path& storeFile);

} // namespace stintbook
