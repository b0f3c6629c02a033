#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Domain/BrowserDomain.h"
#include "Require.h"

namespace {

/// A host is in normal form: normalising it again, or reading it as an address, gives the same one.
void mustBeNormal(const std::optional<stintbook::BrowserDomain>& domain)
{
    if (domain) {
        require(stintbook::BrowserDomain::fromText(domain->host()) == domain && domain->isWithin(*domain));
        require(stintbook::BrowserDomain::fromAddress("https://" + domain->host() + "/a") == domain);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    mustBeNormal(stintbook::BrowserDomain::fromText(text));
    mustBeNormal(stintbook::BrowserDomain::fromAddress(text));
    return 0;
}
