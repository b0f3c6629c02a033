#include <set>
#include <string>

#include <gtest/gtest.h>

#include "Base/BuildInformation.h"
#include "Capture/IgnoredApplications.h"
#include "Capture/SupportedBrowser.h"

namespace stintbook {
namespace {

TEST(ApplicationTables, NeverRecordThisApplicationOrTheShellButEveryBrowser)
{
    EXPECT_TRUE(isIgnoredApplication(applicationIdentifier));
    EXPECT_TRUE(isIgnoredApplication("org.kde.plasmashell"));
    EXPECT_TRUE(isIgnoredApplication("x11:xfce4-notifyd"));
    EXPECT_FALSE(isIgnoredApplication("org.gnome.gedit"));
    std::set<std::string_view> identifiers;
    for (const auto& browser : supportedBrowsers()) {
        EXPECT_FALSE(isIgnoredApplication(browser.bundleIdentifier));
        EXPECT_TRUE(identifiers.insert(browser.bundleIdentifier).second) << browser.bundleIdentifier;
        EXPECT_EQ(supportedBrowser(browser.bundleIdentifier), &browser);
    }
    EXPECT_EQ(supportedBrowser("firefox-esr")->displayName, "Firefox ESR");
    EXPECT_EQ(supportedBrowser("org.gnome.gedit"), nullptr);
}

} // namespace
} // namespace stintbook
