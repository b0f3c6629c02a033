#include <gtest/gtest.h>

#include "Base/Digest.h"
#include "Base/Identifier.h"

namespace stintbook {
namespace {

TEST(Identifier, ReadsEitherCaseAndWritesUpper)
{
    const auto id = UUID::parse("0f8fad5b-D9CB-469f-a165-70867728950e");
    ASSERT_TRUE(id);
    EXPECT_EQ(id->upperCaseText(), "0F8FAD5B-D9CB-469F-A165-70867728950E");
    EXPECT_EQ(id->lowerCaseText(), "0f8fad5b-d9cb-469f-a165-70867728950e");
}

TEST(Identifier, RefusesAnythingButTheCanonicalText)
{
    for (const auto* text : {"", "0f8fad5bd9cb469fa16570867728950e", "{0f8fad5b-d9cb-469f-a165-70867728950e}",
                             "0f8fad5b-d9cb-469f-a165-70867728950", "0f8fad5b-d9cb-469f-a165-70867728950g",
                             "0f8fad5b-d9cb-469f-a165-70867728950e ", "0f8fad5bd-9cb-469f-a165-70867728950e"})
        EXPECT_FALSE(UUID::parse(text)) << text;
}

TEST(Identifier, IsOrderedAsItsText)
{
    UUID former = UUID::random();
    for (int i = 0; i < 100; ++i) {
        const UUID next = UUID::random();
        EXPECT_EQ(former < next, former.upperCaseText() < next.upperCaseText());
        former = next;
    }
}

TEST(Identifier, TakesADigestsHeadAsVersionEight)
{
    SHA256Digest digest;
    digest.fill(0xFF);
    EXPECT_EQ(UUID::fromDigest(digest).upperCaseText(), "FFFFFFFF-FFFF-8FFF-BFFF-FFFFFFFFFFFF");
}

TEST(Digest, IsSHA256)
{
    EXPECT_EQ(hexadecimal(sha256("abc")), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(hexadecimal(sha256("")), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

} // namespace
} // namespace stintbook
