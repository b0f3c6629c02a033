#include <thread>

#include "DesktopTest.h"
#include "Platform/SessionBusInstance.h"
#include "Platform/SessionBusService.h"

namespace stintbook {

namespace {

class Answers final : public InstanceRequestHandling {
public:
    InstanceStatus status() override { return m_status; }
    void pause(std::optional<Instant> until) override
    {
        m_status.capture.runtime = CaptureRuntimeState::paused(until);
    }
    void resume() override { m_status.capture.runtime = CaptureRuntimeState::active(); }
    void activate() override { ++m_activations; }

    InstanceStatus m_status{
        .capture = {CaptureRuntimeState::active(), CapturePermissionState::granted},
        .storeFile = "/home/me/Größe/store",
        .processIdentifier = 4711,
        .providers = {"frontmost: x11", "idle: xscreensaver"},
        .openSegment = InstanceStatus::OpenSegment{{1000.25}, "work", "Editor"},
        .unsavedSegmentCount = 3,
    };
    int m_activations = 0;
};

class SessionBusTest : public DesktopTest {
protected:
    /// Asks from another thread, as another process does, while the loop answers.
    template <typename Question> auto answerTo(Question question)
    {
        decltype(question(m_instance)) answer;
        bool isAnswered = false;
        std::thread asking([&] {
            answer = question(m_instance);
            m_loop.post([&] { isAnswered = true; });
        });
        comesTrue([&] { return isAnswered; });
        asking.join();
        return answer;
    }

    Answers m_answers;
    SessionBusInstance m_instance;
    SessionBusService m_service{m_loop};
};

} // namespace

TEST_F(SessionBusTest, CarriesStatusPauseResumeAndActivationToTheRunningCopy)
{
    m_desktop.startSessionBus();
    ASSERT_TRUE(m_service.publish(m_answers));
    auto status = [&] { return answerTo([](auto& copy) { return copy.status(); }).value().value(); };
    auto first = status();
    EXPECT_EQ(first.capture, m_answers.m_status.capture);
    EXPECT_EQ(first.storeFile, "/home/me/Größe/store");
    EXPECT_EQ(first.processIdentifier, 4711);
    EXPECT_EQ(first.providers, m_answers.m_status.providers);
    ASSERT_TRUE(first.openSegment);
    EXPECT_EQ(first.openSegment->start, Instant{1000.25});
    EXPECT_EQ(first.openSegment->kind + " " + first.openSegment->applicationName, "work Editor");
    EXPECT_EQ(first.unsavedSegmentCount, 3);

    m_answers.m_status.openSegment.reset();
    EXPECT_TRUE(answerTo([](auto& copy) { return copy.pause(Instant{2000.5}); }));
    auto paused = status();
    EXPECT_EQ(paused.capture.runtime, CaptureRuntimeState::paused(Instant{2000.5}));
    EXPECT_FALSE(paused.openSegment);
    EXPECT_TRUE(answerTo([](auto& copy) { return copy.pause(std::nullopt); }));
    EXPECT_EQ(status().capture.runtime, CaptureRuntimeState::paused(std::nullopt));
    EXPECT_TRUE(answerTo([](auto& copy) { return copy.resume(); }));
    EXPECT_TRUE(status().capture.runtime.isActive());
    EXPECT_TRUE(answerTo([](auto& copy) { return copy.activate(); }));
    EXPECT_EQ(m_answers.m_activations, 1);
}

TEST_F(SessionBusTest, OnlyTheFirstCopyIsPublished)
{
    m_desktop.startSessionBus();
    ASSERT_TRUE(m_service.publish(m_answers));
    Answers others;
    SessionBusService second(m_loop);
    EXPECT_FALSE(second.publish(others));
    EXPECT_EQ(answerTo([](auto& copy) { return copy.status(); }).value()->processIdentifier, 4711);
}

TEST_F(SessionBusTest, SaysThatNobodyIsThere)
{
    EXPECT_FALSE(m_service.publish(m_answers));
    EXPECT_EQ(m_instance.status().value(), std::nullopt);
    m_desktop.startSessionBus();
    EXPECT_EQ(m_instance.status().value(), std::nullopt);
    EXPECT_EQ(m_instance.resume().error(), "Velloran is not running.");
}

} // namespace stintbook
