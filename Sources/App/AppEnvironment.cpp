#include "App/AppEnvironment.h"

#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "Base/Log.h"
#include "Billing/BillingCurrency.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {

AppEnvironment::AppEnvironment(Configuration configuration, Collaborators collaborators)
    : m_configuration(std::move(configuration))
    , m_collaborators(std::move(collaborators))
    , m_preferences(m_collaborators.preferences)
    , m_opener(openingAttempt(), m_collaborators.main, m_collaborators.timers, m_collaborators.background)
    , m_dataRevision(m_collaborators.main, m_collaborators.timers, [this] { m_listeners.tell(); })
    , m_preferencesChange(m_preferences.follow([this] {
        if (m_capture)
            m_capture->observe(observedContext());
        m_listeners.tell();
    }))
{
    if (m_collaborators.icon != nullptr && m_collaborators.reviewWindow != nullptr)
        m_menuBarIconNotice.emplace(
            MenuBarIconNotice::Collaborators{.locator = *m_collaborators.icon,
                                             .reviewWindow = *m_collaborators.reviewWindow,
                                             .clock = m_collaborators.timeSource,
                                             .wake = m_collaborators.timers});
}

AppEnvironment::~AppEnvironment() = default;

/// Runs elsewhere, so it touches nothing of this.
StoreOpener::Attempt AppEnvironment::openingAttempt()
{
    return [claim = m_claim, variables = m_collaborators.variables]() -> StoreOpener::Result {
        if (!*claim) {
            auto taken = StoreClaim::take(variables);
            if (!taken)
                return std::unexpected(std::move(taken).error());
            *claim = *std::move(taken);
        }
        return OpenedStore::open(**claim);
    };
}

AppEnvironment::Launch AppEnvironment::start()
{
    if (m_configuration.usesInMemoryStore) {
        storeOpened(OpenedStore::inMemory());
        return Launch::going;
    }
    auto claim = StoreClaim::take(m_collaborators.variables);
    if (!claim && std::holds_alternative<StoreHeld>(claim.error())) {
        log::event("A second launch found the store already held and handed over to it");
        const auto token = m_collaborators.variables.find("XDG_ACTIVATION_TOKEN");
        const auto asked = m_collaborators.otherInstance.activate(
            token == m_collaborators.variables.end() ? std::string() : token->second);
        m_openingProblem = std::move(claim).error();
        return asked ? Launch::handedOver : Launch::refused;
    }
    if (m_configuration.captureEnabled)
        beginSession();
    if (!claim) {
        storeUnavailable(claim.error());
        return Launch::going;
    }
    *m_claim = *std::move(claim);
    m_opener.open([this](StoreOpener::Result result, int) {
        if (result)
            storeOpened(*std::move(result));
        else
            storeUnavailable(result.error());
    });
    return Launch::going;
}

void AppEnvironment::storeUnavailable(const StoreOpeningProblem& problem)
{
    log::error("Local store unavailable: {}", message(problem));
    m_openingProblem = problem;
    m_storeProblem = "The local activity store could not be opened.";
    m_listeners.tell();
}

void AppEnvironment::retryStore()
{
    if (m_isRetryingStore || !m_storeProblem)
        return;
    m_isRetryingStore = true;
    m_listeners.tell();
    m_opener.retry([this](StoreOpener::Result result, int attemptCount) {
        retryEnded(std::move(result), attemptCount);
    });
}

void AppEnvironment::retryEnded(StoreOpener::Result result, int attemptCount)
{
    m_isRetryingStore = false;
    if (result) {
        log::event("Local store opened on retry {}", attemptCount);
        return storeOpened(*std::move(result));
    }
    log::error("Local store retry exhausted: {}", message(result.error()));
    m_openingProblem = std::move(result).error();
    m_storeRetryMessage = fmt::format("Tried {} times. Nothing was deleted or reset.", attemptCount);
    m_listeners.tell();
}

void AppEnvironment::storeOpened(std::unique_ptr<OpenedStore> store)
{
    m_store = std::move(store);
    m_openingProblem.reset();
    m_storeProblem.reset();
    m_storeRetryMessage.reset();
    if (m_capture)
        m_capture->record(*m_store, observedContext(), captureFollowers(),
                          [this](std::optional<std::string> problem) { captureDecided(std::move(problem)); });
    else
        captureDecided(std::nullopt);
}

void AppEnvironment::beginSession()
{
    RunningCopy::Activation activation;
    if (m_collaborators.reviewWindow != nullptr)
        activation = [this](ApplicationWindow window, const std::string& token) {
            m_activationToken = token;
            m_activationListeners[window].tell();
        };
    m_capture = std::make_unique<CaptureSession>(
        CaptureSession::Collaborators{.desktop = m_collaborators.desktop,
                                      .pauses = m_collaborators.pauses,
                                      .timeSource = m_collaborators.timeSource,
                                      .main = m_collaborators.main,
                                      .configuration = m_configuration.capture,
                                      .trace = m_configuration.trace},
        std::move(activation));
}

Recorder::Followers AppEnvironment::captureFollowers()
{
    return {.status =
                [this](const CaptureStatus& status) {
                    m_captureStatus = status;
                    m_listeners.tell();
                },
            .deletion = [this] { m_dataRevision.raise(); },
            .calendar =
                [this] {
                    if (m_midnights)
                        m_midnights->calendarChanged();
                    // Every day begins and ends elsewhere.
                    m_dataRevision.raise();
                }};
}

