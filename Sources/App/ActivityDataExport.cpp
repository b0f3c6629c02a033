#include "App/ActivityDataExport.h"

#include <fmt/format.h>

#include "App/StatusOfCopy.h"
#include "Base/BuildInformation.h"
#include "Base/FileReplacement.h"
#include "Base/Try.h"

namespace stintbook {

namespace {

using Exported = std::expected<void, ActivityDataExportProblem>;

template <typename T>
std::expected<T, ActivityDataExportProblem> orNotWritten(std::expected<T, std::string> result)
{
    if (!result)
        return std::unexpected(ActivityDataNotWritten{std::move(result).error()});
    if constexpr (std::is_void_v<T>)
        return {};
    else
        return *std::move(result);
}

} // namespace

Exported exportActivityData(StoreDatabase& database, ActivityDataExportRequest request,
                            const std::filesystem::path& file)
{
    auto replacement = TRY(orNotWritten(FileReplacement::begin(file, 0600)));
    request.sink = [&](std::string_view bytes) { return replacement.append(bytes); };
    TRY(writeActivityData(database, request));
    return orNotWritten(replacement.commit());
}

Exported exportActivityData(StoreDatabase& database, ActivityDataExportRequest request)
{
    auto spool = TRY(orNotWritten(Spool::begin()));
    const auto sink =
        std::exchange(request.sink, [&](std::string_view bytes) { return spool.append(bytes); });
    TRY(writeActivityData(database, request));
    return orNotWritten(spool.passTo(sink));
}

std::expected<void, std::string> saveWhatIsRecorded(RunningInstance& instance,
                                                    const std::filesystem::path& storeFile)
{
    if (!TRY(statusOfCopyWith(instance, storeFile)))
        return {};
    return instance.flush();
}

std::string suggestedActivityDataFileName(Instant now, const CalendarContext& calendar)
{
    return fmt::format("{} data {}.json", productName, calendar.dateOf(now).text());
}

} // namespace stintbook
