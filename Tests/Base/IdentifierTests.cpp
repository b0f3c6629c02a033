#include <gtest/gtest.h>

#include "Base/Digest.h"
#include "Base/Identifier.h"

namespace stintbook {
namespace {

TEST(Identifier, ReadsTheCanonicalTextInEitherCaseAndWritesUpper)
{
    EXPECT_EQ(UUID::parse("0f8fad5b-D9CB-469f-a165-70867728950e").value().upperCaseText(),
              "0F8FAD5B-D9CB-469F-A165-70867728950E");
    for (const auto* text : {"", "0f8fad5bd9cb469fa16570867728950e", "{0f8fad5b-d9cb-469f-a165-70867728950e}",
                             "0f8fad5b-d9cb-469f-a165-70867728950", "0f8fad5b-d9cb-469f-a165-70867728950g",
                             "0f8fad5b-d9cb-469f-a165-70867728950e ", "0f8fad5bd-9cb-469f-a165-70867728950e"})
        EXPECT_FALSE(UUID::parse(text)) << text;
}

TEST(Identifier, TakesADigestsHeadAsVersionEight)
{
    SHA256Digest digest;
    digest.fill(0xFF);
    EXPECT_EQ(UUID::fromDigest(digest).upperCaseText(), "FFFFFFFF-FFFF-8FFF-BFFF-FFFFFFFFFFFF");
    EXPECT_EQ(hexadecimal(sha256("abc")), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

} // namespace
} // namespace stintbook
