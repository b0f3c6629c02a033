#pragma once

#include <expected>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "Billing/BillingBook.h"
#include "Domain/PersistenceError.h"
#include "Export/ExportSnapshot.h"

namespace stintbook {

/// A snapshot with that identifier is stored already; snapshots are never overwritten.
struct ExportStoreProblem {
    ExportSnapshotID snapshotIdentityAlreadyExists;
};
std::string message(const ExportStoreProblem& problem);

/// Which revision the latest export that includes a day recorded.
struct ExportedDay {
    std::string dayID;
    std::string revision;
};

/// Billing settings, client and project billing, default rounding, export snapshots.
class BillingRepository {
public:
    virtual ~BillingRepository() = default;

    virtual Stored<BillingBook> billing() const = 0;
    virtual Stored<void> saveSettings(const BillingSettings& settings) = 0;
    /// Unless settings were saved before, even without a currency. Whether it was taken.
    virtual Stored<bool> suggestCurrency(const BillingCurrency& currency) = 0;
    /// Defaults without any value remove the record.
    virtual Stored<void> saveClientBilling(ClientID client, const ClientBillingDefaults& defaults) = 0;
    virtual Stored<void> saveProjectBilling(ProjectID project, const ProjectBillingOverrides& overrides) = 0;

    virtual std::expected<void, std::variant<UnreadableRecord, StoreFailure, ExportStoreProblem>> append(
        const ExportSnapshot& snapshot) = 0;
    /// Newest first.
    virtual Stored<std::vector<ExportSnapshot>> snapshots() const = 0;
    virtual Stored<std::optional<ExportSnapshot>> snapshot(ExportSnapshotID id) const = 0;
    /// Per day the latest snapshot's revision, without reading whole snapshots.
    virtual Stored<std::vector<ExportedDay>> exportedDays() const = 0;
    virtual Stored<std::optional<ReviewedDayRevision>> exportedRevision(const LocalDay& day) const = 0;
};

} // namespace stintbook