void AppEnvironment::captureDecided(std::optional<std::string> problem)
{
    m_isCapturing = m_capture && !problem;
    m_captureProblem = std::move(problem);
    if (!m_isCapturing)
        m_deletion = std::make_unique<ActivityDeletionCoordinator>(
            ActivityDeletionCoordinator::Collaborators{.store = m_store->sharedDatabase(),
                                                       .writer = nullptr,
                                                       .work = m_collaborators.background,
                                                       .home = m_collaborators.main,
                                                       .calendar = m_collaborators.calendar,
                                                       .deleted = [this] { m_dataRevision.raise(); }});
    startBillingInitialization();
    startCleanup();
    if (m_collaborators.storeChanges != nullptr && !m_configuration.usesInMemoryStore)
        m_dataRevision.follow(*m_store, m_collaborators.background, *m_collaborators.storeChanges);
    m_listeners.tell();
}

void AppEnvironment::startBillingInitialization()
{
    const auto currency = BillingCurrency::ofLocale(m_configuration.locale);
    if (!currency)
        return;
    const Confined<PersistentReviewStore> review(m_collaborators.background, m_store->sharedReview());
    std::ignore = review.ask([currency](PersistentReviewStore& store) {
        if (const auto saved = store.suggestCurrency(*currency); !saved)
            log::error("Billing currency initialisation failed: {}", message(saved.error()));
    });
}

void AppEnvironment::startCleanup()
{
    m_cleanup = std::make_unique<HistoryCleanup>(HistoryCleanup::Collaborators{
        .preferences = m_preferences,
        .stored = {m_collaborators.background, {std::shared_ptr<void>(), &m_collaborators.preferences}},
        .home = m_collaborators.main,
        .deletion = *deletion(),
        .calendar = m_collaborators.calendar,
        .timeSource = m_collaborators.timeSource});
    m_cleanup->clean();
    m_midnights.emplace(Midnights::Collaborators{.calendar = m_collaborators.calendar,
                                                 .timeSource = m_collaborators.timeSource,
                                                 .timers = m_collaborators.timers},
                        [this] {
                            m_cleanup->clean();
                            // Today is another day, and so is this month perhaps.
                            m_dataRevision.raise();
                        });
}

ShutdownResult AppEnvironment::shutdown()
{
    m_midnights.reset();
    m_cleanup.reset();
    m_preferencesChange = {};
    if (!m_capture)
        return CaptureShutdownOutcome{CaptureShutdownOutcome::Kind::notRunning};
    return m_capture->shutdown();
}

BrowserContextState AppEnvironment::browserContextState() const
{
    if (!m_preferences.browserContextEnabled())
        return BrowserContextState::off;
    return isCapturing() ? stintbook::browserContextState(permissionState())
                         : BrowserContextState::unavailable;
}

void AppEnvironment::resolveBrowserContext()
{
    if (!m_isCapturing || std::exchange(m_isResolvingBrowserContext, true))
        return;
    m_capture->requestAccessibility([this] {
        m_isResolvingBrowserContext = false;
        m_listeners.tell();
    });
    m_listeners.tell();
}

void AppEnvironment::setHasPresentedOnboarding()
{
    m_hasPresentedOnboarding = true;
    m_listeners.tell();
}

ObservedContext AppEnvironment::observedContext() const
{
    return {m_preferences.retainsTitleContext(), m_preferences.browserContextEnabled()};
}

void AppEnvironment::pause(TimedPauseOption option)
{
    if (m_capture)
        m_capture->pause(
            requestedPause(option, m_collaborators.timeSource.now(), m_collaborators.calendar()));
}

void AppEnvironment::resume()
{
    if (m_capture)
        m_capture->resume();
}

void AppEnvironment::deleteActivity(const ActivityDataScope& scope, ActivityDeleting::Reply reply,
                                    DeletionProgress progress)
{
    auto* const deleting = deletion();
    if (deleting == nullptr)
        return reply(std::unexpected(ActivityDeletionUnavailable{}));
    deleting->deleteActivity(scope, std::move(reply), std::move(progress));
}

void AppEnvironment::changeRetention(const RetentionChangeRequest& request,
                                     std::move_only_function<void(HistoryOutcome)> reply,
                                     DeletionProgress progress)
{
    if (!request.scope)
        return reply(keep(m_preferences, request.window, {}));
    deleteActivity(
        *request.scope,
        [this, window = request.window, reply = std::move(reply)](ActivityDeleting::Outcome outcome) mutable {
            if (outcome)
                reply(keep(m_preferences, window, *outcome));
            else
                reply(std::unexpected(HistoryKept{message(outcome.error())}));
        },
        std::move(progress));
}

void AppEnvironment::saveWhatIsRecorded(InstanceRequestHandling::Reply<void> reply)
{
    if (m_isCapturing)
        m_capture->flush(std::move(reply));
    else
        reply({});
}

ActivityDeleting* AppEnvironment::deletion()
{
    if (m_isCapturing)
        return m_capture.get();
    return m_deletion.get();
}

} // namespace stintbook
