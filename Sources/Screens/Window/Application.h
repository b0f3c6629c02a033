#pragma once

#include <QObject>
#include <memory>

#include "App/AppEnvironment.h"
#include "App/DeferredPreferences.h"
#include "App/PreferencesFile.h"
#include "Platform/DesktopThread.h"
#include "Platform/SessionBusInstance.h"
#include "Platform/StoreFileWatch.h"
#include "Screens/StatusItem/StatusItem.h"
#include "Screens/StatusItem/StatusNotifierHosts.h"
#include "Screens/Window/ReviewWindow.h"
#include "Screens/Window/WindowExecutor.h"

namespace stintbook {

/// The desktop application: the environment on the window's thread, its icon while something shows icons, and
/// its window once it is asked for.
class Application : public QObject {
    Q_OBJECT

public:
    explicit Application(Environment variables);
    ~Application() override;
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    AppEnvironment::Launch start() { return m_environment.start(); }
    /// Why the store could not be opened; for people.
    QString openingProblem() const;
    void showWindow();
    /// The window too, where its user wants that.
    void showAsAtLogin();
    void showSettings();
    /// Saves what is left; whether all of it could be.
    bool shutdown();

private:
    void takeActivationToken();
    void environmentChanged();
    void hostsChanged();
    void windowVisibilityChanged();
    ScreenContext context();

    Environment m_variables;
    WindowExecutor m_main;
    PreferencesFile m_preferencesFile;
    DeferredPreferences m_preferences{m_preferencesFile};
    PreferencesCapturePauseStore m_pauses{m_preferencesFile};
    SystemTimeSource m_clock;
    SystemAwakeClock m_awakeClock;
    SessionBusInstance m_otherInstance;
    DesktopThread m_desktop{m_clock, m_awakeClock};
    StoreFileWatch m_storeChanges;
    StatusNotifierHosts m_hosts;
    /// Null before there is an environment for it to show.
    std::unique_ptr<ReviewWindow> m_window;
    AppEnvironment m_environment;
    StoreDesk m_desk;
    StoreDesk m_readings;
    /// Present while something shows icons.
    std::unique_ptr<StatusItem> m_item;
    Listeners::Subscription m_changes;
    Listeners::Subscription m_reviewWanted;
    Listeners::Subscription m_settingsWanted;
};

} // namespace stintbook
