#include <chrono>
#include <condition_variable>
#include <deque>
#include <future>
#include <latch>
#include <mutex>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "App/AppEnvironment.h"
#include "App/BillingDesk.h"
#include "Base/VirtualTime.h"
#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/PersistentReviewStore.h"
#include "Support/CaptureProviders.h"
#include "Support/CapturedLog.h"
#include "Support/StoreOfADay.h"

namespace stintbook {

namespace {

using testing::ElementsAre;
using testing::StartsWith;

/// A main executor whose jobs, posted from anywhere, run when the test waits for what they bring about.
class PumpedExecutor final : public Executor {
public:
    void post(Job job) override
    {
        const std::scoped_lock guard(m_lock);
        m_jobs.push_back(std::move(job));
        m_wake.notify_one();
    }

    /// What was posted so far, and what that brings about.
    void drain()
    {
        while (next({})) { }
    }
    /// Also waits for what is under way elsewhere.
    bool runUntil(const std::function<bool()>& isDone)
    {
        while (!isDone()) {
            if (!next(Seconds{10}))
                return false;
        }
        return true;
    }

private:
    bool next(Seconds patience)
    {
        std::unique_lock guard(m_lock);
        if (!m_wake.wait_for(guard, std::chrono::duration<double>(patience.value),
                             [this] { return !m_jobs.empty(); }))
            return false;
        auto job = std::move(m_jobs.front());
        m_jobs.pop_front();
        guard.unlock();
        job();
        return true;
    }

    std::mutex m_lock;
    std::condition_variable m_wake;
    std::deque<Job> m_jobs;
};

/// Nobody else's.
struct NoInstance final : RunningInstance {
    std::expected<std::optional<InstanceStatus>, std::string> status() override { return std::nullopt; }
    std::expected<void, std::string> pause(std::optional<Instant>) override { return {}; }
    std::expected<void, std::string> resume() override { return {}; }
    std::expected<DeletedActivity, std::string> deleteActivity(const ActivityDataScope&,
                                                               const DeletionProgress&) override
    {
        return DeletedActivity{};
    }
    std::expected<void, std::string> flush() override { return {}; }
    std::expected<void, std::string> activate(const std::string&) override { return {}; }
};

/// A scripted desktop on a thread of its own, where time stands still.
class DesktopOnAThread final : public ObservedDesktop, public InstancePublishing, public Executor {
public:
    bool canSeeApplications() override { return isSeen; }
    DesktopProviders providers() override
    {
        return {.frontmost = m_scripted,
                .focusedWindow = {std::shared_ptr<void>(), &m_scripted},
                .browserDomain = {std::shared_ptr<void>(), &m_scripted},
                .boundaries = m_scripted,
                .idle = m_scripted,
                .accessibilityTrust = {std::shared_ptr<void>(), &m_trust},
                .calendar = m_calendar,
                .sources = {"frontmost: scripted"}};
    }
    Executor& executor() override { return *this; }
    Timers& timers() override { return m_time; }
    InstancePublishing& publishing() override { return *this; }
    void setBeforeSleep(std::function<void(std::function<void()> done)>) override { }
    void begin() override { }
    void end() override
    {
        hang();
        m_thread.reset();
    }

    bool publish(InstanceRequestHandling& published) override
    {
        handler = &published;
        return true;
    }
    void announceStatus() override { }

    void post(Job job) override
    {
        const std::scoped_lock guard(m_lock);
        if (!m_isHanging)
            m_thread->post(std::move(job));
    }
    /// What is posted from now on never runs.
    void hang()
    {
        const std::scoped_lock guard(m_lock);
        m_isHanging = true;
    }
    /// Waits for what was posted so far.
    template <typename Work> void perform(Work work)
    {
        std::promise<void> done;
        post([&] {
            work(m_scripted);
            done.set_value();
        });
        done.get_future().wait();
    }

