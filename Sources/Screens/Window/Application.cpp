#include "Screens/Window/Application.h"

#include <QGuiApplication>
#include <QLocale>
#include <QQuickWindow>

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
{
    m_changes = m_environment.follow([this] {
        if (m_content)
            m_content->environmentChanged();
    });
    m_activation = m_environment.followActivation([this] { showWindow(); });
}

bool Application::start()
{
    return m_environment.start() == AppEnvironment::Launch::going;
}

void Application::showWindow()
{
    if (!m_engine) {
        m_content = std::make_unique<WindowContent>(ScreenContext{.environment = m_environment,
                                                                  .desk = m_desk,
                                                                  .clock = m_clock,
                                                                  .calendar = CalendarContext::system});
        m_engine = std::make_unique<QQmlApplicationEngine>();
        m_engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
        m_engine->addImageProvider(QStringLiteral("glyphs"), new GlyphProvider);
        m_engine->setInitialProperties(m_content->properties());
        m_engine->load(QUrl(QStringLiteral("qrc:/qt/qml/Velloran/Window/MainWindow.qml")));
    }
    if (m_engine->rootObjects().isEmpty())
        return;
    auto* const window = qobject_cast<QQuickWindow*>(m_engine->rootObjects().constFirst());
    window->show();
    window->raise();
    window->requestActivate();
}

bool Application::shutdown()
{
    const auto result = m_environment.shutdown();
    const auto* outcome = std::get_if<CaptureShutdownOutcome>(&result);
    return outcome != nullptr && outcome->kind != CaptureShutdownOutcome::Kind::incomplete;
}

} // namespace stintbook
