#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace stintbook {

/// The web domain of a browser's front tab. The host is always in normal form.
class BrowserDomain {
public:
    /// Normalises typed or recorded text: trimmed, lower-cased, dots at either end removed; at most 255
    /// characters in labels of 1 to 63 letters of any script, digits, hyphens or underscores. Absent when
    /// the text is no host: one with white space, '/', ':' or an empty label.
    static std::optional<BrowserDomain> fromText(std::string_view text);
    /// The domain of an address such as "https://docs.example.org/a"; absent when it has no host.
    static std::optional<BrowserDomain> fromAddress(std::string_view address);

    const std::string& host() const { return m_host; }

    /// Whether this is `other` or a subdomain of it.
    bool isWithin(const BrowserDomain& other) const;

    friend bool operator==(const BrowserDomain&, const BrowserDomain&) = default;
    friend auto operator<=>(const BrowserDomain&, const BrowserDomain&) = default;

private:
    explicit BrowserDomain(std::string host)
        : m_host(std::move(host))
    {
    }

    std::string m_host;
};

} // namespace stintbook