    /// Does the work while nothing happens on the desktop's thread: it reads the same clock.
    template <typename Work> void whileStill(Work work)
    {
        std::latch reached(1), done(1), left(1);
        post([&] {
            reached.count_down();
            done.wait();
            left.count_down();
        });
        reached.wait();
        work();
        done.count_down();
        left.wait();
    }

    void travelTo(const char* zone)
    {
        perform([&](ScriptedDesktop&) { m_calendar.moveTo(zone); });
    }

    bool isSeen = true;
    InstanceRequestHandling* handler = nullptr;

private:
    VirtualTime m_time{Instant{}};
    ScriptedDesktop m_scripted{m_time, m_time};
    ScriptedTrust m_trust;
    ScriptedCalendar m_calendar{"Europe/Berlin"};
    std::mutex m_lock;
    bool m_isHanging = false;
    std::optional<SerialExecutor> m_thread{std::in_place, "capture"};
};

class WrittenStore final : public StoreChangeWatching {
public:
    void watch(const std::filesystem::path& file, std::function<void()> changed) override
    {
        watched = file;
        written = std::move(changed);
    }

    std::filesystem::path watched;
    std::function<void()> written;
};

struct OpenWindow final : ReviewWindowSourcing {
    bool isOpen() const override { return true; }
};

class AppEnvironmentTest : public testing::Test {
protected:
    AppEnvironmentTest() { configuration.captureEnabled = false; }

    AppEnvironment::Launch start()
    {
        environment.emplace(configuration,
                            AppEnvironment::Collaborators{
                                .main = main,
                                .timers = time,
                                .timeSource = time,
                                .calendar = [this] { return stored.calendar; },
                                .variables = {{"STINTBOOK_STORE_DIRECTORY", storeDirectory().string()}},
                                .preferences = preferences,
                                .pauses = pauses,
                                .otherInstance = otherInstance,
                                .desktop = desktop,
                                .storeChanges = &storeChanges,
                                .reviewWindow = &window,
                                .background = std::make_shared<InlineExecutor>()});
        return environment->start();
    }
    /// Runs what is posted until it holds.
    bool comes(const std::function<bool()>& what) { return main.runUntil(what); }
    void startWithStore()
    {
        ASSERT_EQ(start(), AppEnvironment::Launch::going);
        ASSERT_TRUE(comes([&] { return environment->store() != nullptr; })) << log.errors().size();
    }
    std::filesystem::path storeDirectory() const { return stored.directory / "store"; }
    std::size_t segmentCount() const
    {
        return stored.store->segments().segments({Instant{0}, Instant{4e9}})->size();
    }

