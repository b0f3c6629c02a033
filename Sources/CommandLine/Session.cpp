#include "CommandLine/Session.h"

#include "Base/BuildInformation.h"
#include "Base/ReadersLocale.h"

namespace stintbook {

Session::Session(GlobalOptions options, Environment environment, std::ostream& output, std::ostream& errors)
    : m_options(std::move(options))
    , m_environment(std::move(environment))
    , m_output(output)
    , m_errors(errors)
{
    if (!m_options.storeDirectory.empty())
        m_environment["STINTBOOK_STORE_DIRECTORY"] = m_options.storeDirectory;
    if (!m_options.timeZone.empty() && !CalendarContext::isKnownZone(m_options.timeZone))
        throw WrongUsage{"'" + m_options.timeZone + "' is no time zone that this system knows."};
}

Session::~Session() = default;

std::string Session::variable(const std::string& name) const
{
    const auto found = m_environment.find(name);
    return found == m_environment.end() ? std::string() : found->second;
}

std::string Session::locale(const std::string& category) const
{
    return localeOf(m_environment, category);
}

PreferencesFile Session::preferences() const
{
    return PreferencesFile(PreferencesFile::standardLocation(m_environment, buildKind()));
}

CalendarContext Session::calendar() const
{
    return CalendarContext::inZone(m_options.timeZone).value_or(CalendarContext::system());
}

Instant Session::now() const
{
    return m_clock.now();
}

OpenedStore& Session::store()
{
    if (!m_store)
        m_store = orRefuse(OpenedStore::open(m_environment, StoreRole::guest));
    return *m_store;
}

std::expected<std::unique_ptr<OpenedStore>, StoreOpeningProblem> Session::ownStore() const
{
    return OpenedStore::open(m_environment, StoreRole::owner);
}

void Session::printIdentifier(const UUID& id)
{
    if (isJSON())
        printJSON([&](JsonWriter& json) { json.member("id", id); });
    else
        output() << id.upperCaseText() << '\n';
}

void Session::printEmptyUnlessPrinted()
{
    if (isJSON() && !m_hasPrinted)
        printJSON([](JsonWriter&) { });
}

} // namespace stintbook
