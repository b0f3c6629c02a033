#include <gmock/gmock.h>

#include "CommandLineTest.h"

namespace stintbook {

using PreferenceCommands = CommandLineTest;

TEST_F(PreferenceCommands, ListWhatHoldsAndChooseSomethingElse)
{
    done({"preferences", "set", "stintbook.privacy.retentionDays", "30"});
    done({"preferences", "set", "stintbook.capture.titleContext", "no"});
    done({"preferences", "set", "stintbook.export.defaultMode", "detailed"});
    const auto chosen = done({"--json", "preferences", "list"});
    for (const auto* preference : {R"("stintbook.privacy.retentionDays","value":30)",
                                   R"("stintbook.capture.titleContext","value":false)",
                                   R"("stintbook.export.defaultMode","value":"detailed")"})
        EXPECT_THAT(chosen, testing::HasSubstr(preference));
}

TEST_F(PreferenceCommands, RefuseWhatIsNoPreferenceOrNoValueOfIt)
{
    expectRefusal({"preferences", "set", "colour", "red"}, "No preference is called “colour”.");
    expectRefusal({"preferences", "set", "stintbook.privacy.lastCleanup", "2026-11-20"},
                  "“stintbook.privacy.lastCleanup” is written by Velloran itself, so it was not changed.");
    expectWrongUsage(
        {"preferences", "set", "stintbook.privacy.retentionDays", "0"},
        "“0” is no value for “stintbook.privacy.retentionDays”; it takes a number of days from 1, or "
        "“forever”.");
    expectWrongUsage({"preferences", "set", "stintbook.capture.titleContext", "perhaps"},
                     "“perhaps” is no value for “stintbook.capture.titleContext”; it takes true or false.");
    expectWrongUsage(
        {"preferences", "set", "stintbook.export.defaultMode", "Detailed"},
        "“Detailed” is no value for “stintbook.export.defaultMode”; it takes summarized or detailed.");
    EXPECT_FALSE(std::filesystem::exists(directory / ".config"));
}

} // namespace stintbook
