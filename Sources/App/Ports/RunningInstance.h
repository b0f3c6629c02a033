#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Base/Instant.h"
#include "Domain/ActivityDataScope.h"
#include "Domain/CaptureStatus.h"
#include "Domain/DeletedActivity.h"

/// The running copy as another process meets it on the session bus: name "app.velloran.Velloran", object
/// "/app/velloran/Velloran", interfaces "app.velloran.Velloran" and "org.freedesktop.Application".
namespace stintbook {

struct InstanceStatus {
    CaptureStatus capture;
    /// The store's file, canonical: which copy this is. Empty where nothing is recorded.
    std::string storeFile;
    std::int32_t processIdentifier = 0;
    /// "frontmost: x11", "idle: xscreensaver", …
    std::vector<std::string> providers;

    struct OpenSegment {
        Instant start;
        std::string kind;
        std::string applicationName;
    };
    std::optional<OpenSegment> openSegment;
    int unsavedSegmentCount = 0;
};

enum class ApplicationWindow { review, settings };

/// What the running copy answers to others; called on capture's thread, which none of it may hold up.
class InstanceRequestHandling {
public:
    /// Told once, on capture's thread, how a request that takes its time has ended; the error is a sentence. Who
    /// asked may be gone by then.
    template <typename T> using Reply = std::move_only_function<void(std::expected<T, std::string>)>;

    virtual ~InstanceRequestHandling() = default;
    virtual InstanceStatus status() = 0;
    /// Absent deadline: until resumed. The error is a sentence.
    virtual std::expected<void, std::string> pause(std::optional<Instant> until) = 0;
    virtual std::expected<void, std::string> resume() = 0;
    virtual void deleteActivity(const ActivityDataScope& scope, Reply<DeletedActivity> reply,
                                DeletionProgress progress) = 0;
    /// Saves everything that was recorded so far, the open segment up to now included.
    virtual void flush(Reply<void> reply) = 0;
    /// Another launch asks this copy to come forward, with the desktop's leave to do so: its token, or nothing.
    /// False where there is no window that could.
    virtual bool activate(ApplicationWindow window, const std::string& activationToken) = 0;
    /// Ends as on SIGTERM.
    virtual void quit() = 0;
};

/// Publishes the running copy on the bus as long as it lives.
class InstancePublishing {
public:
    virtual ~InstancePublishing() = default;
    /// False where there is no session bus or another copy owns the name; capture goes on without.
    virtual bool publish(InstanceRequestHandling& handler) = 0;
    /// Tells whoever listens that the status is another one. On capture's thread.
    virtual void announceStatus() = 0;
};

/// Speaks to the running copy. Each call is bounded to five seconds unless it says otherwise; the error is a
/// sentence.
class RunningInstance {
public:
    virtual ~RunningInstance() = default;
    /// Absent when no copy is on the bus.
    virtual std::expected<std::optional<InstanceStatus>, std::string> status() = 0;
    virtual std::expected<void, std::string> pause(std::optional<Instant> until) = 0;
    virtual std::expected<void, std::string> resume() = 0;
    /// Waits for as long as the running copy is at it.
    virtual std::expected<DeletedActivity, std::string> deleteActivity(const ActivityDataScope& scope,
                                                                       const DeletionProgress& progress) = 0;
    /// Bounded to thirty seconds.
    virtual std::expected<void, std::string> flush() = 0;
    /// Hands on the desktop's token that lets a window come forward, or nothing.
    virtual std::expected<void, std::string> activate(const std::string& activationToken) = 0;
};

} // namespace stintbook
