#pragma once

#include <expected>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "App/OpenedStore.h"
#include "App/PreferencesFile.h"
#include "Base/Json.h"
#include "Base/TimeSource.h"
#include "Domain/CalendarContext.h"

namespace stintbook {

/// Ends a command: exit status 1 and a sentence on stderr. Thrown and caught inside this folder only.
struct Refusal {
    std::string sentence;
};

/// Ends a command: exit status 2, a sentence and the command's usage on stderr.
struct WrongUsage {
    std::string sentence;
};

/// The value, or the end of the command with the error's sentence.
template <typename T, typename E> T orRefuse(std::expected<T, E> result)
{
    if (!result)
        throw Refusal{message(result.error())};
    if constexpr (!std::is_void_v<T>)
        return *std::move(result);
}

/// Options that every command takes.
struct GlobalOptions {
    std::string storeDirectory;
    std::string timeZone;
    bool isJSON = false;
};

/// What a command runs in: the store, the calendar, where results go.
class Session {
public:
    Session(GlobalOptions options, Environment environment, std::ostream& output, std::ostream& errors);
    ~Session();

    bool isJSON() const { return m_options.isJSON; }
    const Environment& environment() const { return m_environment; }
    /// The environment's value; empty when it has none.
    std::string variable(const std::string& name) const;
    /// The reader's locale for a category such as "LC_TIME", as "de_DE".
    std::string locale(const std::string& category) const;

    /// The user's choices as their file has them now.
    PreferencesFile preferences() const;
    CalendarContext calendar() const;
    Instant now() const;

    /// Opens the store beside its owner, once.
    OpenedStore& store();
    /// Opens the store as its owner; a refusal when another process holds it.
    std::expected<std::unique_ptr<OpenedStore>, StoreOpeningProblem> ownStore() const;

    std::ostream& output()
    {
        m_hasPrinted = true;
        return m_output;
    }
    std::ostream& errors() { return m_errors; }
    /// One JSON document on stdout.
    template <typename Fill> void printJSON(Fill fill)
    {
        std::string text;
        {
            JsonWriter json(text);
            json.object([&] { fill(json); });
        }
        output() << text << '\n';
    }
    /// {"id": …}, or the bare identifier for people.
    void printIdentifier(const UUID& id);
    /// With --json, an empty document for a command that had nothing to say.
    void printEmptyUnlessPrinted();

private:
    GlobalOptions m_options;
    Environment m_environment;
    std::ostream& m_output;
    std::ostream& m_errors;
    bool m_hasPrinted = false;
    SystemTimeSource m_clock;
    std::unique_ptr<OpenedStore> m_store;
};

} // namespace stintbook
