#include "Store/ActivityDataImport.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <tuple>
#include <unordered_map>
#include <unordered_set>

#include <fmt/format.h>

#include "Store/ActivityDataDocument.h"
#include "Store/ActivityDataReading.h"
#include "Store/BillingRecords.h"
#include "Store/ClientRecords.h"
#include "Store/ExportSnapshotRecords.h"
#include "Store/ReviewedRecords.h"
#include "Store/RoomForALargeTransaction.h"
#include "Store/RuleRecords.h"
#include "Store/SegmentRecords.h"
#include "Store/SegmentReviewRecords.h"
#include "Store/StoreSchema.h"

namespace stintbook {

namespace {

/// Clients, or projects: who is defined, and who is named, with the place where that was first.
template <typename ID> class Directory {
public:
    /// False when it is defined already.
    bool define(ID id) { return m_defined.insert(id).second; }
    void mention(ID id, const JsonValue& record, std::string_view list, std::int64_t place)
    {
        if (!m_mentioned.contains(id))
            m_mentioned.emplace(id, JsonProblem{record.line(), fmt::format("{}[{}]", list, place), {}});
    }
    JsonRead<void> mustDefineAllThatAreNamed(std::string_view kind) const
    {
        // The first one in the document, so that the answer is always the same.
        const JsonProblem* first = nullptr;
        for (const auto& [id, place] : m_mentioned) {
            if (!m_defined.contains(id) && (first == nullptr || place.line < first->line))
                first = &place;
        }
        if (first == nullptr)
            return {};
        auto problem = *first;
        problem.reason = fmt::format("names a {} that the document does not hold", kind);
        return std::unexpected(std::move(problem));
    }

private:
    std::unordered_set<ID> m_defined;
    std::unordered_map<ID, JsonProblem> m_mentioned;
};

using Read = JsonRead<void>;

class Import {
public:
    Import(StoreConnection& connection, std::istream& stream, const ActivityDataImportRequest& request)
        : m_connection(connection)
        , m_request(request)
        , m_json(stream)
    {
    }

    Read run()
    {
        TRY(m_json.object([&](const std::string& key) { return section(key); }));
        TRY(m_json.end());
        for (const auto& section : sections) {
            if (!m_met.contains(section.key))
                return documentProblem(fmt::format("has no \"{}\"", section.key));
        }
        TRY(m_clients.mustDefineAllThatAreNamed("client"));
        TRY(m_projects.mustDefineAllThatAreNamed("project"));
        replaceAttributionRules(m_connection, m_attributionRules);
        replaceExclusionRules(m_connection, m_exclusionRules);
        return {};
    }

    bool isCancelled() const { return m_request.cancellation.stop_requested(); }
    ActivityDataCounts takeCounts() { return std::move(m_counts); }

private:
    struct Section {
        std::string_view key;
        Read (Import::*read)();
    };
    static const std::array<Section, 15> sections;

    std::unexpected<JsonProblem> documentProblem(std::string reason) const
    {
        return std::unexpected(JsonProblem{m_json.line(), {}, std::move(reason)});
    }

    Read section(const std::string& key)
    {
        const auto* const found = std::ranges::find(sections, std::string_view(key), &Section::key);
        if (found == sections.end())
            return documentProblem("is unknown");
        if (!m_met.insert(found->key).second)
            return documentProblem("stands there twice");
        m_section = found->key;
        return (this->*found->read)();
    }

    /// Reads each record of a list and hands it to `keep`, which answers whether its identifier is a new one.
    template <typename Record, typename Keep> Read list(Keep keep)
    {
        auto& count = m_counts[std::string(m_section)];
        return m_json.array([&](const JsonValue& value) -> Read {
            // The caller tells it from a problem.
            if (isCancelled())
                return value.problem({});
            if (count % 1000 == 0)
                m_request.progress(m_json.position());
            m_place = count++;
            m_value = &value;
            if (!keep(TRY(readRecord<Record>(value))))
                return value.problem("has an identifier that another one has");
            return {};
        });
    }

