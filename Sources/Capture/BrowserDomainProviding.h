#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Base/RawValue.h"
#include "Capture/FrontmostApplicationProviding.h"
#include "Domain/BrowserDomain.h"

namespace stintbook {

/// The result of one browser poll.
struct BrowserDomainReading {
    enum class Kind {
        domain,
        /// The reading failed with the given error number.
        failed,
        browserNotRunning,
        unsupportedBrowser,
        notAuthorized,
        notDetermined,
        noFrontmostWindow,
        /// The address has no host (a local file, an empty tab), or the window is private.
        pageHasNoWebDomain,
    };

    Kind kind = Kind::pageHasNoWebDomain;
    /// Present exactly for `domain`.
    std::optional<BrowserDomain> domain;
    /// Not zero exactly for `failed`.
    std::int32_t errorNumber = 0;

    friend bool operator==(const BrowserDomainReading&, const BrowserDomainReading&) = default;
};

template <> struct RawValues<BrowserDomainReading::Kind> {
    using Kind = BrowserDomainReading::Kind;
    static constexpr std::array table{
        std::pair{Kind::domain, std::string_view("domain")},
        std::pair{Kind::failed, std::string_view("failed")},
        std::pair{Kind::browserNotRunning, std::string_view("browserNotRunning")},
        std::pair{Kind::unsupportedBrowser, std::string_view("unsupportedBrowser")},
        std::pair{Kind::notAuthorized, std::string_view("notAuthorized")},
        std::pair{Kind::notDetermined, std::string_view("notDetermined")},
        std::pair{Kind::noFrontmostWindow, std::string_view("noFrontmostWindow")},
        std::pair{Kind::pageHasNoWebDomain, std::string_view("pageHasNoWebDomain")},
    };
};

/// Reads the front tab's domain. Blocking, bounded to a second; called on the accessibility queue only.
class BrowserDomainProviding {
public:
    virtual ~BrowserDomainProviding() = default;
    virtual BrowserDomainReading reading(const FrontmostWindow& browserWindow) = 0;
};

} // namespace stintbook
