#include "App/PreferencesFile.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <expected>
#include <fstream>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>

#include "App/KnownPreferences.h"
#include "Base/FileDescriptor.h"
#include "Base/FileReplacement.h"
#include "Base/Log.h"

namespace stintbook {

namespace {

constexpr std::string_view heading =
    "# What was chosen in Velloran. What is not named here has its default. To change something, use "
    "Velloran,\n"
    "# `velloran-cli preferences set KEY VALUE`, or an editor while Velloran is not running.\n\n";

/// Keeps other processes from changing the files of a directory in the same way. Without a directory, or where
/// its file system knows no locks, there is nobody to keep away.
class DirectoryLock {
public:
    explicit DirectoryLock(const std::filesystem::path& directory)
        : m_descriptor(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        // Others hold it for the moment of a write. One that was stopped in that moment is not waited for.
        for (int attempt = 0; attempt < 100 && m_descriptor; ++attempt) {
            if (::flock(m_descriptor.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
                return;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        m_isHeldElsewhere = bool(m_descriptor);
    }

    bool isHeldElsewhere() const { return m_isHeldElsewhere; }

private:
    FileDescriptor m_descriptor;
    bool m_isHeldElsewhere = false;
};

/// Absent: there is no file.
std::expected<std::optional<PreferencesDocument>, std::string> documentIn(const std::filesystem::path& file)
{
    std::error_code failure;
    const auto status = std::filesystem::status(file, failure);
    if (status.type() == std::filesystem::file_type::not_found)
        return std::nullopt;
    if (!std::filesystem::is_regular_file(status))
        return std::unexpected(failure ? failure.message() : "It is no file");
    errno = 0;
    std::ifstream stream(file, std::ios::binary | std::ios::ate);
    std::string text(stream ? static_cast<std::size_t>(stream.tellg()) : 0, '\0');
    stream.seekg(0).read(text.data(), static_cast<std::streamsize>(text.size()));
    if (!stream)
        return std::unexpected(std::strerror(errno != 0 ? errno : EIO));
    auto document = PreferencesDocument::parse(std::move(text));
    if (!document)
        return std::unexpected(std::move(document).error());
    return *std::move(document);
}

} // namespace

PreferencesFile::PreferencesFile(std::filesystem::path file)
    : m_file(std::move(file))
{
    if (const auto document = documentIn(m_file); document && *document) {
        m_document = **document;
    } else if (!document) {
        // Alone, and looked at again: another process may have put it right.
        const DirectoryLock lock(m_file.parent_path());
        std::ignore = read();
    }
}

std::filesystem::path PreferencesFile::standardLocation(const Environment& environment, BuildKind buildKind)
{
    return configurationDirectory(environment)
        / (buildKind == BuildKind::installed ? "velloran" : "velloran-development") / "preferences.toml";
}

std::optional<PreferenceValue> PreferencesFile::value(std::string_view key) const
{
    const std::scoped_lock guard(m_lock);
    if (const auto unwritten = m_unwritten.find(key); unwritten != m_unwritten.end())
        return unwritten->second;
    return m_document.value(key);
}

bool PreferencesFile::store(std::string_view key, std::optional<PreferenceValue> value)
{
    const std::scoped_lock atTheFile(m_fileLock);
    {
        const std::scoped_lock guard(m_lock);
        m_unwritten.insert_or_assign(std::string(key), std::move(value));
    }
    if (!write())
        return false;
    const std::scoped_lock guard(m_lock);
    m_unwritten.clear();
    return true;
}

void PreferencesFile::refresh()
{
    const std::scoped_lock atTheFile(m_fileLock);
    if (auto document = documentIn(m_file))
        takeOver(std::move(*document).value_or(PreferencesDocument()));
}

void PreferencesFile::takeOver(PreferencesDocument document)
{
    const std::scoped_lock guard(m_lock);
    m_document = std::move(document);
}

/// Takes over what the file says now, or keeps what is known when it says nothing that can be read; false when
/// it can neither be read nor be set aside.
bool PreferencesFile::read()
{
    auto document = documentIn(m_file);
    if (!document)
        return setAside(document.error());
    takeOver(std::move(*document).value_or(PreferencesDocument()));
    return true;
}

bool PreferencesFile::setAside(const std::string& reason) const
{
    const auto directory = m_file.parent_path();
    auto aside = directory / "preferences.damaged.toml";
    std::error_code failure;
    for (int number = 2; std::filesystem::exists(std::filesystem::symlink_status(aside, failure)); ++number)
        aside = directory / fmt::format("preferences.damaged-{}.toml", number);
    std::filesystem::rename(m_file, aside, failure);
    if (failure) {
        log::error("The preferences {} could not be read, nor set aside: {}; {}", m_file.string(), reason,
                   failure.message());
        return false;
    }
    log::error("The preferences could not be read and were set aside as {}: {}", aside.string(), reason);
    return true;
}

bool PreferencesFile::write()
{
    std::error_code ignored;
    std::filesystem::create_directories(m_file.parent_path(), ignored);
    const DirectoryLock lock(m_file.parent_path());
    if (lock.isHeldElsewhere()) {
        log::error("The preferences could not be saved: another program keeps them locked");
        return false;
    }
    if (!read())
        return false;
    auto changed = m_document;
    for (const auto& [key, value] : m_unwritten)
        changed.set(key, value, commentOf(key));
    if (changed.text().empty())
        return true;
    const auto text = m_document.text().empty() ? std::string(heading) + changed.text() : changed.text();
    if (const auto replaced = replaceFile(m_file, text, 0600); !replaced) {
        log::error("The preferences could not be saved: {}", replaced.error());
        return false;
    }
    takeOver(*PreferencesDocument::parse(text));
    return true;
}

} // namespace stintbook
