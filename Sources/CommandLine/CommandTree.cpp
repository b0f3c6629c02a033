#include "CommandLine/CommandTree.h"

#include <algorithm>
#include <span>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <CLI/Validators.hpp>
#include <fmt/format.h>

#include "Base/BuildInformation.h"
#include "Base/Text.h"

namespace stintbook {

/// Where arguments land. Addresses stay valid as more are added.
struct Verb::Storage {
    std::deque<std::string> texts;
    std::deque<std::optional<std::string>> optionalTexts;
    std::deque<std::vector<std::string>> lists;
    std::deque<bool> flags;
    GlobalOptions options;
    /// The command that was named, and its parser for the usage line.
    Work chosen;
    CLI::App* chosenApp = nullptr;
};

namespace {

CLI::Validator oneOf(const std::vector<std::string>& choices)
{
    return {[choices](const std::string& word) {
                return std::ranges::find(choices, word) != choices.end()
                    ? std::string()
                    : fmt::format("'{}' is none of {}", word, fmt::join(choices, ", "));
            },
            ""};
}

} // namespace

const std::string& Verb::argument(const std::string& name, const std::string& description)
{
    auto& text = m_storage->texts.emplace_back();
    m_app->add_option(name, text, description)->required()->option_text(" ");
    return text;
}

const std::string& Verb::argument(const std::string& name, const std::string& description,
                                  const std::vector<std::string>& choices)
{
    auto& text = m_storage->texts.emplace_back();
    m_app->add_option(name, text, description)
        ->required()
        ->check(oneOf(choices))
        ->option_text(fmt::format("{}", fmt::join(choices, "|")));
    return text;
}

const std::vector<std::string>& Verb::arguments(const std::string& name, const std::string& description)
{
    auto& list = m_storage->lists.emplace_back();
    m_app->add_option(name, list, description)->required()->option_text("...");
    return list;
}

const std::string& Verb::requiredOption(const std::string& name, const std::string& value,
                                        const std::string& description)
{
    auto& text = m_storage->texts.emplace_back();
    m_app->add_option(name, text, description)->required()->type_name(value);
    return text;
}

const std::optional<std::string>& Verb::option(const std::string& name, const std::string& value,
                                               const std::string& description)
{
    auto& text = m_storage->optionalTexts.emplace_back();
    m_app->add_option(name, text, description)->type_name(value);
    return text;
}

const std::optional<std::string>& Verb::choice(const std::string& name,
                                               const std::vector<std::string>& choices,
                                               const std::string& description)
{
    auto& text = m_storage->optionalTexts.emplace_back();
    m_app->add_option(name, text, description)
        ->check(oneOf(choices))
        ->type_name(fmt::format("{}", fmt::join(choices, "|")));
    return text;
}

const bool& Verb::flag(const std::string& name, const std::string& description)
{
    auto& isSet = m_storage->flags.emplace_back(false);
    m_app->add_flag(name, isSet, description);
    return isSet;
}

const std::optional<std::string>& Verb::hiddenOption(const std::string& name, const std::string& value)
{
    auto& text = m_storage->optionalTexts.emplace_back();
    m_app->add_option(name, text)->type_name(value)->group("");
    return text;
}

void Verb::runs(Work work)
{
    m_app->callback([app = m_app, storage = m_storage, work = std::move(work)] {
        storage->chosen = work;
        storage->chosenApp = app;
    });
}

Verb Noun::verb(const std::string& name, const std::string& description)
{
    return {*m_app->add_subcommand(name, description), *m_storage};
}

namespace {

/// The innermost command that a command line named.
const CLI::App& named(const CLI::App& app)
{
    const auto parsed = app.get_subcommands();
    return parsed.empty() ? app : named(*parsed.front());
}

std::string fullName(const CLI::App& app)
{
    return app.get_parent() == nullptr ? app.get_name() : fullName(*app.get_parent()) + " " + app.get_name();
}

/// The help of just this command, whatever the command line named.
std::string helpOf(const CLI::App& app)
{
    return app.get_formatter()->make_help(&app, fullName(app), CLI::AppFormatMode::Normal);
}

} // namespace

CommandTree::CommandTree()
    : m_app(std::make_unique<CLI::App>("Reconstructs a working day, and bills it.", "velloran-cli"))
    , m_storage(std::make_unique<Verb::Storage>())
{
    auto& app = *m_app;
    app.fallthrough();
    app.require_subcommand(1);
    app.set_version_flag("--version", fmt::format("velloran-cli {}", version()), "Print the version");
    app.add_option("--store", m_storage->options.storeDirectory, "The directory of the store")
        ->type_name("DIR")
        ->take_last();
    app.add_option("--time-zone", m_storage->options.timeZone, "The zone that cuts time into days")
        ->type_name("ZONE")
        ->take_last();
    app.add_flag("--json", m_storage->options.isJSON, "Print one JSON document");

    auto& help = *app.add_subcommand("help", "Explain a command");
    auto& noun = m_storage->lists.emplace_back();
    help.add_option("COMMAND", noun, "The command to explain");
    help.callback([&app, &noun, storage = m_storage.get()] {
        storage->chosenApp = &app;
        storage->chosen = [&app, &noun](Session& session) {
            CLI::App* explained = &app;
            for (const auto& word : noun) {
                const auto found = explained->get_subcommands(
                    [&](const CLI::App* command) { return command->check_name(word); });
                if (found.empty())
                    throw WrongUsage{fmt::format("There is no command '{}'.", fmt::join(noun, " "))};
                explained = found.front();
            }
            session.output() << helpOf(*explained);
        };
    });
}

CommandTree::~CommandTree() = default;

Noun CommandTree::noun(const std::string& name, const std::string& description)
{
    auto& app = *m_app->add_subcommand(name, description);
    app.require_subcommand(1);
    return {app, *m_storage};
}

Verb CommandTree::verb(const std::string& name, const std::string& description)
{
    return {*m_app->add_subcommand(name, description), *m_storage};
}

namespace {

bool hasCommands(const CLI::App& app)
{
    return !app.get_subcommands([](const CLI::App*) { return true; }).empty();
}

/// "Usage: velloran-cli day show DAY [OPTIONS]".
std::string usageLine(const CLI::App& app)
{
    std::string line = "Usage: " + fullName(app);
    for (const auto* option : app.get_options()) {
        if (option->get_positional())
            line += " " + option->get_name(true) + (option->get_expected_max() > 1 ? "…" : "");
    }
    for (const auto* option : app.get_options()) {
        if (!option->get_positional() && option->get_required())
            line += " " + option->get_name() + " " + option->get_type_name();
    }
    if (hasCommands(app))
        line += " COMMAND";
    return line + " [OPTION…]";
}

/// What the parser objects to; of an unknown command it would only say that one is required.
std::string objection(const CLI::App& app, const CLI::ParseError& error)
{
    const auto unknown = app.remaining(true);
    return hasCommands(named(app)) && !unknown.empty()
        ? fmt::format("There is no command '{}'.", unknown.front())
        : error.what();
}

/// The words of the command line, last one first, as the parser takes them. It would call the value of
/// "--title=" missing, but an empty word of its own is a value.
std::vector<std::string> parserWords(int argumentCount, const char* const* arguments)
{
    std::vector<std::string> words;
    bool areOptionsOver = false;
    for (const std::string_view word : std::span(arguments, argumentCount).subspan(1)) {
        areOptionsOver = areOptionsOver || word == "--";
        const bool isEmptied = !areOptionsOver && word.starts_with("--") && word.find('=') == word.size() - 1;
        words.emplace_back(isEmptied ? word.substr(0, word.size() - 1) : word);
        if (isEmptied)
            words.emplace_back();
    }
    std::ranges::reverse(words);
    return words;
}

int complain(const CLI::App& app, std::string_view sentence, std::ostream& errors)
{
    errors << sentence << '\n' << usageLine(named(app)) << '\n';
    return 2;
}

} // namespace

int CommandTree::run(int argumentCount, const char* const* arguments, const Environment& environment,
                     std::ostream& output, std::ostream& errors)
{
    const int status = runCommand(argumentCount, arguments, environment, output, errors);
    if (status != 0 || output.flush())
        return status;
    errors << "Standard output did not take the answer.\n";
    return 1;
}

int CommandTree::runCommand(int argumentCount, const char* const* arguments, const Environment& environment,
                            std::ostream& output, std::ostream& errors)
{
    // What is stored is text, and what is not would come out of an export as something else.
    if (!std::all_of(arguments, arguments + argumentCount, isValidUTF8)) {
        errors << "An argument is no UTF-8 text.\n" << usageLine(*m_app) << '\n';
        return 2;
    }
    try {
        m_app->parse(parserWords(argumentCount, arguments));
    } catch (const CLI::CallForHelp&) {
        output << helpOf(named(*m_app));
        return 0;
    } catch (const CLI::CallForVersion& versionCall) {
        output << versionCall.what() << '\n';
        return 0;
    } catch (const CLI::ParseError& error) {
        return complain(*m_app, objection(*m_app, error), errors);
    }

    try {
        Session session(m_storage->options, environment, output, errors);
        m_storage->chosen(session);
        session.printEmptyUnlessPrinted();
        return 0;
    } catch (const Refusal& refusal) {
        errors << refusal.sentence << '\n';
        return 1;
    } catch (const WrongUsage& wrong) {
        return complain(*m_app, wrong.sentence, errors);
    }
}

} // namespace stintbook
