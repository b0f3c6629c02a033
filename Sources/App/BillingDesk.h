#pragma once

#include <expected>
#include <optional>
#include <string>
#include <variant>

#include "App/OpenedStore.h"
#include "Billing/BillingSettings.h"

namespace stintbook {

/// The text is no ISO currency.
struct CurrencyRefused {
    std::string text;
};

using BillingProblem = std::variant<PersistenceError, CurrencyRefused>;
std::string message(const BillingProblem& problem);

/// The ledger's currency and default rounding. Each edit is one transaction.
class BillingDesk {
public:
    explicit BillingDesk(OpenedStore& store)
        : m_store(store)
    {
    }

    Stored<BillingSettings> settings() const;
    /// Absent: no currency.
    std::expected<void, BillingProblem> setCurrency(const std::optional<std::string>& code);
    std::expected<void, BillingProblem> setRounding(std::optional<RoundingPolicy> rounding);

private:
    OpenedStore& m_store;
};

} // namespace stintbook
