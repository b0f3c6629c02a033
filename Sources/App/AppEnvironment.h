#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "App/AppPreferences.h"
#include "App/CaptureSession.h"
#include "App/DataRevision.h"
#include "App/HistoryCleanup.h"
#include "App/HistoryRetention.h"
#include "App/Listeners.h"
#include "App/MenuBarIconNotice.h"
#include "App/Midnights.h"
#include "App/StoreOpener.h"
#include "Capture/BrowserContextState.h"

namespace stintbook {

/// What the application is made of, and the order in which it comes to life and ends: the store with its lock,
/// capture, and what goes on in the background. Front ends look at it and are told when it changes.
///
/// Confined to the main executor, on which its timers run. The store is opened elsewhere, so that no window waits
/// for it; capture lives on the desktop's thread. No failure of the store is fatal: there is then no store, no
/// capture, and a sentence.
class AppEnvironment {
public:
    struct Configuration {
        bool captureEnabled = true;
        /// No file and no lock. Capture stays off: what it has to keep beside the store would have no place.
        bool usesInMemoryStore = false;
        /// "de_DE"; whose currency a new ledger gets.
        std::string locale;
        CaptureConfiguration capture;
        /// Where everything that capture is told is written to as well.
        std::optional<std::filesystem::path> trace;
    };

    /// All outlive the environment.
    struct Collaborators {
        Executor& main;
        Timers& timers;
        TimeSource& timeSource;
        /// The time zone that is in force.
        std::function<CalendarContext()> calendar;
        /// The process's variables, which say where the store lies.
        Environment variables;
        PreferenceStoring& preferences;
        CapturePauseStoring& pauses;
        /// Where a second launch finds the first.
        RunningInstance& otherInstance;
        ObservedDesktop& desktop;
        /// Null where nobody looks at stored data, as in a recorder without screens.
        StoreChangeWatching* storeChanges = nullptr;
        /// Present where there are screens, on which the icon's absence can be noticed.
        const MenuBarIconLocating* icon = nullptr;
        const ReviewWindowSourcing* reviewWindow = nullptr;
        /// For the store's slower work.
        std::shared_ptr<Executor> background = std::make_shared<SerialExecutor>("background");
    };

    AppEnvironment(Configuration configuration, Collaborators collaborators);
    ~AppEnvironment();
    AppEnvironment(const AppEnvironment&) = delete;
    AppEnvironment& operator=(const AppEnvironment&) = delete;

    enum class Launch {
        going,
        /// Another copy holds the store and comes forward: this process ends, with what its front end makes of
        /// that. `openingProblem` names the other one.
        handedOver,
        /// The same, but the other copy has no window or does not answer.
        refused,
    };
    /// Takes the lock and begins to open the store. Once.
    Launch start();
    /// Tries again, as its user wished; nothing while it is being tried.
    void retryStore();
    /// Saves what is left of the recorded evidence, within three seconds, and logs what came of it; also says
    /// `notRunning`. Once, and last.
    ShutdownResult shutdown();

    /// Null while the store is not open.
    OpenedStore* store() const { return m_store.get(); }
    /// For people, when it could not be opened;
    const std::optional<std::string>& storeProblem() const { return m_storeProblem; }
    /// and exactly.
    const std::optional<StoreOpeningProblem>& openingProblem() const { return m_openingProblem; }
    bool isRetryingStore() const { return m_isRetryingStore; }
    const std::optional<std::string>& storeRetryMessage() const { return m_storeRetryMessage; }

    bool isCapturing() const { return m_isCapturing; }
    /// Records, or has yet to be told whether it can.
    bool mayCapture() const { return m_capture && !m_captureProblem && !m_storeProblem; }
    /// Why nothing is recorded though the store is open and recording is wanted.
    const std::optional<std::string>& captureProblem() const { return m_captureProblem; }
    const CaptureStatus& captureStatus() const { return m_captureStatus; }
    CapturePermissionState permissionState() const { return m_captureStatus.permission; }
    BrowserContextState browserContextState() const;
    bool isResolvingBrowserContext() const { return m_isResolvingBrowserContext; }
    /// Asks the system for what reading browsers needs.
    void resolveBrowserContext();

