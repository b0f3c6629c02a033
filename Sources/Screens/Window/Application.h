#pragma once

#include <QQmlApplicationEngine>
#include <memory>
#include <string>

#include "App/AppEnvironment.h"
#include "App/PreferencesFile.h"
#include "Platform/DesktopThread.h"
#include "Platform/SessionBusInstance.h"
#include "Platform/StoreFileWatch.h"
#include "Screens/Window/WindowContent.h"
#include "Screens/Window/WindowExecutor.h"

namespace stintbook {

/// The desktop application: the environment on the window's thread, and the window once it is asked for.
class Application {
public:
    explicit Application(Environment variables);

    /// Whether there is anything to run for; otherwise another copy was asked to come forward.
    bool start();
    /// Shows the window, which is made the first time.
    void showWindow();
    /// Saves what is left; whether all of it could be.
    bool shutdown();

private:
    Environment m_variables;
    WindowExecutor m_main;
    PreferencesFile m_preferences;
    PreferencesCapturePauseStore m_pauses{m_preferences};
    SystemTimeSource m_clock;
    SystemAwakeClock m_awakeClock;
    SessionBusInstance m_otherInstance;
    DesktopThread m_desktop{m_clock, m_awakeClock};
    StoreFileWatch m_storeChanges;
    AppEnvironment m_environment;
    StoreDesk m_desk;
    // Made when the window first opens; the window goes before its models.
    std::unique_ptr<WindowContent> m_content;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    Listeners::Subscription m_changes;
    Listeners::Subscription m_activation;
};

} // namespace stintbook
