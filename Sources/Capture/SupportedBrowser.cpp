#include "Capture/SupportedBrowser.h"

#include <algorithm>
#include <array>

namespace stintbook {

namespace {

constexpr std::string_view addressField = "address field";
constexpr std::array geckoLocations{std::string_view("DocURL of front document"), addressField};
constexpr std::array chromiumLocations{std::string_view("URI of front document"), addressField};

/// Each browser under its distributions' desktop entry, Flatpak's, Snap's and its window class.
constexpr auto browsers = std::to_array<SupportedBrowser>({
    {"firefox", "Firefox", geckoLocations},
    {"org.mozilla.firefox", "Firefox", geckoLocations},
    {"firefox_firefox", "Firefox", geckoLocations},
    {"x11:firefox", "Firefox", geckoLocations},
    {"firefox-esr", "Firefox ESR", geckoLocations},
    {"x11:firefox-esr", "Firefox ESR", geckoLocations},
    {"chromium", "Chromium", chromiumLocations},
    {"chromium-browser", "Chromium", chromiumLocations},
    {"org.chromium.Chromium", "Chromium", chromiumLocations},
    {"chromium_chromium", "Chromium", chromiumLocations},
    {"x11:chromium", "Chromium", chromiumLocations},
    {"x11:chromium-browser", "Chromium", chromiumLocations},
    {"google-chrome", "Google Chrome", chromiumLocations},
    {"google-chrome-stable", "Google Chrome", chromiumLocations},
    {"com.google.Chrome", "Google Chrome", chromiumLocations},
    {"x11:google-chrome", "Google Chrome", chromiumLocations},
    {"brave-browser", "Brave", chromiumLocations},
    {"com.brave.Browser", "Brave", chromiumLocations},
    {"brave_brave", "Brave", chromiumLocations},
    {"x11:brave-browser", "Brave", chromiumLocations},
    {"microsoft-edge", "Microsoft Edge", chromiumLocations},
    {"com.microsoft.Edge", "Microsoft Edge", chromiumLocations},
    {"x11:microsoft-edge", "Microsoft Edge", chromiumLocations},
    {"vivaldi-stable", "Vivaldi", chromiumLocations},
    {"com.vivaldi.Vivaldi", "Vivaldi", chromiumLocations},
    {"vivaldi_vivaldi-stable", "Vivaldi", chromiumLocations},
    {"x11:vivaldi-stable", "Vivaldi", chromiumLocations},
    {"opera", "Opera", chromiumLocations},
    {"com.opera.Opera", "Opera", chromiumLocations},
    {"opera_opera", "Opera", chromiumLocations},
    {"x11:opera", "Opera", chromiumLocations},
    {"librewolf", "LibreWolf", geckoLocations},
    {"io.gitlab.librewolf-community", "LibreWolf", geckoLocations},
    {"x11:librewolf", "LibreWolf", geckoLocations},
});

} // namespace

std::span<const SupportedBrowser> supportedBrowsers()
{
    return browsers;
}

const SupportedBrowser* supportedBrowser(std::string_view bundleIdentifier)
{
    const auto found = std::ranges::find(browsers, bundleIdentifier, &SupportedBrowser::bundleIdentifier);
    return found == browsers.end() ? nullptr : &*found;
}

} // namespace stintbook
