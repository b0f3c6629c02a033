#pragma once

#include "Domain/ClientDirectoryRepository.h"
#include "Store/StoreConnection.h"
#include "Store/StoredRecords.h"

/// Clients with their colours, projects, and what names them. Callers hold the transaction.
namespace stintbook {

/// In the order of creation, as are projects.
StoredRecords<Client> allClients(StoreConnection& connection);
StoredRecords<Project> allProjects(StoreConnection& connection);

/// Corrections, reviewed items and rules count by their assignment, exports by their filters: an export's
/// lines hold names only.
ClientReferenceCensus readReferenceCensus(StoreConnection& connection);

void writeClient(StoreConnection& connection, const Client& client);
void writeProject(StoreConnection& connection, const Project& project);

std::expected<void, ClientEditError> saveClient(StoreConnection& connection, const Client& client);
std::expected<void, ClientEditError> saveProject(StoreConnection& connection, const Project& project);
std::expected<void, ClientEditError> deleteClient(StoreConnection& connection, ClientID id);
std::expected<void, ClientEditError> deleteProject(StoreConnection& connection, ProjectID id);

} // namespace stintbook
