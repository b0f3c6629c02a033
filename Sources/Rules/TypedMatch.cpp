#include "Rules/TypedMatch.h"

namespace stintbook {

std::string message(const DomainRefused& refused)
{
    return "“" + refused.text
        + "” is no web domain, so nothing was saved. Write a host, for example docs.example.org.";
}

std::expected<RuleMatch, DomainRefused> checked(const TypedMatch& typed)
{
    RuleMatch match{typed.application, {}, typed.title};
    if (typed.domain) {
        match.browserDomain = BrowserDomain::fromText(*typed.domain);
        if (!match.browserDomain)
            return std::unexpected(DomainRefused{*typed.domain});
    }
    return match;
}

} // namespace stintbook
