#include "Store/UnsavedSegmentFile.h"

#include <cerrno>
#include <expected>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>
#include <tuple>

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include "Base/Json.h"
#include "Base/Log.h"
#include "Base/Try.h"
#include "Store/ActivityDataRecords.h"
#include "Store/StoreFileInspection.h"

namespace stintbook {

namespace {

using Written = std::expected<void, std::error_code>;

std::unexpected<std::error_code> lastError()
{
    return std::unexpected(std::error_code(errno, std::generic_category()));
}

std::string encoded(std::span<const ActivitySegment> segments)
{
    std::string text;
    JsonWriter json(text);
    json.array(segments, [&](const ActivitySegment& segment) { write(json, segment); });
    return text;
}

/// A member of an object, absent where there is none of that name or the object is none.
const rapidjson::Value* member(const rapidjson::Value* object, const char* key)
{
    if (object == nullptr || !object->IsObject())
        return nullptr;
    const auto found = object->FindMember(key);
    return found == object->MemberEnd() ? nullptr : &found->value;
}

std::optional<std::string> text(const rapidjson::Value* value)
{
    if (value == nullptr || !value->IsString())
        return std::nullopt;
    return std::string(value->GetString(), value->GetStringLength());
}

std::optional<double> number(const rapidjson::Value* value)
{
    if (value == nullptr || !value->IsNumber())
        return std::nullopt;
    return value->GetDouble();
}

template <typename E> std::optional<E> enumerator(const rapidjson::Value* value)
{
    const auto raw = text(value);
    return raw ? fromRawValue<E>(*raw) : std::nullopt;
}

std::optional<ActivitySegment> decodedSegment(const rapidjson::Value& object)
{
    const auto id = SegmentID::parse(text(member(&object, "id")).value_or(""));
    const auto start = number(member(&object, "start"));
    const auto end = number(member(&object, "end"));
    const auto kind = enumerator<ActivityKind>(member(&object, "kind"));
    const auto* context = member(&object, "context");
    const auto contextKind = enumerator<FocusedContextKind>(member(context, "kind"));
    const auto evidence = enumerator<ContextEvidence>(member(&object, "evidence"));
    const auto origin = enumerator<SegmentOrigin>(member(&object, "origin"));
    const auto timeZone = text(member(&object, "timeZoneIdentifier"));
    const auto* offset = member(&object, "timeZoneSecondsFromGMT");
    if (!id || !start || !end || !(*start < *end) || !kind || !contextKind || !evidence || !origin
        || !timeZone || offset == nullptr || !offset->IsInt())
        return std::nullopt;

    ActivitySegment segment{.id = *id,
                            .start = {*start},
                            .end = {*end},
                            .kind = *kind,
                            .context = {*contextKind, text(member(context, "text")).value_or("")},
                            .evidence = *evidence,
                            .origin = *origin,
                            .timeZone = {*timeZone, offset->GetInt()},
                            .gapReason = enumerator<GapReason>(member(&object, "gapReason"))};
    if (const auto* application = member(&object, "application"))
        segment.application = {text(member(application, "bundleIdentifier")).value_or(""),
                               text(member(application, "displayName")).value_or("")};
    if (const auto host = text(member(&object, "browserDomain")))
        segment.browserDomain = BrowserDomain::fromText(*host);
    if ((segment.kind == ActivityKind::gap) != segment.gapReason.has_value())
        return std::nullopt;
    return segment;
}

/// Absent for anything that was not written whole.
std::optional<std::vector<ActivitySegment>> decoded(const std::string& contents)
{
    const auto document = parseJson(contents);
    if (!document || !document->IsArray())
        return std::nullopt;
    std::vector<ActivitySegment> segments;
    for (const auto& value : document->GetArray()) {
        auto segment = decodedSegment(value);
        if (!segment)
            return std::nullopt;
        segments.push_back(std::move(*segment));
    }
    return segments;
}

Written writeAll(int descriptor, std::string_view contents)
{
    while (!contents.empty()) {
        const auto written = ::write(descriptor, contents.data(), contents.size());
        if (written < 0 && errno != EINTR)
            return lastError();
        if (written > 0)
            contents.remove_prefix(static_cast<std::size_t>(written));
    }
    if (fsync(descriptor) != 0)
        return lastError();
    return {};
}

Written replace(const std::filesystem::path& file, std::string_view contents)
{
    const auto draft = besideStore(file, ".new");
    const int descriptor = open(draft.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (descriptor < 0)
        return lastError();
    const auto written = writeAll(descriptor, contents);
    close(descriptor);
    TRY(written);
    if (std::rename(draft.c_str(), file.c_str()) != 0)
        return lastError();
    return {};
}

Written removeIfPresent(const std::filesystem::path& file)
{
    std::error_code error;
    std::filesystem::remove(file, error);
    if (error)
        return std::unexpected(error);
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
    const auto kept = all.empty() ? removeIfPresent(m_file) : replace(m_file, encoded(all));
    report(kept ? std::string() : kept.error().message());
}

Stored<int> UnsavedSegmentFile::recover(PersistentActivitySegmentRepository& repository)
{
    // What was being written when a run ended abruptly.
    std::ignore = removeIfPresent(besideStore(m_file, ".new"));
    std::ifstream stream(m_file, std::ios::binary);
    if (!stream)
        return 0;
    const std::string contents{std::istreambuf_iterator<char>(stream), {}};
    auto segments = decoded(contents);
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
        report(removed.error().message());
    return saved;
}

} // namespace stintbook
