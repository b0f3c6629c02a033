#include "Store/ClientRecords.h"

#include <optional>
#include <string>

#include "Base/Text.h"
#include "Base/Try.h"
#include "Store/StoredFields.h"

namespace stintbook {

namespace {

using Edited = std::expected<void, ClientEditError>;

/// Adds up identifiers and how often they occur, for clients and projects alike.
template <typename ID>
void count(StoreConnection& connection, std::string_view sql, int ClientReferences::* kind,
           std::map<ID, ClientReferences>& census)
{
    auto rows = connection.query(sql);
    while (rows.next()) {
        const auto id = rows.take<ID>();
        census[id].*kind += rows.take<int>();
    }
}

ClientReferences operator+(const ClientReferences& a, const ClientReferences& b)
{
    return {a.corrections + b.corrections, a.reviewedItems + b.reviewedItems, a.rules + b.rules,
            a.exports + b.exports};
}

template <typename ID> ClientReferences referencesTo(const std::map<ID, ClientReferences>& census, ID id)
{
    const auto found = census.find(id);
    return found == census.end() ? ClientReferences{} : found->second;
}

Stored<Client> readClient(StoreConnection& /*connection*/, Query& row)
{
    Client client{row.take<ClientID>(), row.take<std::string>(), row.take<bool>(), std::nullopt};
    if (const auto hex = row.take<std::optional<std::string>>()) {
        client.color = ClientColor::fromText(*hex);
        if (!client.color)
            return unreadable(client.id, "client.color");
    }
    return client;
}

std::optional<std::string> clientName(StoreConnection& connection, ClientID id)
{
    auto row = connection.query("SELECT name FROM Client WHERE id = ?1");
    if (!row.bind(id).next())
        return std::nullopt;
    return row.take<std::string>();
}

#define PROJECT_ROWS "SELECT id, clientID, name, defaultBillable, isArchived FROM Project"

Stored<Project> readProject(StoreConnection& /*connection*/, Query& row)
{
    return Project{row.take<ProjectID>(), row.take<ClientID>(), row.take<std::string>(), row.take<bool>(),
                   row.take<bool>()};
}

std::optional<Project> storedProject(StoreConnection& connection, ProjectID id)
{
    auto row = connection.query(PROJECT_ROWS " WHERE id = ?1");
    if (!row.bind(id).next())
        return std::nullopt;
    return *readProject(connection, row);
}

std::vector<ProjectID> projectsOf(StoreConnection& connection, ClientID id)
{
    auto rows = connection.query("SELECT id FROM Project WHERE clientID = ?1");
    rows.bind(id);
    std::vector<ProjectID> projects;
    while (rows.next())
        projects.push_back(rows.take<ProjectID>());
    return projects;
}

bool takesNewProjects(StoreConnection& connection, ClientID id)
{
    auto row = connection.query("SELECT 1 FROM Client WHERE id = ?1 AND isArchived = 0");
    return row.bind(id).next();
}

void removeProject(StoreConnection& connection, ProjectID id)
{
    connection.query("DELETE FROM ProjectBilling WHERE projectID = ?1").bind(id).run();
    connection.query("DELETE FROM Project WHERE id = ?1").bind(id).run();
}

} // namespace

StoredRecords<Client> allClients(StoreConnection& connection)
{
    return {connection,
            "SELECT c.id, c.name, c.isArchived, a.colorHex FROM Client c"
            " LEFT JOIN ClientAppearance a ON a.clientID = c.id ORDER BY c.rowid",
            readClient};
}

StoredRecords<Project> allProjects(StoreConnection& connection)
{
    return {connection, PROJECT_ROWS " ORDER BY rowid", readProject};
}

ClientReferenceCensus readReferenceCensus(StoreConnection& connection)
{
    using References = ClientReferences;
    ClientReferenceCensus census;
    count(
        connection,
        "SELECT assignedClientID, count(*) FROM SegmentReview WHERE assignedClientID IS NOT NULL GROUP BY 1",
        &References::corrections, census.byClient);
    count(connection, "SELECT clientID, count(*) FROM ReviewedWorkItem GROUP BY 1",
          &References::reviewedItems, census.byClient);
    count(connection, "SELECT clientID, count(*) FROM AttributionRule GROUP BY 1", &References::rules,
          census.byClient);
    count(connection,
          "SELECT clientFilterID, count(*) FROM ExportSnapshot WHERE clientFilterID IS NOT NULL GROUP BY 1",
          &References::exports, census.byClient);
    count(connection,
          "SELECT assignedProjectID, count(*) FROM SegmentReview WHERE assignedProjectID IS NOT NULL GROUP "
          "BY 1",
          &References::corrections, census.byProject);
    count(connection, "SELECT projectID, count(*) FROM ReviewedWorkItem GROUP BY 1",
          &References::reviewedItems, census.byProject);
    count(connection, "SELECT projectID, count(*) FROM AttributionRule GROUP BY 1", &References::rules,
          census.byProject);
    count(connection,
          "SELECT projectFilterID, count(*) FROM ExportSnapshot WHERE projectFilterID IS NOT NULL GROUP BY 1",
          &References::exports, census.byProject);
    return census;
}

void writeClient(StoreConnection& connection, const Client& client)
{
    connection
        .query("INSERT INTO Client (id, name, isArchived) VALUES (?1, ?2, ?3)"
               " ON CONFLICT (id) DO UPDATE SET name = excluded.name, isArchived = excluded.isArchived")
        .bind(client.id, client.name, client.isArchived)
        .run();
    connection.query("DELETE FROM ClientAppearance WHERE clientID = ?1").bind(client.id).run();
    if (client.color)
        connection.query("INSERT INTO ClientAppearance (clientID, colorHex) VALUES (?1, ?2)")
            .bind(client.id, client.color->hex())
            .run();
}

void writeProject(StoreConnection& connection, const Project& project)
{
    connection
        .query("INSERT INTO Project (id, clientID, name, defaultBillable, isArchived) VALUES (?1, ?2, ?3, "
               "?4, ?5)"
               " ON CONFLICT (id) DO UPDATE SET clientID = excluded.clientID, name = excluded.name,"
               " defaultBillable = excluded.defaultBillable, isArchived = excluded.isArchived")
        .bind(project.id, project.clientID, project.name, project.defaultBillable, project.isArchived)
        .run();
}

Edited saveClient(StoreConnection& connection, const Client& client)
{
    if (isBlank(client.name))
        return std::unexpected(BlankNameRefused{});
    writeClient(connection, client);
    return {};
}

Edited saveProject(StoreConnection& connection, const Project& project)
{
    const auto stored = storedProject(connection, project.id);
    if (stored && stored->clientID != project.clientID)
        return std::unexpected(ProjectOwnershipRefused{});
    if (!stored && !takesNewProjects(connection, project.clientID))
        return std::unexpected(ArchivedClientRefused{});
    if (isBlank(project.name))
        return std::unexpected(BlankNameRefused{});
    writeProject(connection, project);
    return {};
}

Edited deleteClient(StoreConnection& connection, ClientID id)
{
    const auto name = clientName(connection, id);
    if (!name)
        return {};
    const auto census = readReferenceCensus(connection);
    const auto projects = projectsOf(connection, id);
    auto references = referencesTo(census.byClient, id);
    // What names a project names its client too, except damaged or very old records.
    if (references.areNone()) {
        for (const auto project : projects)
            references = references + referencesTo(census.byProject, project);
    }
    if (!references.areNone())
        return std::unexpected(ClientDeletionRefused{references, *name});

    for (const auto project : projects)
        removeProject(connection, project);
    connection.query("DELETE FROM ClientBilling WHERE clientID = ?1").bind(id).run();
    connection.query("DELETE FROM ClientAppearance WHERE clientID = ?1").bind(id).run();
    connection.query("DELETE FROM Client WHERE id = ?1").bind(id).run();
    return {};
}

Edited deleteProject(StoreConnection& connection, ProjectID id)
{
    const auto stored = storedProject(connection, id);
    if (!stored)
        return {};
    const auto references = referencesTo(readReferenceCensus(connection).byProject, id);
    if (!references.areNone())
        return std::unexpected(ClientDeletionRefused{references, stored->name});
    removeProject(connection, id);
    return {};
}

} // namespace stintbook
