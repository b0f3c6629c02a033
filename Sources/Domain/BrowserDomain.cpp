#include "Domain/BrowserDomain.h"

#include <algorithm>
#include <cstddef>

#include "Base/Text.h"

namespace stintbook {

namespace {

constexpr std::size_t longestHost = 255;
constexpr std::size_t longestLabel = 63;

bool isLabelCharacter(char32_t character)
{
    return character == U'-' || character == U'_' || isLetterOrDigit(character);
}

bool isLabel(std::u32string_view label)
{
    return !label.empty() && label.size() <= longestLabel && std::ranges::all_of(label, isLabelCharacter);
}

bool isHost(std::u32string_view text)
{
    if (text.size() > longestHost)
        return false;
    for (auto dot = text.find(U'.'); dot != std::u32string_view::npos; dot = text.find(U'.')) {
        if (!isLabel(text.substr(0, dot)))
            return false;
        text.remove_prefix(dot + 1);
    }
    return isLabel(text);
}

std::string_view withoutDotsAtTheEnds(std::string_view text)
{
    const auto first = text.find_first_not_of('.');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of('.') - first + 1);
}

/// The address behind "http://" or "https://"; without a scheme, as browsers show it, the whole. Absent for
/// any other scheme: pages of the browser itself, local files and the like belong to no domain.
std::optional<std::string_view> withoutWebScheme(std::string_view address)
{
    const auto end = address.find("://");
    if (end == std::string_view::npos)
        return address;
    const auto scheme = lowerCased(address.substr(0, end));
    if (scheme != "http" && scheme != "https")
        return std::nullopt;
    return address.substr(end + 3);
}

/// "user@host:port/path" without all but the host.
std::string_view hostOf(std::string_view address)
{
    address = address.substr(0, address.find_first_of("/?#\\"));
    if (const auto user = address.rfind('@'); user != std::string_view::npos)
        address.remove_prefix(user + 1);
    const auto port = address.rfind(':');
    const bool isPort = port != std::string_view::npos
        && address.find_first_not_of("0123456789", port + 1) == std::string_view::npos;
    return isPort ? address.substr(0, port) : address;
}

} // namespace

std::optional<BrowserDomain> BrowserDomain::fromText(std::string_view text)
{
    const auto lowered = lowerCased(trimmed(text));
    const auto host = withoutDotsAtTheEnds(lowered);
    if (!isHost(codePoints(host)))
        return std::nullopt;
    return BrowserDomain(std::string(host));
}

std::optional<BrowserDomain> BrowserDomain::fromAddress(std::string_view address)
{
    const auto text = trimmed(address);
    const auto behindScheme = withoutWebScheme(text);
    return behindScheme ? fromText(hostOf(*behindScheme)) : std::nullopt;
}

bool BrowserDomain::isWithin(const BrowserDomain& other) const
{
    const std::string_view mine = m_host;
    if (!mine.ends_with(other.m_host))
        return false;
    const auto head = mine.substr(0, mine.size() - other.m_host.size());
    return head.empty() || head.ends_with('.');
}

} // namespace stintbook