    CapturedLog log;
    /// A guest beside the environment, with four segments of 20 November.
    StoreOfADay stored;
    PumpedExecutor main;
    VirtualTime time{stored.day.start + Seconds{4 * 86'400 + 9 * 3600}};
    InMemoryPreferences preferences;
    InMemoryCapturePauseStore pauses;
    NoInstance otherInstance;
    DesktopOnAThread desktop;
    WrittenStore storeChanges;
    OpenWindow window;
    AppEnvironment::Configuration configuration;
    std::optional<AppEnvironment> environment;
};

} // namespace

TEST_F(AppEnvironmentTest, TriesTheStoreThreeTimesAndGoesOnWhenItOpens)
{
    const auto file = storeDirectory() / "Velloran.store";
    std::filesystem::rename(file, stored.directory / "aside");
    std::filesystem::create_directory(file);
    EXPECT_EQ(start(), AppEnvironment::Launch::going);
    ASSERT_TRUE(comes([&] { return environment->storeProblem().has_value(); }));
    EXPECT_EQ(environment->storeProblem(), "The local activity store could not be opened.");
    ASSERT_EQ(log.errors().size(), 1U);
    EXPECT_THAT(log.errors()[0], StartsWith("Local store unavailable: "));
    environment->deleteActivity(AllHistory{}, [](const auto& outcome) { EXPECT_FALSE(outcome.has_value()); });

    // It stays this copy's: no other one takes it meanwhile.
    EXPECT_FALSE(StoreClaim::take({{"STINTBOOK_STORE_DIRECTORY", storeDirectory().string()}}));

    int tellings = 0;
    const auto listening = environment->follow([&] { ++tellings; });
    const auto began = time.now();
    environment->retryStore();
    environment->retryStore();
    EXPECT_TRUE(environment->isRetryingStore());
    for (int attempt = 1; attempt < 3; ++attempt) {
        main.drain();
        time.advance(StoreOpener::retryDelay);
    }
    ASSERT_TRUE(comes([&] { return !environment->isRetryingStore(); }));
    EXPECT_EQ(time.now() - began, Seconds{0.5});
    EXPECT_EQ(environment->storeRetryMessage(), "Tried 3 times. Nothing was deleted or reset.");
    EXPECT_THAT(log.errors().back(), StartsWith("Local store retry exhausted: "));
    EXPECT_EQ(tellings, 2);

    std::filesystem::remove(file);
    std::filesystem::rename(stored.directory / "aside", file);
    environment->retryStore();
    ASSERT_TRUE(comes([&] { return environment->store() != nullptr; }));
    EXPECT_FALSE(environment->storeProblem() || environment->storeRetryMessage()
                 || environment->isRetryingStore());
    EXPECT_THAT(log.events(), ElementsAre("Local store opened on retry 1"));
    EXPECT_EQ(environment->shutdown(),
              ShutdownResult(CaptureShutdownOutcome{CaptureShutdownOutcome::Kind::notRunning}));
}

TEST_F(AppEnvironmentTest, ComesForwardAlsoWithoutAStore)
{
    configuration.captureEnabled = true;
    std::filesystem::rename(storeDirectory() / "Velloran.store", stored.directory / "aside");
    std::filesystem::create_directory(storeDirectory() / "Velloran.store");
    start();
    bool isAsked = false;
    const auto listening = environment->followActivation(ApplicationWindow::review, [&] { isAsked = true; });
    desktop.perform([&](ScriptedDesktop&) {
        EXPECT_TRUE(desktop.handler->activate(ApplicationWindow::review, {}));
        EXPECT_EQ(desktop.handler->status().capture.runtime, CaptureRuntimeState::stopped());
        desktop.handler->flush([](const auto& flushed) { EXPECT_FALSE(flushed.has_value()); });
    });
    EXPECT_TRUE(comes([&] { return isAsked && environment->storeProblem(); }));
    EXPECT_EQ(environment->shutdown(),
              ShutdownResult(CaptureShutdownOutcome{CaptureShutdownOutcome::Kind::notRunning}));
}

TEST_F(AppEnvironmentTest, GivesANewLedgerTheCurrencyOfTheLocaleAndLeavesAChosenOne)
{
    configuration.locale = "de_DE";
    const auto currency = [&] { return BillingDesk(*stored.store).settings()->currency; };
    startWithStore();
    EXPECT_EQ(currency(), BillingCurrency::fromText("EUR"));
    ASSERT_TRUE(BillingDesk(*stored.store).setCurrency(std::nullopt));
    environment.reset();
    startWithStore();
    EXPECT_EQ(currency(), std::nullopt);
}

TEST_F(AppEnvironmentTest, CleansUpAtTheStartAndAfterMidnightAndSaysThatDataChanged)
{
    preferences.store("stintbook.privacy.retentionDays", PreferenceValue(std::int64_t{5}));
    preferences.store("stintbook.privacy.automaticCleanup", PreferenceValue(true));
    startWithStore();
    ASSERT_TRUE(comes([&] { return environment->preferences().lastAutomaticCleanup().has_value(); }));
    EXPECT_EQ(segmentCount(), 4U); // 20 November is the fifth day
    const auto revision = environment->activityDataRevision();

    time.advanceTo(stored.day.start + Seconds{5 * 86'400});
    ASSERT_TRUE(comes([&] { return environment->preferences().lastAutomaticCleanup() == time.now(); }))
        << testing::PrintToString(log.errors());
    EXPECT_EQ(segmentCount(), 0U);
    // The other day, and what was deleted.
    EXPECT_EQ(environment->activityDataRevision(), revision + 2);
    EXPECT_THAT(log.events(), ElementsAre("Retention cleanup removed 1 day(s)"));
}

TEST_F(AppEnvironmentTest, RemovesWhatItSaidThatAShorterWindowWouldRemoveBeforeThatHolds)
{
    startWithStore();
    const Seconds day{86'400};
    const auto yesterday = stored.at(9) + day * 4;
    ASSERT_TRUE(stored.store->segments().save(
        {{stored.segment({yesterday, yesterday + Seconds{60}}, ActivityKind::work, "kate")}}));
    time.advanceTo(stored.day.start + day * 5);
    const auto shorter = *RetentionWindow::days(2);
    const auto change =
        retentionChange(stored.store->database(), environment->preferences().retentionWindow(), shorter,
                        stored.calendar, time.now());
    ASSERT_TRUE(change && change->days.size() == 1);
    // The answer comes after midnight, when the window keeps a day less of what was there.
    time.advance(day);
    std::optional<HistoryOutcome> outcome;
    environment->changeRetention(*change, [&](HistoryOutcome result) { outcome = std::move(result); });
    EXPECT_NE(environment->preferences().retentionWindow(), shorter);
    ASSERT_TRUE(comes([&] { return outcome.has_value(); }));
    EXPECT_EQ(outcome->value().dayCount, 1);
    EXPECT_EQ(segmentCount(), 1U);
    EXPECT_EQ(environment->preferences().retentionWindow(), shorter);
}

TEST_F(AppEnvironmentTest, CleansUpAtTheMidnightOfTheZoneThatItsUserTravelledTo)
{
    preferences.store("stintbook.privacy.retentionDays", PreferenceValue(std::int64_t{5}));
    preferences.store("stintbook.privacy.automaticCleanup", PreferenceValue(true));
    configuration.captureEnabled = true;
    startWithStore();
    ASSERT_TRUE(comes([&] { return environment->captureStatus().runtime.isActive(); }));
    ASSERT_TRUE(comes([&] { return environment->preferences().lastAutomaticCleanup() == time.now(); }));
    stored.calendar = *CalendarContext::inZone("Asia/Tokyo");
    const auto revision = environment->activityDataRevision();
    desktop.travelTo("Asia/Tokyo");
    EXPECT_TRUE(comes([&] { return environment->activityDataRevision() > revision; }));
    desktop.whileStill([&] { time.advanceTo(stored.calendar.nextDayStart(time.now())); });
    EXPECT_TRUE(comes([&] { return environment->preferences().lastAutomaticCleanup() == time.now(); }));
}

TEST_F(AppEnvironmentTest, NoticesWhatIsCommittedHereAndByAnotherProcess)
{
    startWithStore();
    EXPECT_EQ(storeChanges.watched, storeDirectory() / "Velloran.store-wal");
    const auto settle = [&] {
        storeChanges.written();
        storeChanges.written();
        main.drain();
        time.advance(DataRevision::settlingTime);
        main.drain();
    };
    ASSERT_TRUE(BillingDesk(*environment->store()).setCurrency("USD"));
    settle();
    EXPECT_EQ(environment->activityDataRevision(), 1);
    ASSERT_TRUE(BillingDesk(*stored.store).setCurrency("CHF"));
    settle();
    settle();
    EXPECT_EQ(environment->activityDataRevision(), 2);
}

TEST_F(AppEnvironmentTest, RepublishesCaptureTakesOverPreferencesAndFlushesAtItsEnd)
{
    configuration.captureEnabled = true;
    desktop.perform([](ScriptedDesktop& scripted) { scripted.show("kate", "plan.txt"); });
    startWithStore();
    ASSERT_TRUE(comes([&] {
        return environment->captureStatus().runtime.isActive()
            && environment->permissionState() == CapturePermissionState::granted;
    }));
    EXPECT_EQ(environment->browserContextState(), BrowserContextState::off);
    environment->preferences().setBrowserContextEnabled(true);
    EXPECT_EQ(environment->browserContextState(), BrowserContextState::active);
    environment->resolveBrowserContext();
    EXPECT_TRUE(environment->isResolvingBrowserContext());
    ASSERT_TRUE(comes([&] { return !environment->isResolvingBrowserContext(); }));

    int activations = 0;
    const auto listening = environment->followActivation(ApplicationWindow::settings, [&] { ++activations; });
    desktop.perform([&](ScriptedDesktop&) {
        desktop.handler->activate(ApplicationWindow::review, {});
        desktop.handler->activate(ApplicationWindow::settings, "token");
    });
    ASSERT_TRUE(comes([&] { return activations == 1; }));
    EXPECT_EQ(environment->takeActivationToken(), "token");

    environment->pause(TimedPauseOption::untilIResume);
    ASSERT_TRUE(comes([&] { return environment->captureStatus().runtime.isPaused(); }));
    environment->resume();
    ASSERT_TRUE(comes([&] { return environment->captureStatus().runtime.isActive(); }));

    // The barrier holds the recorder's own writes while another process's wish is done.
    std::optional<ActivityDeleting::Outcome> deleted;
    environment->deleteActivity(AllHistory{},
                                [&](ActivityDeleting::Outcome outcome) { deleted = std::move(outcome); });
    ASSERT_TRUE(comes([&] { return deleted.has_value(); }));
    ASSERT_TRUE(deleted->has_value()) << message(deleted->error());
    EXPECT_EQ(environment->activityDataRevision(), 1);
    EXPECT_EQ(segmentCount(), 0U);

    EXPECT_EQ(environment->shutdown(),
              ShutdownResult(CaptureShutdownOutcome{CaptureShutdownOutcome::Kind::persisted}));
    EXPECT_EQ(log.events().back(), "Shutdown flush persisted every observed segment");
    EXPECT_THAT(log.errors(), testing::IsEmpty());
}

TEST_F(AppEnvironmentTest, EndsAfterThreeSecondsWhenCaptureHangs)
{
    configuration.captureEnabled = true;
    startWithStore();
    ASSERT_TRUE(comes([&] { return environment->captureStatus().runtime.isActive(); }));
    desktop.hang();
    EXPECT_TRUE(std::holds_alternative<BoundedShutdown::DeadlineExpired>(environment->shutdown()));
    EXPECT_THAT(log.errors(),
                ElementsAre("Termination deadline expired before the shutdown flush finished; any evidence "
                            "still in memory is lost"));
}

TEST_F(AppEnvironmentTest, SaysWhyNothingIsRecordedOnADesktopThatTellsNothing)
{
    configuration.captureEnabled = true;
    desktop.isSeen = false;
    startWithStore();
    ASSERT_TRUE(comes([&] { return environment->captureProblem().has_value(); }));
    EXPECT_FALSE(environment->isCapturing());
    desktop.perform([&](ScriptedDesktop&) { EXPECT_FALSE(desktop.handler->pause(std::nullopt)); });
    std::optional<ActivityDeleting::Outcome> deleted;
    environment->deleteActivity(AllHistory{},
                                [&](ActivityDeleting::Outcome outcome) { deleted = std::move(outcome); });
    ASSERT_TRUE(comes([&] { return deleted.has_value(); }));
    EXPECT_EQ(deleted->value().dayCount, 1);

    configuration.usesInMemoryStore = true;
    environment.reset();
    const auto files = filesIn(storeDirectory());
    start();
    EXPECT_NE(environment->store(), nullptr);
    EXPECT_EQ(filesIn(storeDirectory()), files);
}

} // namespace stintbook
