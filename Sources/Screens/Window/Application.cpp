#include "Screens/Window/Application.h"

#include <QGuiApplication>
#include <QLocale>
#include <QQuickWindow>

#include "App/MenuBarState.h"
#include "Base/BuildInformation.h"
#include "Screens/Window/GlyphProvider.h"

namespace stintbook {

Application::Application(Environment variables)
    : m_variables(std::move(variables))
    , m_preferences(PreferencesFile::standardLocation(m_variables, buildKind()))
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
                     .storeChanges = &m_storeChanges})
    , m_desk(m_variables, m_main)
    , m_review({.desk = m_desk, .clock = m_clock, .calendar = CalendarContext::system})
{
    m_changes = m_environment.follow([this] { environmentChanged(); });
    m_activation = m_environment.followActivation([this] { showWindow(); });
}

bool Application::start()
{
    return m_environment.start() == AppEnvironment::Launch::going;
}

void Application::showWindow()
{
    if (!m_engine) {
        m_engine = std::make_unique<QQmlApplicationEngine>();
        m_engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
        m_engine->addImageProvider(QStringLiteral("glyphs"), new GlyphProvider);
        m_engine->setInitialProperties(
            {{"review", QVariant::fromValue(&m_review)}, {"captureText", QString()}, {"isRecording", false}});
        m_engine->load(QUrl(QStringLiteral("qrc:/qt/qml/Velloran/Window/MainWindow.qml")));
        m_review.openToday();
        environmentChanged();
    }
    if (m_engine->rootObjects().isEmpty())
        return;
    auto* const window = qobject_cast<QQuickWindow*>(m_engine->rootObjects().constFirst());
    window->show();
    window->raise();
    window->requestActivate();
}

void Application::environmentChanged()
{
    if (!m_engine || m_engine->rootObjects().isEmpty())
        return;
    auto* const window = m_engine->rootObjects().constFirst();
    const auto& status = m_environment.captureStatus();
    const auto words = status.runtime.isActive()
        ? QObject::tr("Recording")
        : QString::fromStdString(
              menubar::statusLine(status, CalendarContext::system(), QLocale().name().toStdString()));
    window->setProperty(
        "captureText",
        m_environment.captureProblem() ? QString::fromStdString(*m_environment.captureProblem()) : words);
    window->setProperty("isRecording", status.runtime.isActive());
    if (m_environment.store() != nullptr
        && std::exchange(m_shownRevision, m_environment.activityDataRevision())
            != m_environment.activityDataRevision())
        m_review.refresh();
}

bool Application::shutdown()
{
    const auto result = m_environment.shutdown();
    const auto* outcome = std::get_if<CaptureShutdownOutcome>(&result);
    return outcome != nullptr && outcome->kind != CaptureShutdownOutcome::Kind::incomplete;
}

} // namespace stintbook
