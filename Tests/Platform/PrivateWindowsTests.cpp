#include <gtest/gtest.h>

#include "Platform/PrivateWindows.h"

namespace stintbook {

TEST(PrivateWindows, AreKnownByTheirBrowsersMarkInManyLanguages)
{
    for (const char* name : {
             "Example Domain — Mozilla Firefox Private Browsing",
             "Mozilla Firefox Private Browsing",
             "Beispiel — Mozilla Firefox Privater Modus",
             "Exemple — Navigation privée de Mozilla Firefox",
             "Ejemplo — Mozilla Firefox (Navegación privada)",
             "例 — Mozilla Firefox プライベートブラウジング",
             "Пример — Приватный просмотр Mozilla Firefox",
             "Example Domain - Chromium (Incognito)",
             "Beispiel - Chromium (Inkognito)",
             "Ejemplo - Google Chrome (incógnito)",
             "例 - Google Chrome（シークレット モード）",
             "예 - Google Chrome(시크릿 모드)",
             "Example - Brave (Private)",
             "Example - [InPrivate] - Microsoft Edge",
         })
        EXPECT_TRUE(isMarkedPrivate(name)) << name;
}

TEST(PrivateWindows, AreNotTakenFromWhatAPageCallsItself)
{
    for (const char* name : {
             "How Private Browsing works — Mozilla Firefox",
             "Incognito - Wikipedia - Chromium",
             "Private banking – Google Chrome",
             "Mozilla Firefox",
             "",
         })
        EXPECT_FALSE(isMarkedPrivate(name)) << name;
}

} // namespace stintbook
