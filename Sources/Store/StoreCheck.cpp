#include "Store/StoreCheck.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string_view>

#include <fmt/format.h>

#include "Domain/CalendarContext.h"
#include "Store/BillingRecords.h"
#include "Store/ClientRecords.h"
#include "Store/ExportSnapshotRecords.h"
#include "Store/ReviewedRecords.h"
#include "Store/RuleRecords.h"
#include "Store/SegmentRecords.h"
#include "Store/SegmentReviewRecords.h"

namespace stintbook {

namespace {

using Kind = StoreFinding::Kind;
using Record = StoreFinding::Record;
using Report = std::function<void(const StoreFinding&)>;

/// What a field that failed its check says: whose it is, and what kind of finding that makes. The first entry
/// that the field begins with counts.
struct FieldMeaning {
    std::string_view beginning;
    std::string_view table;
    Kind kind = Kind::unreadableRecord;
    /// The broken invariant of an inconsistent item.
    std::optional<ReviewedItemProblem> broken = std::nullopt;
};

constexpr std::array fieldMeanings{
    FieldMeaning{"segment.interval", "ActivitySegment", Kind::segmentReversed},
    FieldMeaning{"segment.browserDomain", "SegmentBrowserDomain"},
    FieldMeaning{"segment.", "ActivitySegment"},
    FieldMeaning{"client.color", "ClientAppearance"},
    FieldMeaning{"rule.browserDomain", "RuleBrowserDomain"},
    FieldMeaning{"attributionRule.", "AttributionRule"},
    FieldMeaning{"exclusionRule.", "ExclusionRule"},
    FieldMeaning{"review.", "SegmentReview"},
    FieldMeaning{"reviewedItem.interval", "ReviewedWorkItem", Kind::itemInconsistent,
                 ReviewedItemProblem::emptyInterval},
    FieldMeaning{"reviewedItem.slices", "ReviewedWorkItem", Kind::itemInconsistent,
                 ReviewedItemProblem::sliceNotPositive},
    FieldMeaning{"reviewedItem.", "ReviewedWorkItem"},
    FieldMeaning{"reviewedDisposition", "ReviewedDisposition"},
    FieldMeaning{"dayApproval.", "DayReviewApproval"},
    FieldMeaning{"clientBilling.", "ClientBilling"},
    FieldMeaning{"projectBilling.", "ProjectBilling"},
    FieldMeaning{"billingSettings.rounding", "BillingRounding"},
    FieldMeaning{"billingSettings.", "BillingSettings"},
    FieldMeaning{"exportLine.", "ExportLine"},
    FieldMeaning{"exportDay.", "ExportDayRevision"},
    FieldMeaning{"exportSnapshot.", "ExportSnapshot"},
};

StoreFinding finding(const PersistenceError& error, std::optional<std::string> identifier = {})
{
    const auto* unreadable = std::get_if<UnreadableRecord>(&error);
    if (unreadable == nullptr)
        return {Kind::integrity, std::nullopt, message(error)};
    const auto& [id, field] = *unreadable;
    const auto* meaning = std::ranges::find_if(
        fieldMeanings, [&](const FieldMeaning& candidate) { return field.starts_with(candidate.beginning); });
    const bool isKnown = meaning != fieldMeanings.end();
    Record record{isKnown ? std::string(meaning->table) : std::string(),
                  identifier ? *std::move(identifier) : id.upperCaseText(), field};
    if (!isKnown || meaning->kind == Kind::unreadableRecord)
        return {Kind::unreadableRecord, std::move(record), {}};
    record.field.clear();
    return {meaning->kind, std::move(record),
            meaning->broken ? std::string(rawValue(*meaning->broken)) : std::string()};
}

/// A visitor that reports what could not be read and hands the rest on.
template <typename Then> auto readable(const Report& report, Then then)
{
    return [&report, then](const auto& record) {
        if (record)
            then(*record);
        else
            report(finding(record.error()));
    };
}

auto readable(const Report& report)
{
    return readable(report, [](const auto&) { });
}

void checkIntegrity(StoreConnection& connection, const Report& report)
{
    auto rows = connection.query("PRAGMA integrity_check");
    while (rows.next()) {
        if (auto words = rows.take<std::string>(); words != "ok")
            report({Kind::integrity, std::nullopt, std::move(words)});
    }
}

void checkOwners(StoreConnection& connection, const Report& report)
{
    auto rows = connection.query("PRAGMA foreign_key_check");
    while (rows.next()) {
        auto table = rows.take<std::string>();
        const auto row = rows.take<std::optional<std::int64_t>>();
        auto owners = rows.take<std::string>();
        report({Kind::ownerMissing, Record{std::move(table), row ? std::to_string(*row) : "", ""},
                std::move(owners)});
    }
}

/// Segments come by start.
class SegmentOrderCheck {
public:
    explicit SegmentOrderCheck(const Report& report)
        : m_report(report)
    {
    }

