#include <gmock/gmock.h>

#include "CommandLineTest.h"

namespace stintbook {

class PreferenceCommands : public CommandLineTest {
protected:
    std::filesystem::path file() const
    {
        return directory / ".config" / "velloran-development" / "preferences.toml";
    }
    std::string listed(const std::string& key)
    {
        const auto preferences = json({"preferences", "list"});
        for (const auto& preference : preferences["preferences"].GetArray()) {
            if (preference["key"].GetString() == key && preference.HasMember("value"))
                return preference["value"].IsString() ? preference["value"].GetString() : "typed";
        }
        return "";
    }
};

TEST_F(PreferenceCommands, ListWhatHoldsAndChooseSomethingElse)
{
    EXPECT_THAT(done({"preferences", "list"}),
                testing::HasSubstr("stintbook.privacy.retentionDays     forever"));
    done({"preferences", "set", "stintbook.privacy.retentionDays", "30"});
    done({"preferences", "set", "stintbook.capture.titleContext", "no"});
    done({"preferences", "set", "stintbook.export.defaultMode", "detailed"});
    EXPECT_EQ(listed("stintbook.privacy.retentionDays"), "typed");
    EXPECT_EQ(listed("stintbook.export.defaultMode"), "detailed");
    EXPECT_THAT(contentsOf(file()), testing::HasSubstr("titleContext = false\n"));
    done({"preferences", "set", "stintbook.privacy.retentionDays", "forever"});
    EXPECT_EQ(listed("stintbook.privacy.retentionDays"), "");
}

TEST_F(PreferenceCommands, RefuseWhatIsNoPreferenceOrNoValueOfIt)
{
    const auto usage = "preferences set KEY VALUE [OPTION…]";
    expectRefusal({"preferences", "set", "colour", "red"}, "No preference is called “colour”.");
    expectRefusal({"preferences", "set", "stintbook.privacy.lastCleanup", "2026-11-20"},
                  "“stintbook.privacy.lastCleanup” is written by Velloran itself, so it was not changed.");
    expectWrongUsage(
        {"preferences", "set", "stintbook.privacy.retentionDays", "0"},
        "“0” is no value for “stintbook.privacy.retentionDays”; it takes a number of days from 1, or "
        "“forever”.",
        usage);
    expectWrongUsage({"preferences", "set", "stintbook.capture.titleContext", "perhaps"},
                     "“perhaps” is no value for “stintbook.capture.titleContext”; it takes true or false.",
                     usage);
    expectWrongUsage(
        {"preferences", "set", "stintbook.export.defaultMode", "Detailed"},
        "“Detailed” is no value for “stintbook.export.defaultMode”; it takes summarized or detailed.", usage);
    EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(PreferenceCommands, SayThatAFileInTheWayKeepsThemFromBeingSaved)
{
    writeFile(directory / ".config", "no directory");
    const auto result = run({"preferences", "set", "stintbook.capture.titleContext", "no"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors,
                testing::HasSubstr("The preferences could not be saved, so nothing was changed."));
}

} // namespace stintbook
