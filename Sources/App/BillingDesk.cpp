#include "App/BillingDesk.h"

#include "Base/Try.h"
#include "Billing/BillingBook.h"
#include "Billing/BillingCurrency.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {

namespace {

std::string sentence(const CurrencyRefused& refused)
{
    return "“" + refused.text
        + "” is no currency code, so nothing was saved. Write an ISO 4217 code, for example EUR.";
}

std::string sentence(const PersistenceError& error)
{
    return message(error);
}

template <typename Change> std::expected<void, BillingProblem> change(OpenedStore& store, Change change)
{
    return store.database().write([&](StoreConnection&) -> std::expected<void, BillingProblem> {
        auto settings = TRY(store.review().billing()).settings;
        change(settings);
        TRY(store.review().saveSettings(settings));
        return {};
    });
}

} // namespace

std::string message(const BillingProblem& problem)
{
    return std::visit([](const auto& which) { return sentence(which); }, problem);
}

Stored<BillingSettings> BillingDesk::settings() const
{
    return TRY(m_store.review().billing()).settings;
}

std::expected<void, BillingProblem> BillingDesk::setCurrency(const std::optional<std::string>& code)
{
    const auto currency = code ? BillingCurrency::fromText(*code) : std::nullopt;
    if (code && !currency)
        return std::unexpected(CurrencyRefused{*code});
    return change(m_store, [&](BillingSettings& settings) { settings.currency = currency; });
}

std::expected<void, BillingProblem> BillingDesk::setRounding(std::optional<RoundingPolicy> rounding)
{
    return change(m_store, [&](BillingSettings& settings) { settings.defaultRounding = rounding; });
}

} // namespace stintbook
