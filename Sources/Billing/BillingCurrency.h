#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace stintbook {

/// An ISO 4217 currency, upper case.
class BillingCurrency {
public:
    /// Trimmed and upper-cased; absent when it is no ISO currency.
    static std::optional<BillingCurrency> fromText(std::string_view code);
    /// The currency of a locale's region ("de_DE"), if it has one: what a new ledger suggests.
    static std::optional<BillingCurrency> ofLocale(std::string_view locale);

    const std::string& code() const { return m_code; }
    /// "Euro", in the locale's ("de_DE") language; the code where it has no name there.
    std::string name(std::string_view locale) const;

    friend bool operator==(const BillingCurrency&, const BillingCurrency&) = default;

private:
    explicit BillingCurrency(std::string code)
        : m_code(std::move(code))
    {
    }

    std::string m_code;
};

} // namespace stintbook
