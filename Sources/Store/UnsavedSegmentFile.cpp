#include "Store/UnsavedSegmentFile.h"

#include <fstream>
#include <optional>
#include <system_error>

#include "Base/FileReplacement.h"
#include "Base/Json.h"
#include "Base/JsonReader.h"
#include "Base/Log.h"
#include "Base/Try.h"
#include "Store/ActivityDataReading.h"
#include "Store/ActivityDataRecords.h"
#include "Store/StoreFileInspection.h"

namespace stintbook {

namespace {

std::string encoded(std::span<const ActivitySegment> segments)
{
    std::string text;
    JsonWriter json(text);
    json.array(segments, [&](const ActivitySegment& segment) { write(json, segment); });
    return text;
}

/// Absent for anything that was not written whole.
std::optional<std::vector<ActivitySegment>> decoded(std::istream& stream)
{
    JsonReader json(stream);
    std::vector<ActivitySegment> segments;
    const auto read = json.array([&](const JsonValue& value) -> JsonRead<void> {
        segments.push_back(TRY(readRecord<ActivitySegment>(value)));
        return {};
    });
    if (!read || !json.end())
        return std::nullopt;
    return segments;
}

FileWritten removeIfPresent(const std::filesystem::path& file)
{
    std::error_code error;
    std::filesystem::remove(file, error);
    if (error)
        return std::unexpected(error.message());
    return {};
}

} // namespace

UnsavedSegmentFile::UnsavedSegmentFile(const std::filesystem::path& storeFile)
    : m_file(besideStore(storeFile, ".unsaved"))
{
}

void UnsavedSegmentFile::report(const std::string& problem)
{
    if (!problem.empty() && problem != m_reported)
        log::error("Could not keep unsaved segments beside the store: {}", problem);
    m_reported = problem;
}

void UnsavedSegmentFile::keep(std::span<const ActivitySegment> segments)
{
    auto all = m_carried;
    all.insert(all.end(), segments.begin(), segments.end());
    const auto kept = all.empty() ? removeIfPresent(m_file) : replaceFile(m_file, encoded(all), 0600);
    report(kept ? std::string() : kept.error());
}

Stored<int> UnsavedSegmentFile::recover(PersistentActivitySegmentRepository& repository)
{
    removeLeftDrafts(m_file);
    std::ifstream stream(m_file, std::ios::binary);
    if (!stream)
        return 0;
    auto segments = decoded(stream);
    if (!segments) {
        std::error_code error;
        std::filesystem::rename(m_file, besideStore(m_file, ".damaged"), error);
        log::error("The file of unsaved segments was damaged and has been put aside");
        return 0;
    }

    const auto saved = repository.saveMissing(*segments);
    if (!saved) {
        m_carried = std::move(*segments);
        return saved;
    }
    if (*saved > 0)
        log::event("Recovered {} segment(s) that an earlier run had not saved", *saved);
    if (const auto removed = removeIfPresent(m_file); !removed)
        report(removed.error());
    return saved;
}

} // namespace stintbook