    AppPreferences& preferences() { return m_preferences; }
    bool hasPresentedOnboarding() const { return m_hasPresentedOnboarding; }
    void setHasPresentedOnboarding();
    std::int64_t activityDataRevision() const { return m_dataRevision.value(); }

    /// Absent without screens.
    std::optional<MenuBarIconNotice>& menuBarIconNotice() { return m_menuBarIconNotice; }

    void pause(TimedPauseOption option);
    void resume();
    /// With the writer's barrier where this process records.
    void deleteActivity(const ActivityDataScope& scope, ActivityDeleting::Reply reply,
                        DeletionProgress progress = {});

    /// Deletes what the change removes, then stores its window.
    void changeRetention(const RetentionChangeRequest& request,
                         std::move_only_function<void(HistoryOutcome)> reply, DeletionProgress progress = {});
    /// Saves everything that was recorded so far; the error is a sentence.
    void saveWhatIsRecorded(InstanceRequestHandling::Reply<void> reply);

    /// Told after each change of what can be read above.
    [[nodiscard]] Listeners::Subscription follow(std::function<void()> listener)
    {
        return m_listeners.add(std::move(listener));
    }
    /// What the last launch that asked this copy to come forward brought of the desktop's leave to do so; once.
    std::string takeActivationToken() { return std::exchange(m_activationToken, {}); }
    /// Told when another launch, or the desktop, asks for the window.
    [[nodiscard]] Listeners::Subscription followActivation(ApplicationWindow window,
                                                           std::function<void()> listener)
    {
        return m_activationListeners[window].add(std::move(listener));
    }

private:
    StoreOpener::Attempt openingAttempt();
    void storeOpened(std::unique_ptr<OpenedStore> store);
    void storeUnavailable(const StoreOpeningProblem& problem);
    void retryEnded(StoreOpener::Result result, int attemptCount);
    void beginSession();
    void captureDecided(std::optional<std::string> problem);
    Recorder::Followers captureFollowers();
    void startBillingInitialization();
    void startCleanup();
    ObservedContext observedContext() const;
    /// Null while it is not known whether this process records.
    ActivityDeleting* deletion();

    Configuration m_configuration;
    Collaborators m_collaborators;
    AppPreferences m_preferences;
    Listeners m_listeners;
    std::map<ApplicationWindow, Listeners> m_activationListeners;
    std::string m_activationToken;

    /// Shared with the opening that is under way.
    std::shared_ptr<std::optional<StoreClaim>> m_claim = std::make_shared<std::optional<StoreClaim>>();
    StoreOpener m_opener;
    std::optional<StoreOpeningProblem> m_openingProblem;
    std::optional<std::string> m_storeProblem;
    bool m_isRetryingStore = false;
    std::optional<std::string> m_storeRetryMessage;

    bool m_isCapturing = false;
    std::optional<std::string> m_captureProblem;
    CaptureStatus m_captureStatus;
    bool m_isResolvingBrowserContext = false;
    bool m_hasPresentedOnboarding = false;
    DataRevision m_dataRevision;
    std::optional<MenuBarIconNotice> m_menuBarIconNotice;

    // From here on each ends before what stands above it.
    std::unique_ptr<OpenedStore> m_store;
    /// Present from the start on, but where capture is not wanted.
    std::unique_ptr<CaptureSession> m_capture;
    /// Where nothing is recorded.
    std::unique_ptr<ActivityDeletionCoordinator> m_deletion;
    std::unique_ptr<HistoryCleanup> m_cleanup;
    std::optional<Midnights> m_midnights;
    Listeners::Subscription m_preferencesChange;
};

} // namespace stintbook
