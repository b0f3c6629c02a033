#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "CommandLine/Session.h"

// NOLINTNEXTLINE(readability-identifier-naming): the parser's own name
namespace CLI {
class App;
}

namespace stintbook {

/// One command with its arguments. The references that it gives are filled when the command runs.
class Verb {
public:
    /// Does the command's work; a refusal is thrown.
    using Work = std::function<void(Session&)>;

    const std::string& argument(const std::string& name, const std::string& description);
    /// One or more.
    const std::vector<std::string>& arguments(const std::string& name, const std::string& description);
    const std::string& requiredOption(const std::string& name, const std::string& value,
                                      const std::string& description);
    const std::optional<std::string>& option(const std::string& name, const std::string& value,
                                             const std::string& description);
    /// One of the given words.
    const std::string& argument(const std::string& name, const std::string& description,
                                const std::vector<std::string>& choices);
    /// An option whose value is one of the given words.
    const std::optional<std::string>& choice(const std::string& name, const std::vector<std::string>& choices,
                                             const std::string& description);
    const bool& flag(const std::string& name, const std::string& description);
    /// Not listed in help: for tests and for measuring.
    const std::optional<std::string>& hiddenOption(const std::string& name, const std::string& value);

    void runs(Work work);

private:
    friend class CommandTree;
    friend class Noun;
    struct Storage;
    Verb(CLI::App& app, Storage& storage)
        : m_app(&app)
        , m_storage(&storage)
    {
    }

    CLI::App* m_app;
    Storage* m_storage;
};

/// A word that groups commands: "client", "day".
class Noun {
public:
    Verb verb(const std::string& name, const std::string& description);

private:
    friend class CommandTree;
    Noun(CLI::App& app, Verb::Storage& storage)
        : m_app(&app)
        , m_storage(&storage)
    {
    }

    CLI::App* m_app;
    Verb::Storage* m_storage;
};

/// All commands, and how a command line becomes one of them.
class CommandTree {
public:
    CommandTree();
    ~CommandTree();

    Noun noun(const std::string& name, const std::string& description);
    /// A command without a noun.
    Verb verb(const std::string& name, const std::string& description);

    /// Parses and runs. The exit status: 0 done, 1 refused, 2 wrong usage.
    int run(int argumentCount, const char* const* arguments, const Environment& environment,
            std::ostream& output, std::ostream& errors);

private:
    int runCommand(int argumentCount, const char* const* arguments, const Environment& environment,
                   std::ostream& output, std::ostream& errors);

    std::unique_ptr<CLI::App> m_app;
    std::unique_ptr<Verb::Storage> m_storage;
};

// Each adds the commands of one chapter of the manual.
void addRecordingCommands(CommandTree& tree);
void addDayCommands(CommandTree& tree);
void addWorkCommands(CommandTree& tree);
void addClientCommands(CommandTree& tree);
void addProjectCommands(CommandTree& tree);
void addRuleCommands(CommandTree& tree);
void addBillingCommands(CommandTree& tree);
void addExportCommands(CommandTree& tree);
void addDataCommands(CommandTree& tree);
void addPreferenceCommands(CommandTree& tree);
void addStoreCommands(CommandTree& tree);

/// Copies of the data, out of the store and into one.
void addDataCopyCommands(Noun& noun);
/// Deleting what was recorded, and for how long it is kept.
void addHistoryCommands(Noun& noun);

} // namespace stintbook
