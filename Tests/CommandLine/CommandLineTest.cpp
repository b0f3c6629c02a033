#include "CommandLineTest.h"

#include <csignal>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include <SQLiteCpp/Database.h>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Support/ParsedJson.h"

namespace stintbook {

CommandLineTest::CommandLineTest()
{
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string variable = *entry;
        const auto name = variable.substr(0, variable.find('='));
        // Sanitizers are told by their variables where to complain.
        if (name == "PATH" || name.ends_with("SAN_OPTIONS"))
            environment[name] = variable.substr(name.size() + 1);
    }
    environment.insert({{"HOME", directory.path()},
                        {"XDG_RUNTIME_DIR", directory.path()},
                        {"STINTBOOK_STORE_DIRECTORY", storeDirectory},
                        {"TZ", "Europe/Berlin"},
                        {"LC_ALL", "C.UTF-8"}});
}

CommandLineTest::Process CommandLineTest::start(const Words& words, const Preparation& preparation)
{
    const auto* program = std::getenv("VELLORAN_CLI");
    if (program == nullptr)
        throw std::runtime_error("VELLORAN_CLI names no program");
    const auto number = std::to_string(++m_runs);
    Process process{0, directory / ("output-" + number), directory / ("errors-" + number)};

    std::vector<char*> arguments{const_cast<char*>("velloran-cli")};
    for (const auto& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    const auto parent = getpid();
    // Found now, as the child may give up the right to.
    const int executable = open(program, O_RDONLY | O_CLOEXEC);

    process.id = fork();
    if (process.id != 0) {
        close(executable);
        return process;
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(127);
    dup2(open(process.outputFile.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600), STDOUT_FILENO);
    dup2(open(process.errorFile.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600), STDERR_FILENO);
    clearenv();
    for (const auto& [name, value] : environment)
        setenv(name.c_str(), value.c_str(), 1);
    if (preparation)
        preparation();
    fexecve(executable, arguments.data(), environ);
    _exit(127);
}

CommandLineTest::Result CommandLineTest::finish(const Process& process)
{
    int status = 0;
    waitpid(process.id, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), contentsOf(process.outputFile),
            contentsOf(process.errorFile)};
}

std::string CommandLineTest::done(const Words& words)
{
    const auto result = run(words);
    EXPECT_EQ(result.status, 0) << testing::PrintToString(words);
    EXPECT_EQ(result.errors, "") << testing::PrintToString(words);
    return result.output;
}

rapidjson::Document CommandLineTest::json(Words words)
{
    words.insert(words.begin(), "--json");
    const auto text = done(words);
    EXPECT_TRUE(text.ends_with("}\n"));
    return parsedJson(text);
}

std::string CommandLineTest::added(const Words& words)
{
    return json(words)["id"].GetString();
}

void CommandLineTest::expectRefusal(const Words& words, const std::string& sentence,
                                    const Preparation& preparation)
{
    expectNothing(words, 1, sentence + "\n", preparation);
}

void CommandLineTest::expectWrongUsage(const Words& words, const std::string& sentence)
{
    expectNothing(words, 2, testing::StartsWith(sentence + "\nUsage: velloran-cli "));
}

void CommandLineTest::expectNothing(const Words& words, int status,
                                    const testing::Matcher<std::string>& errors,
                                    const Preparation& preparation)
{
    const auto before = stored();
    const auto result = run(words, preparation);
    EXPECT_EQ(result.status, status) << testing::PrintToString(words);
    EXPECT_THAT(result.errors, errors) << testing::PrintToString(words);
    EXPECT_EQ(result.output, "") << testing::PrintToString(words);
    EXPECT_TRUE(stored() == before) << testing::PrintToString(words);
}

std::map<std::string, std::string> CommandLineTest::stored() const
{
    std::map<std::string, std::string> files;
    if (std::filesystem::exists(storeDirectory))
        files = filesIn(storeDirectory);
    std::erase_if(files, [](const auto& file) {
        const auto& [name, contents] = file;
        return name.ends_with("-shm") || name.ends_with(".lock")
            || (name.ends_with("-wal") && contents.empty());
    });
    return files;
}

void CommandLineTest::execute(const std::string& sql) const
{
    SQLite::Database(storeFile(), SQLite::OPEN_READWRITE).exec(sql);
}

void CommandLineTest::recordDay()
{
    const auto trace = directory / "day.jsonl";
    writeFile(trace, R"({"at":1795161600,"start":{"timeZone":"Europe/Berlin"}}
{"at":1795161600,"frontmost":{"bundleIdentifier":"org.example.Editor","displayName":"Editor","windowTitle":"Plan"}}
{"at":1795165200,"frontmost":{"bundleIdentifier":"org.example.Mail","displayName":"Mail"}}
{"at":1795169400,"idleSample":{"idleSeconds":600,"awakeSeconds":10000}}
{"at":1795170600,"idleSample":{"idleSeconds":0,"awakeSeconds":11200}}
{"at":1795170600,"frontmost":{"bundleIdentifier":"org.example.Editor","displayName":"Editor"}}
{"at":1795172400,"stop":{}}
)");
    EXPECT_EQ(done({"replay", trace}), "Replayed: 4 saved, 0 unsaved (persisted).\n");
}

void CommandLineTest::addAccount()
{
    done({"client", "add", "Acme", "--rate", "90"});
    done({"project", "add", "Acme", "Website"});
    done({"rule", "add", "--client", "Acme", "--project", "Website", "--application", "org.example.Editor"});
}

std::string CommandLineTest::workAt(const std::string& time)
{
    std::istringstream lines(done({"day", "show", day}));
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(time + ":00 "))
            return line.substr(line.rfind(' ') + 1);
    }
    throw std::runtime_error("No work starts at " + time);
}

} // namespace stintbook
