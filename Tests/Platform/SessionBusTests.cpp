#include <thread>

#include "DesktopTest.h"
#include "Platform/SessionBusInstance.h"
#include "Platform/SessionBusService.h"

namespace stintbook {

namespace {

class Answers final : public InstanceRequestHandling {
public:
    InstanceStatus status() override { return answer; }
    void pause(std::optional<Instant> until) override
    {
        answer.capture.runtime = CaptureRuntimeState::paused(until);
    }
    void resume() override { answer.capture.runtime = CaptureRuntimeState::active(); }
    void deleteActivity(const ActivityDataScope& scope, Reply<DeletedActivity> reply,
                        DeletionProgress progress) override
    {
        deletions.push_back({scope, std::move(reply), std::move(progress)});
    }
    void flush(Reply<void> reply) override { flushes.push_back(std::move(reply)); }
    void activate() override { ++activations; }
    void quit() override { ++ends; }

    struct Deletion {
        ActivityDataScope scope;
        Reply<DeletedActivity> reply;
        DeletionProgress progress;
    };

    InstanceStatus answer{
        .capture = {CaptureRuntimeState::active(), CapturePermissionState::granted},
        .storeFile = "/home/me/Größe/store",
        .processIdentifier = 4711,
        .providers = {"frontmost: x11", "idle: xscreensaver"},
        .openSegment = InstanceStatus::OpenSegment{{1000.25}, "work", "Editor"},
        .unsavedSegmentCount = 3,
    };
    std::vector<Deletion> deletions;
    std::vector<Reply<void>> flushes;
    int activations = 0;
    int ends = 0;
};

class SessionBusTest : public DesktopTest {
protected:
    /// Asks from another thread, as another process does, while the loop answers.
    template <typename Question> auto answerTo(Question question)
    {
        decltype(question(instance)) answer;
        bool isAnswered = false;
        std::thread asking([&] {
            answer = question(instance);
            loop.post([&] { isAnswered = true; });
        });
        comesTrue([&] { return isAnswered; });
        asking.join();
        return answer;
    }

    Answers answers;
    SessionBusInstance instance;
    SessionBusService service{loop};
};

} // namespace

TEST_F(SessionBusTest, CarriesStatusPauseResumeAndActivationToTheRunningCopy)
{
    desktop.startSessionBus();
    ASSERT_TRUE(service.publish(answers));
    auto status = [&] { return answerTo([](auto& copy) { return copy.status(); }).value().value(); };
    auto first = status();
    EXPECT_EQ(first.capture, answers.answer.capture);
    EXPECT_EQ(first.storeFile, "/home/me/Größe/store");
    EXPECT_EQ(first.processIdentifier, 4711);
    EXPECT_EQ(first.providers, answers.answer.providers);
    ASSERT_TRUE(first.openSegment);
    EXPECT_EQ(first.openSegment->start, Instant{1000.25});
    EXPECT_EQ(first.openSegment->kind + " " + first.openSegment->applicationName, "work Editor");
    EXPECT_EQ(first.unsavedSegmentCount, 3);

    answers.answer.openSegment.reset();
    EXPECT_TRUE(answerTo([](auto& copy) { return copy.pause(Instant{2000.5}); }));
    auto paused = status();
    EXPECT_EQ(paused.capture.runtime, CaptureRuntimeState::paused(Instant{2000.5}));
    EXPECT_FALSE(paused.openSegment);
    EXPECT_TRUE(answerTo([](auto& copy) { return copy.pause(std::nullopt); }));
    EXPECT_EQ(status().capture.runtime, CaptureRuntimeState::paused(std::nullopt));
    EXPECT_TRUE(answerTo([](auto& copy) { return copy.resume(); }));
    EXPECT_TRUE(status().capture.runtime.isActive());
    EXPECT_TRUE(answerTo([](auto& copy) { return copy.activate(); }));
    EXPECT_EQ(answers.activations, 1);
}

TEST_F(SessionBusTest, OnlyTheFirstCopyIsPublished)
{
    desktop.startSessionBus();
    ASSERT_TRUE(service.publish(answers));
    Answers others;
    SessionBusService second(loop);
    EXPECT_FALSE(second.publish(others));
    EXPECT_EQ(answerTo([](auto& copy) { return copy.status(); }).value()->processIdentifier, 4711);
}

TEST_F(SessionBusTest, SaysThatNobodyIsThere)
{
    EXPECT_FALSE(service.publish(answers));
    EXPECT_EQ(instance.status().value(), std::nullopt);
    desktop.startSessionBus();
    EXPECT_EQ(instance.status().value(), std::nullopt);
    EXPECT_EQ(instance.resume().error(), "Velloran is not running.");
}

} // namespace stintbook
