#include <algorithm>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "Capture/TraceReader.h"

namespace stintbook {
namespace {

/// The problem with the trace, if any. '`' stands for JSON's quote.
std::optional<TraceProblem> problemIn(std::string trace)
{
    std::ranges::replace(trace, '`', '"');
    std::istringstream stream(trace);
    TraceReader reader(stream);
    for (;;) {
        auto line = reader.next();
        if (!line)
            return line.error();
        if (!*line)
            return std::nullopt;
    }
}

constexpr const char* startLine = "{`at`:10,`start`:{`timeZone`:`Europe/Berlin`}}\n";

TEST(TraceReader, SaysWhichLineIsMalformedAndWhy)
{
    struct Case {
        const char* line;
        const char* reason;
    };
    const std::vector<Case> cases{
        {"{`at`:11}", R"(the line has no input beside "at")"},
        {"{`stop`:{}}", R"(the line has no "at")"},
        {"[]", "the line is no object"},
        {"{`at`:9,`stop`:{}}", R"("at" falls, and the clock was not set)"},
        {"{`at`:1e300,`stop`:{}}", "at lies outside the years 1 to 9999"},
        {"{`at`:11,`at`:12,`stop`:{}}", R"(the line has "at" twice)"},
        {"{`at`:11,`stop`:{},`hold`:{}}", R"(the line has an unknown key "hold")"},
        {"{`at`:11,`shutdown`:{}}", R"(the line has an unknown input "shutdown")"},
        {"{`at`:11,`stop`:{`now`:true}}", R"(stop has an unknown key "now")"},
        {"{`at`:11,`start`:{`timeZone`:`UTC`}}", "there is a second start"},
        {"{`at`:11,`timeZone`:`Europe/Nowhere`}", R"(timeZone names no known zone: "Europe/Nowhere")"},
        {"{`at`:11,`permission`:`perhaps`}", R"(permission cannot be "perhaps")"},
        {"{`at`:11,`suspended`:`capturePaused`}", R"(suspended cannot be "capturePaused")"},
        {"{`at`:11,`store`:`full`}", R"(store cannot be "full")"},
        {"{`at`:11,`noObservation`:{`since`:12}}", R"(noObservation.since lies after "at")"},
        {"{`at`:11,`pause`:{`until`:null}}", "pause.until is no number"},
        {"{`at`:11,`idleSample`:{`idleSeconds`:-1,`awakeSeconds`:1}}", "idleSample.idleSeconds is negative"},
        {"{`at`:11,`frontmost`:{`bundleIdentifier`:``,`displayName`:`A`}}",
         "frontmost.bundleIdentifier is empty"},
        {"{`at`:11,`browserDomain`:{`reading`:`domain`,`browser`:`a`}}", R"(browserDomain has no "host")"},
        {"{`at`:11,`browserDomain`:{`reading`:`notAuthorized`,`host`:`a.b`,`browser`:`a`}}",
         R"(browserDomain has an unknown key "host")"},
    };
    for (const auto& [line, reason] : cases)
        EXPECT_EQ(problemIn(startLine + std::string(line)), (TraceProblem{2, reason})) << line;

    EXPECT_EQ(problemIn("\n# nothing\n{`at`:1,`stop`:{}}"), (TraceProblem{3, "the first line is no start"}));
    EXPECT_EQ(problemIn(startLine + std::string("{`at`:11,`stop`:{}}\n\n{`at`:11,`hold`:{}}")),
              (TraceProblem{4, "nothing comes behind a stop"}));
}

TEST(TraceReader, TakesNothingForJsonThatIsNone)
{
    for (const std::string line :
         {"{`at`:11,`stop`:{}", "{`at`:11,`stop`:{}} x", "{`at`:NaN,`stop`:{}}", "{`at`:1e999,`stop`:{}}",
          "{`at`:11,`timeZone`:`\xff`}", "{'at':11,'stop':{}}"})
        EXPECT_EQ(problemIn(startLine + line)->lineNumber, 2U) << line;
    EXPECT_TRUE(problemIn(startLine + std::string("{`at`:11,`stop`:{}}\0{", 21)));
}

} // namespace
} // namespace stintbook
