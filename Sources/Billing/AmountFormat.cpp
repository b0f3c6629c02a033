#include "Billing/AmountFormat.h"

#include <unicode/locid.h>
#include <unicode/numberformatter.h>

namespace stintbook {

namespace {

icu::StringPiece piece(std::string_view text)
{
    return {text.data(), static_cast<int32_t>(text.size())};
}

} // namespace

struct AmountFormat::Formatter {
    icu::number::LocalizedNumberFormatter numbers;
};

AmountFormat::AmountFormat(BillingCurrency currency, std::string_view locale)
    : m_currency(std::move(currency))
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::CurrencyUnit unit(piece(m_currency.code()), status);
    m_formatter = std::make_shared<Formatter>(
        icu::number::NumberFormatter::withLocale(icu::Locale(std::string(locale).c_str())).unit(unit));
}

std::string AmountFormat::text(const Decimal& amount) const
{
    UErrorCode status = U_ZERO_ERROR;
    std::string text;
    m_formatter->numbers.formatDecimal(piece(amount.text()), status).toString(status).toUTF8String(text);
    return U_SUCCESS(status) ? text : amount.text() + " " + m_currency.code();
}

std::string formattedAmount(const Decimal& amount, const BillingCurrency& currency, std::string_view locale)
{
    return AmountFormat(currency, locale).text(amount);
}

} // namespace stintbook
