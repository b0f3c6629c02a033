#pragma once

#include <utility>

#include "Billing/BillingBook.h"
#include "Domain/PersistenceError.h"
#include "Store/StoreConnection.h"
#include "Store/StoredRecords.h"

/// Billing settings, rates and roundings. Callers hold the transaction.
namespace stintbook {

Stored<BillingBook> readBilling(StoreConnection& connection);
Stored<BillingSettings> readSettings(StoreConnection& connection);
Stored<std::optional<BillingCurrency>> readCurrency(StoreConnection& connection);
Stored<std::optional<RoundingPolicy>> readDefaultRounding(StoreConnection& connection);
/// By the client's identifier.
StoredRecords<std::pair<ClientID, ClientBillingDefaults>> allClientBilling(StoreConnection& connection);
/// By the project's identifier.
StoredRecords<std::pair<ProjectID, ProjectBillingOverrides>> allProjectBilling(StoreConnection& connection);
void writeSettings(StoreConnection& connection, const BillingSettings& settings);
/// Where no settings were written before; whether there were none.
bool writeFirstCurrency(StoreConnection& connection, const BillingCurrency& currency);
/// There is none yet; one without any value is kept, too.
void insertClientBilling(StoreConnection& connection, ClientID client, const ClientBillingDefaults& defaults);
void insertProjectBilling(StoreConnection& connection, ProjectID project,
                          const ProjectBillingOverrides& overrides);
/// A record without any value is removed.
void writeClientBilling(StoreConnection& connection, ClientID client, const ClientBillingDefaults& defaults);
void writeProjectBilling(StoreConnection& connection, ProjectID project,
                         const ProjectBillingOverrides& overrides);

} // namespace stintbook
