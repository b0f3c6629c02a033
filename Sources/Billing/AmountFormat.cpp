#include "Billing/AmountFormat.h"

#include <algorithm>

#include <unicode/locid.h>
#include <unicode/numberformatter.h>
#include <unicode/ucurr.h>

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
    const auto numbers =
        icu::number::NumberFormatter::withLocale(icu::Locale(std::string(locale).c_str())).unit(unit);
    m_amounts = std::make_shared<Formatter>(numbers);
    const auto digits = ucurr_getDefaultFractionDigits(unit.getISOCurrency(), &status);
    m_rates = std::make_shared<Formatter>(numbers.precision(
        icu::number::Precision::minMaxFraction(digits, std::max(digits, Decimal::significantDigits))));
}

std::string AmountFormat::text(const Decimal& amount) const
{
    return written(amount, *m_amounts);
}

std::string AmountFormat::rateText(const Decimal& rate) const
{
    return written(rate, *m_rates);
}

std::string AmountFormat::written(const Decimal& number, const Formatter& formatter) const
{
    UErrorCode status = U_ZERO_ERROR;
    std::string text;
    formatter.numbers.formatDecimal(piece(number.text()), status).toString(status).toUTF8String(text);
    return U_SUCCESS(status) ? text : number.text() + " " + m_currency.code();
}

std::string formattedAmount(const Decimal& amount, const BillingCurrency& currency, std::string_view locale)
{
    return AmountFormat(currency, locale).text(amount);
}

AmountText::AmountText(const std::optional<BillingCurrency>& currency, std::string_view locale)
{
    if (currency)
        m_format.emplace(*currency, locale);
}

std::string AmountText::text(const std::optional<Decimal>& amount, int unpricedCount) const
{
    if (!m_format)
        return "— (currency not set)";
    return unpricedCount > 0 ? "— (rate not set)" : m_format->text(amount.value_or(0));
}

} // namespace stintbook
