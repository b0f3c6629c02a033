#pragma once

#include <optional>

#include "Base/Decimal.h"
#include "Billing/BillingCurrency.h"
#include "Billing/RoundingPolicy.h"

namespace stintbook {

/// One for the whole ledger.
struct BillingSettings {
    /// Absent: amounts are unavailable to people.
    std::optional<BillingCurrency> currency;
    std::optional<RoundingPolicy> defaultRounding;

    friend bool operator==(const BillingSettings&, const BillingSettings&) = default;
};

struct ClientBillingDefaults {
    /// Money an hour, not negative.
    std::optional<Decimal> hourlyRate;
    std::optional<RoundingPolicy> rounding;

    friend bool operator==(const ClientBillingDefaults&, const ClientBillingDefaults&) = default;
};

/// What is absent is the client's.
struct ProjectBillingOverrides {
    std::optional<Decimal> hourlyRate;
    std::optional<RoundingPolicy> rounding;

    friend bool operator==(const ProjectBillingOverrides&, const ProjectBillingOverrides&) = default;
};

} // namespace stintbook