    void mention(ClientID client) { m_clients.mention(client, *m_value, m_section, m_place); }
    void mention(ProjectID project) { m_projects.mention(project, *m_value, m_section, m_place); }
    void mention(const AttributionAssignment& assignment)
    {
        mention(assignment.clientID);
        mention(assignment.projectID);
    }

    Read appVersion() { return discard(jsonText); }
    Read exportedAt() { return discard(jsonInstant); }
    template <typename T> Read discard(JsonRead<T> (*read)(const JsonValue&))
    {
        TRY(read(TRY(m_json.value())));
        return {};
    }

    Read formatVersion()
    {
        const auto value = TRY(m_json.value());
        const auto version = TRY(value.number());
        if (version != std::to_string(activityDataFormatVersion))
            return value.problem(fmt::format("is not {}", activityDataFormatVersion));
        return {};
    }

    Read attributionRules()
    {
        return list<AttributionRule>([&](const AttributionRule& rule) {
            mention(rule.clientID);
            mention(rule.projectID);
            m_attributionRules.push_back(rule);
            return m_rules.insert(rule.id).second;
        });
    }
    Read exclusionRules()
    {
        return list<ExclusionRule>([&](const ExclusionRule& rule) {
            m_exclusionRules.push_back(rule);
            return m_rules.insert(rule.id).second;
        });
    }
    Read billingSettings()
    {
        const auto settings = TRY(readRecord<BillingSettings>(TRY(m_json.value())));
        if (settings != BillingSettings{})
            writeSettings(m_connection, settings);
        return {};
    }
    Read clientBilling()
    {
        return list<std::pair<ClientID, ClientBillingDefaults>>([&](const auto& record) {
            const auto& [client, defaults] = record;
            mention(client);
            if (!m_billedClients.insert(client).second)
                return false;
            insertClientBilling(m_connection, client, defaults);
            return true;
        });
    }
    Read projectBilling()
    {
        return list<std::pair<ProjectID, ProjectBillingOverrides>>([&](const auto& record) {
            const auto& [project, overrides] = record;
            mention(project);
            if (!m_billedProjects.insert(project).second)
                return false;
            insertProjectBilling(m_connection, project, overrides);
            return true;
        });
    }
    Read clients()
    {
        return list<Client>([&](const Client& client) {
            writeClient(m_connection, client);
            return m_clients.define(client.id);
        });
    }
    Read projects()
    {
        return list<Project>([&](const Project& project) {
            mention(project.clientID);
            writeProject(m_connection, project);
            return m_projects.define(project.id);
        });
    }
    Read dayApprovals()
    {
        return list<ReviewedDayApproval>([&](const ReviewedDayApproval& approval) {
            writeApproval(m_connection, approval);
            return m_approvedDays.insert(dayID(approval.day)).second;
        });
    }
    Read exportSnapshots()
    {
        return list<ExportSnapshot>(
            [&](const ExportSnapshot& snapshot) { return appendSnapshot(m_connection, snapshot); });
    }
    Read reviewedItems()
    {
        return list<ReviewedWorkItem>([&](const ReviewedWorkItem& item) {
            mention(item.assignment);
            return insertItemIfAbsent(m_connection, item);
        });
    }
    Read segmentReviews()
    {
        return list<SegmentAndReview>([&](const SegmentAndReview& stored) {
            if (stored.second.assignment)
                mention(*stored.second.assignment);
            return insertReviewIfAbsent(m_connection, stored);
        });
    }
    Read segments()
    {
        return list<ActivitySegment>(
            [&](const ActivitySegment& segment) { return insertSegmentIfAbsent(m_connection, segment); });
    }

    StoreConnection& m_connection;
    const ActivityDataImportRequest& m_request;
    JsonReader m_json;
    /// What is being read: the key of the list, and the record's place in it.
    std::string_view m_section;
    std::int64_t m_place = 0;
    const JsonValue* m_value = nullptr;
    std::set<std::string_view> m_met;
    ActivityDataCounts m_counts;

