#pragma once

#include <expected>
#include <optional>
#include <string>
#include <variant>

#include "Billing/BillingSettings.h"
#include "Domain/Client.h"
#include "Domain/PersistenceError.h"

namespace stintbook {

/// A first client with its first project, created in one step.
struct FirstWorkContext {
    Client client;
    Project project;
    std::optional<ClientBillingDefaults> clientBilling;
};

struct FirstWorkContextProblem {
    enum class Kind { unwritableValue, projectNotOwnedByNewClient };

    Kind kind;
    /// Which value, for `unwritableValue`.
    std::string field;
};
std::string message(const FirstWorkContextProblem& problem);

class FirstWorkContextRepository {
public:
    virtual ~FirstWorkContextRepository() = default;
    /// In one transaction; on a refusal nothing is created.
    virtual std::expected<void, std::variant<UnreadableRecord, StoreFailure, FirstWorkContextProblem>> create(
        const FirstWorkContext& context) = 0;
};

} // namespace stintbook
