#include "Screens/Window/Application.h"

#include <QGuiApplication>
#include <QLocale>

#include "Base/BuildInformation.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

Application::Application(Environment variables)
    : m_variables(std::move(variables))
    , m_preferencesFile(PreferencesFile::standardLocation(m_variables, buildKind()))
    , m_window(std::make_unique<ReviewWindow>(m_preferences))
    , m_environment({.locale = QLocale().name().toStdString(), .capture = {}, .trace = {}},
                    {.main = m_main,
                     .timers = m_main,
                     .timeSource = m_clock,
                     .calendar = CalendarContext::system,
                     .variables = m_variables,
                     .preferences = m_preferences,
                     .pauses = m_pauses,
                     .otherInstance = m_otherInstance,
                     .desktop = m_desktop,
                     .storeChanges = &m_storeChanges,
                     .icon = &m_hosts,
                     .reviewWindow = m_window.get()})
    , m_desk(m_variables, m_main)
    , m_readings(m_variables, m_main)
{
    // While it lives among the status icons, and while it records, no window is needed.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    m_preferences.follow([this](bool isKept) {
        m_main.post([this, isKept] {
            if (auto* const content = m_window->content())
                content->settings().setChoicesKept(isKept);
        });
    });
    m_changes = m_environment.follow([this] { environmentChanged(); });
    m_reviewWanted = m_environment.followActivation(ApplicationWindow::review, [this] {
        takeActivationToken();
        showWindow();
    });
    m_settingsWanted = m_environment.followActivation(ApplicationWindow::settings, [this] {
        takeActivationToken();
        showSettings();
    });
    connect(&m_hosts, &StatusNotifierHosts::changed, this, &Application::hostsChanged);
    connect(m_window.get(), &ReviewWindow::visibilityChanged, this, &Application::windowVisibilityChanged);
    for (const auto signal : {&QGuiApplication::screenAdded, &QGuiApplication::screenRemoved})
        connect(qGuiApp, signal, this, [this] { m_environment.menuBarIconNotice()->evaluate(); });
}

Application::~Application()
{
    // Its models follow the environment.
    disconnect(m_window.get(), nullptr, this, nullptr);
    m_item.reset();
    m_window->discard();
}

QString Application::openingProblem() const
{
    const auto& problem = m_environment.openingProblem();
    return problem ? text(message(*problem)) : QString();
}

ScreenContext Application::context()
{
    return {.environment = m_environment,
            .desk = m_desk,
            .readings = m_readings,
            .clock = m_clock,
            .calendar = CalendarContext::system,
            .main = m_main,
            .variables = m_variables};
}

void Application::takeActivationToken()
{
    // Where the toolkit looks for it when a window wants to come forward.
    if (const auto token = m_environment.takeActivationToken(); !token.empty())
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(token));
}

void Application::showWindow()
{
    m_window->open(context());
}

void Application::showAsAtLogin()
{
    if (m_environment.preferences().opensWindowAtLogin())
        showWindow();
}

void Application::showSettings()
{
    showWindow();
    m_window->content()->shell().setSettingsOpen(true);
}

void Application::environmentChanged()
{
    if (m_item)
        m_item->environmentChanged();
    if (auto* const content = m_window->content())
        content->environmentChanged();
    // Started without its window and without an icon, it could not say what keeps it from recording.
    const bool needsItsUser = m_environment.storeProblem() || m_environment.captureProblem();
    if (needsItsUser && !m_item && m_window->content() == nullptr)
        showWindow();
}

void Application::hostsChanged()
{
    if (!m_hosts.isPresent()) {
        m_item.reset();
    } else if (!m_item) {
        m_item = std::make_unique<StatusItem>(m_environment, CalendarContext::system);
        connect(m_item.get(), &StatusItem::reviewWanted, this, &Application::showWindow);
        connect(m_item.get(), &StatusItem::settingsWanted, this, &Application::showSettings);
        connect(m_item.get(), &StatusItem::quitWanted, qGuiApp, &QCoreApplication::quit);
    }
    m_environment.menuBarIconNotice()->evaluate();
}

void Application::windowVisibilityChanged()
{
    m_environment.menuBarIconNotice()->evaluate();
    // Without an icon and a recording there is nothing that its user could come back to.
    if (!m_window->isOpen() && !m_item && !m_environment.mayCapture())
        QCoreApplication::quit();
}

bool Application::shutdown()
{
    const auto result = m_environment.shutdown();
    const auto* outcome = std::get_if<CaptureShutdownOutcome>(&result);
    return outcome != nullptr && outcome->kind != CaptureShutdownOutcome::Kind::incomplete;
}

} // namespace stintbook
