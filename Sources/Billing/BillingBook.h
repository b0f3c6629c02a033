#pragma once

#include <map>
#include <optional>

#include "Billing/BillingSettings.h"
#include "Domain/Client.h"

namespace stintbook {

/// Every rate and rounding that is set: what lines are priced from.
struct BillingBook {
    BillingSettings settings;
    std::map<ClientID, ClientBillingDefaults> clients;
    std::map<ProjectID, ProjectBillingOverrides> projects;

    struct Terms {
        std::optional<Decimal> hourlyRate;
        RoundingPolicy rounding = RoundingPolicy::exact;

        friend bool operator==(const Terms&, const Terms&) = default;
    };
    /// Project, then client, then (rounding alone) the ledger.
    Terms resolve(ClientID client, ProjectID project) const;

    friend bool operator==(const BillingBook&, const BillingBook&) = default;
};

} // namespace stintbook
