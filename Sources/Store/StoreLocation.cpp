#include "Store/StoreLocation.h"

#include <algorithm>
#include <deque>
#include <system_error>

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Base/Try.h"
#include "Store/StoreFileInspection.h"

namespace stintbook {

namespace {

namespace files = std::filesystem;

using Done = std::expected<void, StoreLocationProblem>;

constexpr std::string_view storeFileName = "Velloran.store";
constexpr std::string_view currentDirectory = "Velloran";
constexpr std::string_view developmentDirectory = "Velloran Development";
constexpr std::string_view earlierDirectory = "Stintbook";
constexpr std::string_view earlierFileName = "Stintbook.store";

std::optional<std::string> nonEmpty(const Environment& environment, const std::string& name)
{
    const auto found = environment.find(name);
    if (found == environment.end() || found->second.empty())
        return std::nullopt;
    return found->second;
}

std::unexpected<StoreLocationProblem> failed(const files::path& path, const std::error_code& error)
{
    return std::unexpected<StoreLocationProblem>(StoreFileSystemFailure{path, error.message()});
}

/// With all that is missing above it; a directory made here is its user's alone.
Done createDirectory(const files::path& directory)
{
    std::error_code error;
    if (files::is_directory(directory, error))
        return {};
    if (directory.has_parent_path() && directory.parent_path() != directory)
        files::create_directories(directory.parent_path(), error);
    if (!error && mkdir(directory.c_str(), 0700) != 0 && errno != EEXIST)
        error.assign(errno, std::generic_category());
    if (!error && !files::is_directory(directory, error) && !error)
        error = std::make_error_code(std::errc::not_a_directory);
    if (error)
        return failed(directory, error);
    return {};
}

/// Absolute, without symbolic links and dots, also where a part of it does not exist.
files::path withoutLinks(const files::path& path)
{
    constexpr int mostLinks = 40;
    const auto absolute = files::absolute(path);
    std::deque<files::path> pending(absolute.begin(), absolute.end());
    files::path resolved;
    for (int links = 0; !pending.empty();) {
        const auto part = pending.front();
        pending.pop_front();
        if (part.empty() || part == ".")
            continue;
        if (part == "..") {
            resolved = resolved.parent_path();
            continue;
        }
        std::error_code noLink;
        const auto target = files::read_symlink(resolved / part, noLink);
        if (noLink || ++links > mostLinks) {
            resolved /= part;
            continue;
        }
        if (target.is_absolute())
            resolved.clear();
        pending.insert(pending.begin(), target.begin(), target.end());
    }
    return resolved;
}

bool isWithin(const files::path& candidate, const files::path& directory)
{
    const auto [end, mismatch] = std::ranges::mismatch(directory, candidate);
    return end == directory.end();
}

Done mustBeNoInstalledStore(const files::path& candidate, const files::path& base, BuildKind kind)
{
    if (kind == BuildKind::installed)
        return {};
    for (const auto name : {currentDirectory, earlierDirectory}) {
        if (isWithin(withoutLinks(candidate), withoutLinks(base / name)))
            return std::unexpected<StoreLocationProblem>(RealStoreRefusal{base / name});
    }
    return {};
}

Done copyPrivately(const files::path& from, const files::path& to)
{
    std::error_code error;
    files::remove(to, error);
    if (!error)
        files::copy_file(from, to, error);
    if (!error)
        files::permissions(to, files::perms::owner_read | files::perms::owner_write, error);
    if (error)
        return failed(to, error);
    return {};
}

/// The earlier store stays where it was, untouched, as a fallback.
Done carryOverEarlierStore(const files::path& base)
{
    const auto earlier = base / earlierDirectory / earlierFileName;
    const auto current = base / currentDirectory / storeFileName;
    std::error_code error;
    if (!files::exists(earlier, error) || files::exists(current, error))
        return {};

    TRY(createDirectory(current.parent_path()));
    // The store appears last, under its own name, so that one cut off midway is copied again.
    const auto draft = besideStore(current, ".new");
    TRY(copyPrivately(earlier, draft));
    for (const auto* suffix : {"-wal", "-shm"}) {
        files::remove(besideStore(current, suffix), error);
        if (files::exists(besideStore(earlier, suffix), error))
            TRY(copyPrivately(besideStore(earlier, suffix), besideStore(current, suffix)));
    }
    files::rename(draft, current, error);
    if (error)
        return failed(current, error);
    return {};
}

std::string abbreviated(const files::path& path, const files::path& home)
{
    if (path == home)
        return "~";
    if (!isWithin(path, home))
        return path.string();
    return (files::path("~") / path.lexically_relative(home)).string();
}

} // namespace

std::string message(const StoreLocationProblem& problem, const std::optional<files::path>& home)
{
    if (const auto* failure = std::get_if<StoreFileSystemFailure>(&problem))
        return fmt::format("The directory or file {} could not be made: {}.", failure->path.string(),
                           failure->reason);
    const auto& directory = std::get<RealStoreRefusal>(problem).realDirectory;
    return fmt::format(
        "This is a development build, and it will not open the store in {}. That directory belongs"
        " to the installed copy of {}. Point STINTBOOK_STORE_DIRECTORY at a directory of its own.",
        abbreviated(directory, home.value_or(homeDirectory(processEnvironment()))), productName);
}

std::expected<files::path, StoreLocationProblem> storeLocation(const StoreLocationRequest& request)
{
    const auto base = request.baseDirectory.value_or(dataDirectory(request.environment));
    std::error_code error;
    if (!request.baseDirectory && !files::create_directories(base, error) && error)
        return failed(base, error);

    if (const auto chosen = nonEmpty(request.environment, "STINTBOOK_STORE_DIRECTORY")) {
        TRY(mustBeNoInstalledStore(*chosen, base, request.kind));
        TRY(createDirectory(*chosen));
        return files::path(*chosen) / storeFileName;
    }
    const bool isInstalled = request.kind == BuildKind::installed;
    if (isInstalled)
        TRY(carryOverEarlierStore(base));
    const auto directory = base / (isInstalled ? currentDirectory : developmentDirectory);
    TRY(createDirectory(directory));
    return directory / storeFileName;
}

} // namespace stintbook
