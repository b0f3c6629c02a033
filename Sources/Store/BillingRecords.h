#pragma once

#include "Billing/BillingBook.h"
#include "Domain/PersistenceError.h"
#include "Store/RecordWalk.h"
#include "Store/StoreConnection.h"

/// Billing settings, rates and roundings. Callers hold the transaction.
namespace stintbook {

Stored<BillingBook> readBilling(StoreConnection& connection);
Stored<std::optional<BillingCurrency>> readCurrency(StoreConnection& connection);
Stored<std::optional<RoundingPolicy>> readDefaultRounding(StoreConnection& connection);
void walkClientBilling(StoreConnection& connection,
                       const RecordVisitor<std::pair<ClientID, ClientBillingDefaults>>& visit);
void walkProjectBilling(StoreConnection& connection,
                        const RecordVisitor<std::pair<ProjectID, ProjectBillingOverrides>>& visit);
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
