#include "Domain/Client.h"

#include "Base/Text.h"

namespace stintbook {

std::optional<ClientColor> ClientColor::fromText(std::optional<std::string_view> text)
{
    if (!text)
        return std::nullopt;
    std::string digits = trimmed(*text);
    if (digits.starts_with('#'))
        digits.erase(0, 1);
    if (digits.size() != 6 || digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        return std::nullopt;
    return ClientColor("#" + upperCased(digits));
}

} // namespace stintbook
