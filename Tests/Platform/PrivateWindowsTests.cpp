#include <gtest/gtest.h>

#include "Platform/PrivateWindows.h"

namespace stintbook {

TEST(PrivateWindows, AreKnownByTheirBrowsersMarkAndNotByWhatAPageCallsItself)
{
    for (const char* name :
         {"Mozilla Firefox Private Browsing", "Exemple — Navigation privée de Mozilla Firefox",
          "例 — Mozilla Firefox プライベートブラウジング", "Ejemplo - Google Chrome (incógnito)",
          "예 - Google Chrome(시크릿 모드)", "Example - Brave (Private)",
          "Example - [InPrivate] - Microsoft Edge"})
        EXPECT_TRUE(isMarkedPrivate(name)) << name;
    for (const char* name : {"How Private Browsing works — Mozilla Firefox",
                             "Incognito - Wikipedia - Chromium", "Private banking – Google Chrome", ""})
        EXPECT_FALSE(isMarkedPrivate(name)) << name;
}

} // namespace stintbook
