#include "Store/ActivityDataDocument.h"

#include <array>

#include "Base/BuildInformation.h"
#include "Base/Try.h"
#include "Store/ActivityDataRecords.h"
#include "Store/BillingRecords.h"
#include "Store/ClientRecords.h"
#include "Store/ExportSnapshotRecords.h"
#include "Store/RecordWriting.h"
#include "Store/ReviewedRecords.h"
#include "Store/RuleRecords.h"
#include "Store/SegmentRecords.h"
#include "Store/SegmentReviewRecords.h"

namespace stintbook {

namespace {

using Group = ActivityDataGroup;

/// As the work of a transaction ends early. What the database itself reports becomes a `StoreFailure`.
using Interruption =
    std::variant<UnreadableRecord, StoreFailure, ActivityDataNotWritten, ActivityDataCancelled>;
using Done = std::expected<void, Interruption>;

std::unexpected<Interruption> interruption(const PersistenceError& error)
{
    return std::visit([](const auto& what) { return std::unexpected(Interruption(what)); }, error);
}

/// How much is written at once.
constexpr std::size_t pieceSize = 256 << 10;

class Document {
public:
    Document(StoreConnection& connection, const ActivityDataExportRequest& request)
        : m_connection(connection)
        , m_request(request)
    {
    }

    /// The whole document; `reading` says which group it is at.
    Done write(Group& reading)
    {
        m_json.beginObject();
        for (const auto& section : sections) {
            reading = section.group;
            m_json.key(section.key);
            TRY((this->*section.write)());
        }
        m_json.endObject();
        m_text += '\n';
        return passOn(0);
    }

    /// Reads the group's part, into nothing that anybody gets to see.
    Done read(Group group)
    {
        m_json.beginArray();
        for (const auto& section : sections) {
            if (section.group == group)
                TRY((this->*section.write)());
        }
        return {};
    }

private:
    struct Section {
        std::string_view key;
        Group group;
        Done (Document::*write)();
    };
    static const std::array<Section, 15> sections;

    Done passOn(std::size_t limit)
    {
        if (m_request.cancellation.stop_requested())
            return std::unexpected(ActivityDataCancelled{});
        if (m_text.size() <= limit)
            return {};
        if (auto taken = m_request.sink(m_text); !taken)
            return std::unexpected(ActivityDataNotWritten{std::move(taken).error()});
        m_text.clear();
        m_request.progress(m_segmentCount);
        return {};
    }

    template <typename Record> void writeRecord(const Record& record) { stintbook::write(m_json, record); }
    /// What is stored under its owner.
    template <typename Owner, typename Record> void writeRecord(const std::pair<Owner, Record>& owned)
    {
        stintbook::write(m_json, owned.first, owned.second);
    }
    void writeRecord(const ActivitySegment& segment)
    {
        stintbook::write(m_json, segment);
        ++m_segmentCount;
    }
    template <typename Record> Done list(StoredRecords<Record> records)
    {
        m_json.beginArray();
        while (const auto record = records.next()) {
            if (!*record)
                return interruption(record->error());
            writeRecord(**record);
            TRY(passOn(pieceSize));
        }
        m_json.endArray();
        return {};
    }

    Done appVersion()
    {
        m_json.value(version());
        return {};
    }
    Done attributionRules() { return list(allAttributionRules(m_connection)); }
    Done billingSettings()
    {
        const auto settings = readSettings(m_connection);
        if (!settings)
            return interruption(settings.error());
        stintbook::write(m_json, *settings);
        return {};
    }
    Done clientBilling() { return list(allClientBilling(m_connection)); }
    Done clients() { return list(allClients(m_connection)); }
    Done dayApprovals() { return list(allApprovals(m_connection)); }
    Done exclusionRules() { return list(allExclusionRules(m_connection)); }
    Done exportSnapshots() { return list(allSnapshots(m_connection)); }
    Done exportedAt()
    {
        m_json.value(m_request.exportedAt);
        return {};
    }
    Done formatVersion()
    {
        m_json.value(activityDataFormatVersion);
        return {};
    }
    Done projectBilling() { return list(allProjectBilling(m_connection)); }
    Done projects() { return list(allProjects(m_connection)); }
    Done reviewedItems() { return list(allItems(m_connection)); }
    Done segmentReviews() { return list(allReviews(m_connection)); }
    Done segments() { return list(allSegments(m_connection)); }

