#include "Store/StoreFileInspection.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <system_error>
#include <unordered_set>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Base/FileDescriptor.h"
#include "Base/Try.h"
#include "Store/StoreSchema.h"

namespace stintbook {

namespace {

using Kind = StoreOpenProblem::Kind;

constexpr std::string_view magic("SQLite format 3\0", 16);

class PlainFile {
public:
    explicit PlainFile(const std::filesystem::path& file)
        : m_descriptor(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
    {
    }

    bool isOpen() const { return bool(m_descriptor); }
    /// Absent for what is no regular file.
    std::optional<std::uint64_t> size() const
    {
        struct stat status{};
        if (fstat(m_descriptor.get(), &status) != 0 || !S_ISREG(status.st_mode))
            return std::nullopt;
        return static_cast<std::uint64_t>(status.st_size);
    }
    /// How many bytes there were, or -1.
    template <std::size_t Size>
    ssize_t read(std::array<std::uint8_t, Size>& bytes, std::uint64_t offset) const
    {
        return pread(m_descriptor.get(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
    }

private:
    FileDescriptor m_descriptor;
};

template <std::size_t Size>
std::uint32_t bigEndian(const std::array<std::uint8_t, Size>& bytes, std::size_t at)
{
    return static_cast<std::uint32_t>(bytes[at]) << 24U | static_cast<std::uint32_t>(bytes[at + 1]) << 16U
        | static_cast<std::uint32_t>(bytes[at + 2]) << 8U | bytes[at + 3];
}

/// The first hundred bytes of an SQLite database.
struct Header {
    std::array<std::uint8_t, 100> bytes{};

    bool hasMagic(std::size_t length) const
    {
        return length >= magic.size()
            && std::equal(magic.begin(), magic.end(), bytes.begin(),
                          [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; });
    }
    std::uint32_t pageSize() const
    {
        const std::uint32_t stored = static_cast<std::uint32_t>(bytes[16]) << 8U | bytes[17];
        return stored == 1 ? 65536 : stored;
    }
    std::uint32_t pageCount() const { return bigEndian(bytes, 28); }
    std::uint32_t schemaVersion() const { return bigEndian(bytes, 60); }
    std::uint32_t applicationID() const { return bigEndian(bytes, 68); }

    bool isSound() const
    {
        const bool page = std::has_single_bit(pageSize()) && pageSize() >= 512;
        const bool journal = bytes[18] >= 1 && bytes[18] <= 2 && bytes[19] >= 1 && bytes[19] <= 2;
        const bool payload = bytes[20] == 0 && bytes[21] == 64 && bytes[22] == 32 && bytes[23] == 32;
        const bool schemaFormat = bigEndian(bytes, 44) == 4;
        const bool isUTF8 = bigEndian(bytes, 56) == 1;
        return page && journal && payload && schemaFormat && isUTF8 && pageCount() > 0;
    }
};

/// The pages of which the log holds a version.
std::unordered_set<std::uint32_t> pagesInLog(const PlainFile& log, std::uint32_t pageSize)
{
    constexpr std::uint64_t logHeader = 32;
    constexpr std::uint64_t frameHeader = 24;
    std::unordered_set<std::uint32_t> pages;
    std::array<std::uint8_t, frameHeader> frame{};
    for (std::uint64_t offset = logHeader; log.read(frame, offset) == static_cast<ssize_t>(frame.size());
         offset += frameHeader + pageSize)
        pages.insert(bigEndian(frame, 0));
    return pages;
}

/// Whether pages are missing at the end of the file. While the log is folded in, the file may rightly be
/// shorter than its header says; the log then holds what is missing.
bool isCutShort(const Header& header, std::uint64_t size, const PlainFile& log)
{
    const auto wholePages = size / header.pageSize();
    if (size % header.pageSize() == 0 && wholePages >= header.pageCount())
        return false;
    if (!log.isOpen())
        return true;
    const auto inLog = pagesInLog(log, header.pageSize());
    for (auto page = wholePages + 1; page <= header.pageCount(); ++page) {
        if (!inLog.contains(static_cast<std::uint32_t>(page)))
            return true;
    }
    return false;
}

} // namespace

std::filesystem::path besideStore(const std::filesystem::path& storeFile, std::string_view suffix)
{
    auto name = storeFile.native();
    return name.append(suffix);
}

std::expected<std::optional<StoreFileState>, StoreOpenProblem> inspectStoreFile(
    const std::filesystem::path& file)
{
    const auto refused = [&](Kind kind, std::string detail = {}) {
        return std::unexpected(StoreOpenProblem{kind, file, std::move(detail)});
    };

    const PlainFile store(file);
    if (!store.isOpen()) {
        if (errno == ENOENT)
            return std::nullopt;
        return refused(Kind::unreadable, std::generic_category().message(errno));
    }
    const auto size = store.size();
    if (!size)
        return refused(Kind::notAStore);
    if (*size == 0)
        return refused(Kind::emptyFile);

    Header header;
    const auto length = store.read(header.bytes, 0);
    if (length < 0)
        return refused(Kind::unreadable, std::generic_category().message(errno));
    if (!header.hasMagic(static_cast<std::size_t>(length)))
        return refused(Kind::notAStore);
    if (static_cast<std::size_t>(length) < header.bytes.size())
        return refused(Kind::cutShort);
    if (header.applicationID() != static_cast<std::uint32_t>(storeApplicationID))
        return refused(Kind::notAStore);
    if (!header.isSound())
        return refused(Kind::damaged);
    if (header.schemaVersion() > static_cast<std::uint32_t>(currentSchemaVersion))
        return refused(Kind::writtenByNewerVersion);
    if (header.schemaVersion() == 0)
        return refused(Kind::unexpectedLayout);

    const PlainFile log(besideStore(file, "-wal"));
    if (isCutShort(header, *size, log))
        return refused(Kind::cutShort);
    return StoreFileState{static_cast<int>(header.schemaVersion()),
                          log.isOpen() && log.size().value_or(0) > 0};
}

} // namespace stintbook
