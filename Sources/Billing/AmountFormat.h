#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Base/Decimal.h"
#include "Billing/BillingCurrency.h"

namespace stintbook {

/// Money of one currency in a locale's currency format. Making one takes a hundred times as long as writing an
/// amount.
class AmountFormat {
public:
    AmountFormat(BillingCurrency currency, std::string_view locale);

    /// Rounded as the currency is: the one place where money is rounded.
    std::string text(const Decimal& amount) const;
    /// With all its digits, for an amount comes from the exact rate.
    std::string rateText(const Decimal& rate) const;

private:
    struct Formatter;
    std::string written(const Decimal& number, const Formatter& formatter) const;

    BillingCurrency m_currency;
    std::shared_ptr<const Formatter> m_amounts;
    std::shared_ptr<const Formatter> m_rates;
};

/// The same for a single amount.
std::string formattedAmount(const Decimal& amount, const BillingCurrency& currency, std::string_view locale);

/// Amounts of a ledger as people read them, or why there are none.
class AmountText {
public:
    AmountText(const std::optional<BillingCurrency>& currency, std::string_view locale);

    /// What work amounts to of which so many billable pieces have no rate. Work that is not billable amounts to
    /// nothing.
    std::string text(const std::optional<Decimal>& amount, int unpricedCount) const;

private:
    std::optional<AmountFormat> m_format;
};

} // namespace stintbook
