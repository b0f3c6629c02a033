#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Base/Text.h"

namespace stintbook {
namespace {

using testing::ElementsAre;

TEST(Text, TrimsWhiteSpaceOfAnyKindAtTheEndsOnly)
{
    EXPECT_EQ(trimmed(" \t\r\n a b \u00A0\u2003\u2028"), "a b");
    EXPECT_EQ(trimmed("\u3000"), "");
    EXPECT_EQ(trimmed("\xFF a \x80"), "\xFF a \x80") << "bytes that are no text are no white space";

    EXPECT_TRUE(containsWhitespace("a\u2009b"));
    EXPECT_FALSE(containsWhitespace("a\u200Bb"));
}

TEST(Text, FoldsCaseAndAccentsTogether)
{
    EXPECT_EQ(foldedForSearch("RÉSUMÉ"), foldedForSearch("re\u0301sume"));
    EXPECT_EQ(foldedForSearch("STRASSE"), foldedForSearch("Straße"));
    EXPECT_EQ(foldedForSearch("ΣΊΣΥΦΟΣ"), foldedForSearch("σίσυφος"));
    EXPECT_EQ(foldedForSearch("İstanbul"), foldedForSearch("istanbul"));
    EXPECT_EQ(foldedForSearch("a\u0323\u0301B — Ä\xC3(É"), "ab — a\uFFFD(e");
    EXPECT_NE(foldedForSearch("Łódź"), foldedForSearch("Lodz")) << "a stroke is no accent";
}

TEST(Text, FoldsNothingASecondTime)
{
    for (char32_t character = 1; character < 0x30000; ++character) {
        if (character >= 0xD800 && character < 0xE000)
            continue;
        const auto text = std::filesystem::path(std::u32string(1, character)).string(); // as UTF-8
        const auto folded = foldedForSearch(text);
        ASSERT_EQ(foldedForSearch(folded), folded) << static_cast<unsigned>(character);
    }
}

TEST(Text, SplitsIntoWhatReadersCallCharactersAndLosesNoByte)
{
    EXPECT_THAT(graphemes("a\r\nb\n"), ElementsAre("a", "\r\n", "b", "\n"));
    EXPECT_THAT(graphemes("e\u0301\r\n🇩🇪👩‍💻"),
                ElementsAre("e\u0301", "\r\n", "🇩🇪", "👩‍💻"));
    const std::string illFormed = "é\xFF\xC3(\xE2\x82";
    std::string joined;
    for (const auto part : graphemes(illFormed))
        joined += part;
    EXPECT_EQ(joined, illFormed);
}

TEST(Text, ReadsIllFormedBytesAsReplacements)
{
    EXPECT_TRUE(isValidUTF8("naïve 👩‍💻"));
    for (const auto* bytes : {"\xC3", "\xFF", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80"})
        EXPECT_FALSE(isValidUTF8(bytes));
    EXPECT_EQ(wellFormed("a\xFFz"), "a\uFFFDz");
    EXPECT_EQ(codePoints("a\xFF"), U"a\uFFFD");
}

} // namespace
} // namespace stintbook
