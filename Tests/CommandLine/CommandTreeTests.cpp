#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CommandLine/CommandTree.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

struct Outcome {
    int status = 0;
    std::string output;
    std::string errors;
};

class CommandTreeTest : public ::testing::Test {
protected:
    Outcome run(const std::vector<std::string>& words) const
    {
        CommandTree tree;
        addClientCommands(tree);
        addProjectCommands(tree);
        addRuleCommands(tree);
        addExportCommands(tree);
        std::vector<const char*> arguments{"velloran-cli"};
        for (const auto& word : words)
            arguments.push_back(word.c_str());
        std::ostringstream output;
        std::ostringstream errors;
        const int status = tree.run(
            static_cast<int>(arguments.size()), arguments.data(),
            {{"STINTBOOK_STORE_DIRECTORY", directory / "store"}, {"HOME", directory.path().string()}}, output,
            errors);
        return {status, output.str(), errors.str()};
    }
    void expectRefused(const std::vector<std::string>& words, const std::string& sentence) const
    {
        const auto refused = run(words);
        EXPECT_EQ(refused.status, 1);
        EXPECT_THAT(refused.output, IsEmpty());
        EXPECT_EQ(refused.errors, sentence + "\n");
    }

    TemporaryDirectory directory;
};

} // namespace

TEST_F(CommandTreeTest, TakesValuesThatAreEmptyOrLookLikeOptions)
{
    run({"client", "add", "list"});
    run({"project", "add", "list", "--", "--json"});
    const std::vector<std::string> rule{"rule", "add", "--client=list", "--project=list/--json"};
    const auto with = [&](const std::string& word) {
        auto words = rule;
        words.push_back(word);
        return words;
    };
    for (const auto* title : {"--title=-x", "--title=--title=", "--title=a=b"})
        EXPECT_EQ(run(with(title)).status, 0) << title;
    const auto rules = run({"rule", "list", "--json"}).output;
    for (const auto* title :
         {R"("titleContains":"-x")", R"("titleContains":"--title=")", R"("titleContains":"a=b")"})
        EXPECT_THAT(rules, HasSubstr(title));

    expectRefused(with("--title="), "A rule needs at least one condition — give one of them a value");
    EXPECT_EQ(run({"client", "add", "--", "--rate="}).status, 0);
    EXPECT_THAT(run({"client", "list", "--json"}).output, HasSubstr(R"("name":"--rate=")"));
}

TEST_F(CommandTreeTest, NamesACommandThatItDoesNotKnow)
{
    for (const auto& words : {std::vector<std::string>{"cleint", "list"}, {"client", "lsit"}}) {
        const auto wrong = run(words);
        EXPECT_EQ(wrong.status, 2);
        EXPECT_THAT(wrong.output, IsEmpty());
        EXPECT_THAT(wrong.errors, StartsWith("There is no command '"));
        EXPECT_THAT(wrong.errors, HasSubstr("\nUsage: velloran-cli "));
    }
    EXPECT_THAT(run({"client"}).errors, StartsWith("A subcommand is required"));
}

TEST_F(CommandTreeTest, ShowsTheWholeCommandInItsHelp)
{
    for (const auto& words : {std::vector<std::string>{"help", "client", "add"}, {"client", "add", "--help"}})
        EXPECT_THAT(run(words).output, HasSubstr("Usage: velloran-cli client add "));
}

TEST_F(CommandTreeTest, PrintsOneDocumentAlsoWhenThereIsNothingToSay)
{
    run({"client", "add", "Nordlicht"});
    const auto renamed = run({"--json", "client", "rename", "Nordlicht", "Südlicht"});
    EXPECT_EQ(renamed.status, 0);
    EXPECT_EQ(renamed.output, "{}\n");
    EXPECT_THAT(run({"client", "archive", "Südlicht"}).output, IsEmpty());
}

TEST_F(CommandTreeTest, PrefersTheNamedClientsProjectAndLeavesAnotherClientsToTheTargetCheck)
{
    for (const auto* client : {"Nordlicht", "Südlicht"}) {
        run({"client", "add", client});
        run({"project", "add", client, "Website"});
    }
    run({"project", "add", "Nordlicht", "Relaunch"});

    const auto ruleFor = [](const std::string& client, const std::string& project) {
        return std::vector<std::string>{"rule",     "add",  "--title",   "x",
                                        "--client", client, "--project", project};
    };
    EXPECT_EQ(run(ruleFor("Südlicht", "Website")).status, 0);
    expectRefused({"project", "archive", "Website"},
                  "More than one project is called “Website”; give its identifier instead.");
    expectRefused(ruleFor("Südlicht", "Webseite"), "No project is called “Webseite”.");
    const std::string refused = "That client or project cannot receive new work: ";
    expectRefused(ruleFor("Südlicht", "Relaunch"), refused + "its project belongs to a different client.");
    expectRefused(ruleFor("Südlicht", "Nordlicht/Relaunch"),
                  refused + "its project belongs to a different client.");
    expectRefused(ruleFor("00000000-0000-4000-8000-000000000001", "Relaunch"),
                  refused + "its client is no longer in the client list.");
}

TEST_F(CommandTreeTest, TakesNoArgumentThatIsNoText)
{
    const auto answer = run({"client", "add", "Nord\xFFlicht"});
    EXPECT_EQ(answer.status, 2);
    EXPECT_THAT(answer.output, IsEmpty());
    EXPECT_THAT(run({"client", "list", "--json"}).output, HasSubstr("\"clients\":[]"));
}

} // namespace stintbook
