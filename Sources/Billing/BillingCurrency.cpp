#include "Billing/BillingCurrency.h"

#include <array>
#include <memory>
#include <set>

#include <unicode/ucurr.h>
#include <unicode/uenum.h>
#include <unicode/unistr.h>

#include "Base/Text.h"

namespace stintbook {

namespace {

std::set<std::string, std::less<>> readCurrencyCodes()
{
    std::set<std::string, std::less<>> codes;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UEnumeration, decltype(&uenum_close)> currencies(
        ucurr_openISOCurrencies(UCURR_ALL, &status), &uenum_close);
    while (U_SUCCESS(status)) {
        const char* const code = uenum_next(currencies.get(), nullptr, &status);
        if (!code)
            break;
        codes.insert(code);
    }
    return codes;
}

bool isCurrencyCode(std::string_view code)
{
    static const auto codes = readCurrencyCodes();
    return codes.contains(code);
}

} // namespace

std::optional<BillingCurrency> BillingCurrency::fromText(std::string_view code)
{
    auto normalised = upperCased(trimmed(code));
    if (!isCurrencyCode(normalised))
        return std::nullopt;
    return BillingCurrency(std::move(normalised));
}

std::optional<BillingCurrency> BillingCurrency::ofLocale(std::string_view locale)
{
    std::array<char16_t, 4> code{};
    UErrorCode status = U_ZERO_ERROR;
    ucurr_forLocale(std::string(locale).c_str(), code.data(), code.size(), &status);
    if (U_FAILURE(status))
        return std::nullopt;
    std::string text;
    return fromText(icu::UnicodeString(code.data()).toUTF8String(text));
}

std::string BillingCurrency::name(std::string_view locale) const
{
    const auto code = icu::UnicodeString::fromUTF8(m_code);
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t length = 0;
    const auto* const found =
        ucurr_getName(icu::UnicodeString(code).getTerminatedBuffer(), std::string(locale).c_str(),
                      UCURR_LONG_NAME, nullptr, &length, &status);
    if (U_FAILURE(status))
        return m_code;
    std::string name;
    return icu::UnicodeString(false, found, length).toUTF8String(name);
}

} // namespace stintbook
