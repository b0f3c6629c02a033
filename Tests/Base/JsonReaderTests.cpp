#include <sstream>

#include <gtest/gtest.h>

#include "Base/JsonReader.h"

namespace stintbook {
namespace {

/// What is read, or what is wrong.
std::string list(const std::string& text)
{
    std::istringstream stream(text);
    JsonReader json(stream);
    std::string all;
    auto read = json.array([&](const JsonValue& value) -> JsonRead<void> {
        auto object = TRY(JsonObject::of(value));
        all += TRY(object.required("name", jsonText)) + " ";
        if (const auto amount = TRY(object.optional("amount", jsonAmount)))
            all += amount->text() + " ";
        return object.mustHoldNothingElse();
    });
    if (read)
        read = json.end();
    return read ? all : message(read.error());
}

TEST(JsonReader, GivesTextsAndNumbersAsTheyAreWritten)
{
    EXPECT_EQ(list(" [ ] "), "");
    EXPECT_EQ(list(R"([{"amount":123456789012345678901234567890.12345678,"name":"a\u0000\ud83d\ude00/\/"}])"),
              std::string("a\0", 2) + "😀// 123456789012345678901234567890.12345678 ");
    EXPECT_EQ(list("[{\"name\":\"b\", \"amount\":1e3},\n{\"name\":\"\"}]"), "b 1000  ");
}

TEST(JsonReader, SaysOnWhichLineAndWhereWhatIsWrong)
{
    EXPECT_EQ(list("[\n{\"name\":\n\n5}]"), "Line 4: [0].name is no text");
    EXPECT_EQ(list("[{\"name\":\"a\",\n\"name\":\"a\"}]"), "Line 2: [0] has \"name\" twice");
    EXPECT_EQ(list("[\n{\"name\":\"a\"\n"),
              "Line 3: [0] is no JSON (Missing a comma or '}' after an object member.)");
    EXPECT_EQ(list("{}"), "Line 1: the document is no list");
    EXPECT_EQ(list(std::string("[{\"name\":\"a\0\"}]", 15)),
              "Line 1: [0] is no JSON (Invalid escape character in string.)");
    EXPECT_EQ(list("[{\"name\":\"\xFF\"}]"), "Line 1: [0] is no JSON (Invalid encoding in string.)");
}

TEST(JsonReader, RefusesWhatNobodyCouldHaveStored)
{
    const auto tooDeep = "Line 1: [0] is nested deeper than anything that is stored";
    EXPECT_EQ(list("[" + std::string(17, '[') + std::string(18, ']')), tooDeep);
    EXPECT_EQ(list("[\"" + std::string(65 << 20, 'a') + "\"]"),
              "Line 1: [0] is longer than anything that is stored");
    for (const auto& huge :
         {std::string("1e400"), std::string("1e-400000000000"), std::string(40, '1'), std::string(400, '9')})
        EXPECT_TRUE(list(R"([{"name":"a","amount":)" + huge + "}]").starts_with("Line 1: [0]")) << huge;
}

TEST(JsonReader, PassesOverValuesOfAnyLength)
{
    std::istringstream stream("{\"a\":[[1,{\"b\":2}],\"" + std::string(1 << 20, 'x') + "\"],\n\"c\":3}");
    JsonReader json(stream);
    std::string numbers;
    ASSERT_TRUE(json.object([&](const std::string& key) -> JsonRead<void> {
        if (key == "a")
            return json.skip();
        numbers += key;
        numbers += TRY(TRY(json.value()).number());
        return {};
    }));
    EXPECT_EQ(numbers, "c3");
    EXPECT_TRUE(json.end());
    EXPECT_EQ(json.line(), 2U);
}

} // namespace
} // namespace stintbook
