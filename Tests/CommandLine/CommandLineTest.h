#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <rapidjson/document.h>
#include <sys/types.h>

#include "Support/TemporaryDirectory.h"

namespace stintbook {

/// velloran-cli as its users start it: a process of its own, with a home, preferences and a store that are the
/// test's, without a desktop or a bus, in Berlin, in the C locale.
class CommandLineTest : public testing::Test {
protected:
    using Words = std::vector<std::string>;
    /// What the child does to itself before it becomes the program.
    using Preparation = std::function<void()>;

    struct Result {
        /// Of the exit, or minus the signal's number.
        int status = 0;
        std::string output;
        std::string errors;
    };
    struct Process {
        pid_t id = 0;
        std::string outputFile;
        std::string errorFile;
    };

    CommandLineTest();

    Process start(const Words& words, const Preparation& preparation = {});
    static Result finish(const Process& process);
    Result run(const Words& words, const Preparation& preparation = {})
    {
        return finish(start(words, preparation));
    }

    /// Runs what has to succeed without a word on stderr, and gives what it printed.
    std::string done(const Words& words);
    /// The same with --json, of which one document and nothing else must come.
    rapidjson::Document json(Words words);
    /// The identifier that a command printed.
    std::string added(const Words& words);

    /// Exit status 1, this sentence alone on stderr, nothing on stdout, and the store as it was.
    void expectRefusal(const Words& words, const std::string& sentence, const Preparation& preparation = {});
    /// Exit status 2, a sentence and a usage line on stderr, nothing on stdout, and the store as it was.
    void expectWrongUsage(const Words& words, const std::string& sentence);

    std::filesystem::path storeFile() const { return storeDirectory / "Velloran.store"; }
    /// Every byte that the store's files hold, apart from what processes agree on beside it.
    std::map<std::string, std::string> stored() const;
    /// Changes the store behind the program's back.
    void execute(const std::string& sql) const;

    /// Replays 20 November 2026: Editor 9 to 10, Mail 10 to 11, idle to 11:30, Editor to 12.
    void recordDay();
    /// Client Acme with project Website, and the rule that Editor is for it.
    void addAccount();
    /// The identifier of the block or item that starts at this time of `day`, as "09:00".
    std::string workAt(const std::string& time);

    inline static const std::string day = "2026-11-20@Europe/Berlin";

    TemporaryDirectory directory;
    std::filesystem::path storeDirectory = directory / "store";
    std::map<std::string, std::string> environment;

private:
    void expectNothing(const Words& words, int status, const testing::Matcher<std::string>& errors,
                       const Preparation& preparation = {});

    int m_runs = 0;
};

} // namespace stintbook