    void operator()(const ActivitySegment& segment)
    {
        if (m_lastEnding && segment.start < m_end)
            m_report({Kind::segmentOverlaps, record(segment), m_lastEnding->text()});
        if (!m_lastEnding || m_end < segment.end) {
            m_lastEnding = segment.id;
            m_end = segment.end;
        }
        const auto& zone = segment.timeZone.identifier;
        auto place = m_calendars.find(zone);
        if (place == m_calendars.end())
            place = m_calendars.emplace(zone, CalendarContext::inZone(zone)).first;
        // A zone that this system does not know cuts no days here.
        const auto& calendar = place->second;
        if (calendar && calendar->boundsOfDayAt(segment.start).end < segment.end)
            m_report({Kind::segmentCrossesDay, record(segment), dayID(calendar->dayOf(segment.start))});
    }

private:
    static Record record(const ActivitySegment& segment)
    {
        return {"ActivitySegment", segment.id.text(), ""};
    }

    const Report& m_report;
    /// Of those so far, the one that ends last.
    std::optional<SegmentID> m_lastEnding;
    Instant m_end;
    std::map<std::string, std::optional<CalendarContext>, std::less<>> m_calendars;
};

void checkSegments(StoreConnection& connection, const Report& report)
{
    SegmentOrderCheck order(report);
    allSegments(connection).walk(readable(report, [&order](const ActivitySegment& segment) {
        order(segment);
    }));
}

void checkReviews(StoreConnection& connection, const Report& report)
{
    allReviews(connection).walk(readable(report));
}

void checkItems(StoreConnection& connection, const Report& report)
{
    allItems(connection).walk(readable(report, [&report](const ReviewedWorkItem& item) {
        if (const auto broken = problem(item))
            report({Kind::itemInconsistent, Record{"ReviewedWorkItem", item.id.text(), ""},
                    std::string(rawValue(*broken))});
    }));
}

void checkApprovals(StoreConnection& connection, const Report& report)
{
    allKeyedApprovals(connection).walk([&](const KeyedApproval& stored) {
        const auto& [key, approval] = stored;
        if (!approval)
            report(finding(approval.error(), key));
        else if (!hasItems(connection, approval->day))
            report({Kind::approvalOfUnknownDay, Record{"DayReviewApproval", key, ""}, {}});
    });
}

void checkDirectory(StoreConnection& connection, const Report& report)
{
    allClients(connection).walk(readable(report));
}

void checkRules(StoreConnection& connection, const Report& report)
{
    allAttributionRules(connection).walk(readable(report));
    allExclusionRules(connection).walk(readable(report));
}

void checkBilling(StoreConnection& connection, const Report& report)
{
    if (const auto currency = readCurrency(connection); !currency)
        report(finding(currency.error(), "billing-settings"));
    if (const auto rounding = readDefaultRounding(connection); !rounding)
        report(finding(rounding.error(), "billing-rounding"));
    allClientBilling(connection).walk(readable(report));
    allProjectBilling(connection).walk(readable(report));
}

/// Whether the identifier names the day; a zone that is unknown has been reported already.
bool isDay(const std::string& id, Instant start, const std::string& zone)
{
    return !CalendarContext::isKnownZone(zone) || dayFromID(id) == LocalDay{start, zone};
}

template <typename Part> std::string identifier(const SnapshotPart<Part>& part)
{
    return fmt::format("{}/{}", part.snapshot.text(), part.position);
}

void checkSnapshots(StoreConnection& connection, const Report& report)
{
    allSnapshotHeads(connection).walk(readable(report));
    auto ranges = connection.query(
        "SELECT id, rangeStartDayID, rangeStartDate, rangeStartTimeZoneIdentifier FROM ExportSnapshot"
        " UNION ALL SELECT id, rangeEndDayID, rangeEndDate, rangeEndTimeZoneIdentifier FROM ExportSnapshot");
    while (ranges.next()) {
        const auto id = ranges.take<ExportSnapshotID>();
        auto day = ranges.take<std::string>();
        const auto start = ranges.take<Instant>();
        if (!isDay(day, start, ranges.take<std::string>()))
            report({Kind::snapshotOfUnknownDay, Record{"ExportSnapshot", id.text(), ""}, std::move(day)});
    }
}

void checkSnapshotDays(StoreConnection& connection, const Report& report)
{
    allSnapshotDays(connection).walk([&](const SnapshotPart<ExportDayRevision>& stored) {
        const auto& day = stored.part;
        if (!day)
            report(finding(day.error(), identifier(stored)));
        else if (!isDay(day->dayID, day->dayStart, day->timeZoneIdentifier))
            report({Kind::snapshotOfUnknownDay, Record{"ExportDayRevision", identifier(stored), ""},
                    day->dayID});
    });
}

/// The days of one snapshot at a time; lines come by snapshot.
class SnapshotDays {
public:
    explicit SnapshotDays(StoreConnection& connection)
        : m_connection(connection)
    {
    }

