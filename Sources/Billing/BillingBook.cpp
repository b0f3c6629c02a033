#include "Billing/BillingBook.h"

namespace stintbook {

namespace {

template <typename ID, typename Terms> Terms termsOf(const std::map<ID, Terms>& all, ID id)
{
    const auto found = all.find(id);
    return found == all.end() ? Terms() : found->second;
}

} // namespace

BillingBook::Terms BillingBook::resolve(ClientID client, ProjectID project) const
{
    const auto defaults = termsOf(clients, client);
    const auto overrides = termsOf(projects, project);
    const auto ledger = settings.defaultRounding.value_or(RoundingPolicy::exact);
    return {
        .hourlyRate = overrides.hourlyRate ? overrides.hourlyRate : defaults.hourlyRate,
        .rounding = overrides.rounding.value_or(defaults.rounding.value_or(ledger)),
    };
}

} // namespace stintbook
