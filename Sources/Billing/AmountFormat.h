#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Base/Decimal.h"
#include "Billing/BillingCurrency.h"

namespace stintbook {

/// Amounts of one currency in a locale's currency format, rounded as the currency is: the one place where
/// money is rounded. Making one takes a hundred times as long as writing an amount.
class AmountFormat {
public:
    AmountFormat(BillingCurrency currency, std::string_view locale);

    std::string text(const Decimal& amount) const;

private:
    struct Formatter;

    BillingCurrency m_currency;
    std::shared_ptr<const Formatter> m_formatter;
};

/// The same for a single amount.
std::string formattedAmount(const Decimal& amount, const BillingCurrency& currency, std::string_view locale);

} // namespace stintbook
