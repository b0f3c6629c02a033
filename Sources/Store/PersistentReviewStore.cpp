#include "Store/PersistentReviewStore.h"

#include <algorithm>

#include "Base/Text.h"
#include "Store/BillingRecords.h"
#include "Store/ClientRecords.h"
#include "Store/ExportSnapshotRecords.h"
#include "Store/ReviewedRecords.h"
#include "Store/RuleRecords.h"
#include "Store/SegmentReviewRecords.h"

namespace stintbook {

namespace {

/// Lifts a function that cannot fail but by the database into what `StoreDatabase` runs.
template <typename Read> auto reading(Read read)
{
    return [read](StoreConnection& connection) -> Stored<std::invoke_result_t<Read, StoreConnection&>> {
        return read(connection);
    };
}

template <typename All> auto collecting(All all)
{
    return [all](StoreConnection& connection) { return all(connection).collect(); };
}

template <typename Write> auto writing(Write write)
{
    return [write](StoreConnection& connection) -> Stored<void> {
        write(connection);
        return {};
    };
}

std::optional<FirstWorkContextProblem> problem(StoreConnection& connection, const FirstWorkContext& context)
{
    const auto& [client, project, billing] = context;
    const auto unwritable = [](const char* field) {
        return FirstWorkContextProblem{FirstWorkContextProblem::Kind::unwritableValue, field};
    };
    if (project.clientID != client.id)
        return FirstWorkContextProblem{FirstWorkContextProblem::Kind::projectNotOwnedByNewClient, {}};
    if (isBlank(client.name))
        return unwritable("client name");
    if (isBlank(project.name))
        return unwritable("project name");
    if (billing && billing->hourlyRate && billing->hourlyRate->isNegative())
        return unwritable("hourly rate");
    if (connection.query("SELECT 1 FROM Client WHERE id = ?1").bind(client.id).next())
        return unwritable("client identifier");
    if (connection.query("SELECT 1 FROM Project WHERE id = ?1").bind(project.id).next())
        return unwritable("project identifier");
    return std::nullopt;
}

} // namespace

Stored<std::vector<ReviewedWorkItem>> PersistentReviewStore::items(const LocalDay& day) const
{
    return m_database->read([&](StoreConnection& connection) { return readItems(connection, day); });
}

Stored<std::vector<ReviewedWorkItem>> PersistentReviewStore::items(Interval overlapping) const
{
    return m_database->read([&](StoreConnection& connection) { return readItems(connection, overlapping); });
}

Stored<std::optional<ReviewedDayApproval>> PersistentReviewStore::approval(const LocalDay& day) const
{
    return m_database->read([&](StoreConnection& connection) { return readApproval(connection, day); });
}

Stored<std::vector<LocalDay>> PersistentReviewStore::reviewedDays(std::optional<Interval> startingIn) const
{
    return m_database->read(
        reading([&](StoreConnection& connection) { return readReviewedDays(connection, startingIn); }));
}

Stored<void> PersistentReviewStore::apply(const ReviewedLayerMutation& mutation)
{
    return m_database->write(
        [&](StoreConnection& connection) { return applyMutation(connection, mutation); });
}

Stored<SegmentReviews> PersistentReviewStore::reviews(std::span<const SegmentID> segments) const
{
    return m_database->read([&](StoreConnection& connection) { return readReviews(connection, segments); });
}

Stored<SegmentReviews> PersistentReviewStore::reviews(Interval overlapping) const
{
    return m_database->read(
        [&](StoreConnection& connection) { return readReviews(connection, overlapping); });
}

Stored<void> PersistentReviewStore::saveReviews(const std::map<SegmentID, SegmentReview>& reviews)
{
    return m_database->write(
        writing([&](StoreConnection& connection) { writeReviews(connection, reviews); }));
}

Stored<std::vector<Client>> PersistentReviewStore::clients() const
{
    return m_database->read(collecting(allClients));
}

Stored<std::vector<Project>> PersistentReviewStore::projects() const
{
    return m_database->read(collecting(allProjects));
}

Stored<ClientReferenceCensus> PersistentReviewStore::referenceCensus() const
{
    return m_database->read(reading(readReferenceCensus));
}

std::expected<void, ClientEditError> PersistentReviewStore::saveClient(const Client& client)
{
    return m_database->write(
        [&](StoreConnection& connection) { return stintbook::saveClient(connection, client); });
}

std::expected<void, ClientEditError> PersistentReviewStore::saveProject(const Project& project)
{
    return m_database->write(
        [&](StoreConnection& connection) { return stintbook::saveProject(connection, project); });
}

std::expected<void, ClientEditError> PersistentReviewStore::deleteClient(ClientID client)
{
    return m_database->write(
        [&](StoreConnection& connection) { return stintbook::deleteClient(connection, client); });
}

std::expected<void, ClientEditError> PersistentReviewStore::deleteProject(ProjectID project)
{
    return m_database->write(
        [&](StoreConnection& connection) { return stintbook::deleteProject(connection, project); });
}

Stored<std::vector<AttributionRule>> PersistentReviewStore::attributionRules() const
{
    return m_database->read(collecting(allAttributionRules));
}

Stored<std::vector<ExclusionRule>> PersistentReviewStore::exclusionRules() const
{
    return m_database->read(collecting(allExclusionRules));
}

Stored<void> PersistentReviewStore::replaceAttributionRules(const std::vector<AttributionRule>& rules)
{
    return m_database->write(
        writing([&](StoreConnection& connection) { stintbook::replaceAttributionRules(connection, rules); }));
}

Stored<void> PersistentReviewStore::replaceExclusionRules(const std::vector<ExclusionRule>& rules)
{
    return m_database->write(
        writing([&](StoreConnection& connection) { stintbook::replaceExclusionRules(connection, rules); }));
}

Stored<BillingBook> PersistentReviewStore::billing() const
{
    return m_database->read(readBilling);
}

Stored<void> PersistentReviewStore::saveSettings(const BillingSettings& settings)
{
    return m_database->write(
        writing([&](StoreConnection& connection) { writeSettings(connection, settings); }));
}

Stored<bool> PersistentReviewStore::suggestCurrency(const BillingCurrency& currency)
{
    return m_database->write([&](StoreConnection& connection) -> Stored<bool> {
        return writeFirstCurrency(connection, currency);
    });
}

Stored<void> PersistentReviewStore::saveClientBilling(ClientID client, const ClientBillingDefaults& defaults)
{
    return m_database->write(
        writing([&](StoreConnection& connection) { writeClientBilling(connection, client, defaults); }));
}

Stored<void> PersistentReviewStore::saveProjectBilling(ProjectID project,
                                                       const ProjectBillingOverrides& overrides)
{
    return m_database->write(
        writing([&](StoreConnection& connection) { writeProjectBilling(connection, project, overrides); }));
}

std::expected<void, std::variant<UnreadableRecord, StoreFailure, ExportStoreProblem>>
PersistentReviewStore::append(const ExportSnapshot& snapshot)
{
    using Appended = std::expected<void, std::variant<UnreadableRecord, StoreFailure, ExportStoreProblem>>;
    return m_database->write([&](StoreConnection& connection) -> Appended {
        if (!appendSnapshot(connection, snapshot))
            return std::unexpected(ExportStoreProblem{snapshot.id});
        return {};
    });
}

Stored<std::vector<ExportSnapshot>> PersistentReviewStore::snapshots() const
{
    return m_database->read(collecting(snapshotsNewestFirst));
}

Stored<std::optional<ExportSnapshot>> PersistentReviewStore::snapshot(ExportSnapshotID id) const
{
    return m_database->read([&](StoreConnection& connection) { return readSnapshot(connection, id); });
}

Stored<std::vector<ExportedDay>> PersistentReviewStore::exportedDays() const
{
    return m_database->read(reading(readExportedDays));
}

Stored<std::optional<ReviewedDayRevision>> PersistentReviewStore::exportedRevision(const LocalDay& day) const
{
    return m_database->read([&](StoreConnection& connection) -> Stored<std::optional<ReviewedDayRevision>> {
        return readExportedRevision(connection, day);
    });
}

std::expected<void, std::variant<UnreadableRecord, StoreFailure, FirstWorkContextProblem>>
PersistentReviewStore::create(const FirstWorkContext& context)
{
    using Created =
        std::expected<void, std::variant<UnreadableRecord, StoreFailure, FirstWorkContextProblem>>;
    return m_database->write([&](StoreConnection& connection) -> Created {
        if (const auto refusal = problem(connection, context))
            return std::unexpected(*refusal);
        writeClient(connection, context.client);
        writeProject(connection, context.project);
        if (context.clientBilling)
            writeClientBilling(connection, context.client.id, *context.clientBilling);
        return {};
    });
}

} // namespace stintbook