    StoreConnection& m_connection;
    const ActivityDataExportRequest& m_request;
    std::string m_text;
    JsonWriter m_json{m_text, JsonWriter::Layout::indented};
    std::int64_t m_segmentCount = 0;
};

/// In the order of the document. What is in no group of the store goes with the one before it.
const std::array<Document::Section, 15> Document::sections = {{
    {"appVersion", Group::recordedActivity, &Document::appVersion},
    {"attributionRules", Group::review, &Document::attributionRules},
    {"billingSettings", Group::billing, &Document::billingSettings},
    {"clientBilling", Group::billing, &Document::clientBilling},
    {"clients", Group::review, &Document::clients},
    {"dayApprovals", Group::review, &Document::dayApprovals},
    {"exclusionRules", Group::review, &Document::exclusionRules},
    {"exportSnapshots", Group::billing, &Document::exportSnapshots},
    {"exportedAt", Group::billing, &Document::exportedAt},
    {"formatVersion", Group::billing, &Document::formatVersion},
    {"projectBilling", Group::billing, &Document::projectBilling},
    {"projects", Group::review, &Document::projects},
    {"reviewedItems", Group::review, &Document::reviewedItems},
    {"segmentReviews", Group::review, &Document::segmentReviews},
    {"segments", Group::recordedActivity, &Document::segments},
}};

/// The first group that cannot be read. The document mixes them; people are told of recorded activity first.
Group firstUnavailable(StoreDatabase& database, const ActivityDataExportRequest& request, Group met)
{
    auto unseen = request;
    unseen.sink = [](std::string_view) { return std::expected<void, std::string>(); };
    unseen.progress = [](std::int64_t) { };
    for (const auto group : {Group::recordedActivity, Group::review}) {
        if (group == met)
            break;
        const auto read = database.read(
            [&](StoreConnection& connection) { return Document(connection, unseen).read(group); });
        if (!read)
            return group;
    }
    return met;
}

std::string sentence(const ActivityDataUnavailable& unavailable)
{
    const auto label = [&] {
        switch (unavailable.group) {
        case Group::recordedActivity:
            return "Recorded activity";
        case Group::review:
            return "Your clients, rules and reviewed work";
        case Group::billing:
            break;
        }
        return "Billing settings and export history";
    }();
    return std::string(label) + " could not be read, so nothing was exported.";
}

std::string sentence(const ActivityDataNotWritten& problem)
{
    return "The file could not be written. " + problem.reason;
}

std::string sentence(const ActivityDataCancelled&)
{
    return "The export was cancelled, so nothing was exported.";
}

} // namespace

std::string message(const ActivityDataExportProblem& problem)
{
    return std::visit([](const auto& which) { return sentence(which); }, problem);
}

std::expected<void, ActivityDataExportProblem> writeActivityData(StoreDatabase& database,
                                                                 const ActivityDataExportRequest& request)
{
    Group reading = Group::recordedActivity;
    const auto written = database.read(
        [&](StoreConnection& connection) { return Document(connection, request).write(reading); });
    if (written)
        return {};
    if (const auto* refused = std::get_if<ActivityDataNotWritten>(&written.error()))
        return std::unexpected(*refused);
    if (std::holds_alternative<ActivityDataCancelled>(written.error()))
        return std::unexpected(ActivityDataCancelled{});
    return std::unexpected(ActivityDataUnavailable{firstUnavailable(database, request, reading)});
}

} // namespace stintbook