    bool hold(ExportSnapshotID snapshot, const std::string& day)
    {
        if (m_snapshot != snapshot) {
            m_snapshot = snapshot;
            m_days.clear();
            auto rows = m_connection.query("SELECT dayID FROM ExportDayRevision WHERE snapshotID = ?1");
            rows.bind(snapshot);
            while (rows.next())
                m_days.insert(rows.take<std::string>());
        }
        return m_days.contains(day);
    }

private:
    StoreConnection& m_connection;
    std::optional<ExportSnapshotID> m_snapshot;
    std::set<std::string> m_days;
};

void checkSnapshotLines(StoreConnection& connection, const Report& report)
{
    SnapshotDays days(connection);
    allSnapshotLines(connection).walk([&](const SnapshotPart<ExportLine>& stored) {
        const auto& line = stored.part;
        if (!line)
            report(finding(line.error(), identifier(stored)));
        else if (!days.hold(stored.snapshot, line->dayID))
            report({Kind::snapshotOfUnknownDay, Record{"ExportLine", identifier(stored), ""}, line->dayID});
    });
}

} // namespace

Stored<void> checkStore(StoreDatabase& database, const std::function<void(const StoreFinding&)>& report)
{
    bool isDone = false;
    auto read = database.read([&](StoreConnection& connection) -> Stored<void> {
        for (const auto check : {checkIntegrity, checkOwners, checkDirectory, checkRules, checkBilling,
                                 checkSegments, checkReviews, checkItems, checkApprovals, checkSnapshots,
                                 checkSnapshotDays, checkSnapshotLines}) {
            try {
                check(connection, report);
            } catch (const SQLite::Exception& exception) {
                report({Kind::integrity, std::nullopt, causeOf(exception, connection.handle())});
            }
        }
        isDone = true;
        return {};
    });
    // Damage that was met is met once more when the transaction ends.
    return isDone ? Stored<void>() : read;
}

} // namespace stintbook
