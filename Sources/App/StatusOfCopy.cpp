#include "App/StatusOfCopy.h"

#include <system_error>

namespace stintbook {

std::expected<std::optional<InstanceStatus>, std::string> statusOfCopyWith(
    RunningInstance& instance, const std::filesystem::path& storeFile)
{
    auto status = instance.status();
    std::error_code unknown;
    if (status && *status && !std::filesystem::equivalent((*status)->storeFile, storeFile, unknown))
        status->reset();
    return status;
}

} // namespace stintbook