    Directory<ClientID> m_clients;
    Directory<ProjectID> m_projects;
    std::unordered_set<ClientID> m_billedClients;
    std::unordered_set<ProjectID> m_billedProjects;
    std::unordered_set<std::string> m_approvedDays;
    /// Of both kinds, whose conditions lie in one table.
    std::unordered_set<RuleID> m_rules;
    std::vector<AttributionRule> m_attributionRules;
    std::vector<ExclusionRule> m_exclusionRules;
};

const std::array<Import::Section, 15> Import::sections = {{
    {"appVersion", &Import::appVersion},
    {"attributionRules", &Import::attributionRules},
    {"billingSettings", &Import::billingSettings},
    {"clientBilling", &Import::clientBilling},
    {"clients", &Import::clients},
    {"dayApprovals", &Import::dayApprovals},
    {"exclusionRules", &Import::exclusionRules},
    {"exportSnapshots", &Import::exportSnapshots},
    {"exportedAt", &Import::exportedAt},
    {"formatVersion", &Import::formatVersion},
    {"projectBilling", &Import::projectBilling},
    {"projects", &Import::projects},
    {"reviewedItems", &Import::reviewedItems},
    {"segmentReviews", &Import::segmentReviews},
    {"segments", &Import::segments},
}};

bool isEmpty(StoreConnection& connection)
{
    return std::ranges::all_of(tableNames(connection), [&](const std::string& table) {
        return connection.number(fmt::format("SELECT EXISTS (SELECT 1 FROM \"{}\")", table)) == 0;
    });
}

/// What is wrong with a document of another version is its version, wherever in the document that stands.
/// Absent when it is ours, or cannot be told.
std::optional<UnknownFormatVersion> otherFormatVersion(std::istream& document)
{
    document.clear();
    if (!document.seekg(0))
        return std::nullopt;
    JsonReader json(document);
    std::optional<UnknownFormatVersion> other;
    // An answer is found before the document goes wrong, or none.
    std::ignore = json.object([&](const std::string& key) -> Read {
        if (key != "formatVersion")
            return json.skip();
        const std::string version(TRY(TRY(json.value()).number()));
        if (version != std::to_string(activityDataFormatVersion))
            other = UnknownFormatVersion{version};
        return {};
    });
    return other;
}

std::string sentence(const JsonProblem& problem)
{
    return message(problem) + ". Nothing was imported.";
}

std::string sentence(const UnknownFormatVersion& unknown)
{
    return fmt::format("The document has the format version {}, which this version of Velloran cannot read. "
                       "Nothing was imported.",
                       unknown.version);
}

std::string sentence(const StoreNotEmpty&)
{
    return "The store holds something already, and an import needs an empty one. Nothing was imported.";
}

std::string sentence(const ActivityDataImportCancelled&)
{
    return "The import was cancelled. Nothing was imported.";
}

std::string sentence(const UnreadableRecord& record)
{
    return message(record) + " Nothing was imported.";
}

std::string sentence(const StoreFailure& failure)
{
    return message(failure) + " Nothing was imported.";
}

} // namespace

std::string message(const ActivityDataImportProblem& problem)
{
    return std::visit([](const auto& which) { return sentence(which); }, problem);
}

std::expected<ActivityDataCounts, ActivityDataImportProblem> importActivityData(
    StoreDatabase& database, std::istream& document, const ActivityDataImportRequest& request)
{
    using Imported = std::expected<ActivityDataCounts, ActivityDataImportProblem>;
    auto imported = database.write([&](StoreConnection& connection) -> Imported {
        if (!isEmpty(connection))
            return std::unexpected(StoreNotEmpty{});
        const RoomForALargeTransaction room(connection);
        Import import(connection, document, request);
        if (auto read = import.run(); !read) {
            if (import.isCancelled())
                return std::unexpected(ActivityDataImportCancelled{});
            return std::unexpected(std::move(read).error());
        }
        return import.takeCounts();
    });
    if (!imported && std::holds_alternative<JsonProblem>(imported.error())) {
        if (auto other = otherFormatVersion(document))
            return std::unexpected(*std::move(other));
    }
    return imported;
}

} // namespace stintbook
