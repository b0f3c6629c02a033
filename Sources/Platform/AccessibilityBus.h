#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "Base/Instant.h"
#include "Platform/BusConnection.h"

namespace stintbook {

/// An object of some program's accessibility tree.
struct AccessibleObject {
    std::string busName;
    std::string path;

    friend bool operator==(const AccessibleObject&, const AccessibleObject&) = default;
};

/// A program's top-level window.
struct AccessibleFrame {
    AccessibleObject object;
    std::string name;
    bool isActive = false;
};

/// The calls of AT-SPI that capture needs, on the accessibility bus of the session. Belongs to one thread.
///
/// Every call has a time-out of 250 ms, and all calls between two `begin` together a deadline: programs that
/// hang cost that much and no more. After a failure that is not the answer of a program the connection is
/// made anew by the next `begin`.
class AccessibilityBus {
public:
    /// Starts a reading that may take until `limit` from now; connects to the session where necessary.
    BusResult<void> begin(Seconds limit);
    /// What is left of the reading's time, never negative.
    Seconds timeLeft() const;

    /// Whether accessibility is switched on for the session (`org.a11y.Status`).
    BusResult<bool> isEnabled();
    BusResult<void> enable();

    /// Where the accessibility bus is, for those who listen to it.
    BusResult<std::string> address();

    /// The programs that take part; each is the root of its tree. Comes before all questions about objects.
    BusResult<std::vector<AccessibleObject>> applications();
    BusResult<std::int32_t> processOf(const AccessibleObject& application);
    BusResult<std::vector<AccessibleObject>> children(const AccessibleObject& object);
    BusResult<AccessibleFrame> frame(const AccessibleObject& object);
    BusResult<std::string> name(const AccessibleObject& object);
    BusResult<std::uint32_t> role(const AccessibleObject& object);
    BusResult<std::uint64_t> states(const AccessibleObject& object);
    /// The object that a frame embeds: its front document.
    BusResult<std::optional<AccessibleObject>> embedded(const AccessibleObject& frame);
    /// "" for a key that the document does not know.
    BusResult<std::string> documentAttribute(const AccessibleObject& document, const char* key);
    BusResult<std::string> text(const AccessibleObject& entry);

private:
    template <typename... Arguments>
    BusResult<BusMessage> call(BusConnection& bus, const BusMethod& method, const char* types,
                               Arguments... arguments);
    template <typename... Arguments>
    BusResult<BusMessage> ask(const AccessibleObject& object, const char* interface, const char* member,
                              const char* types, Arguments... arguments);
    BusResult<std::string> textProperty(const AccessibleObject& object, const char* name);
    BusResult<void> connectToTree();
    void forget();

    std::unique_ptr<BusConnection> m_session;
    std::unique_ptr<BusConnection> m_bus;
    /// Unique names are never used twice on one bus.
    std::unordered_map<std::string, std::int32_t> m_processes;
    double m_deadline = 0;
    bool m_isBroken = false;
};

/// Bits of `states`.
inline constexpr std::uint64_t accessibleActive = 1u << 1;
inline constexpr std::uint64_t accessibleFocused = 1u << 12;
/// Values of `role`.
inline constexpr std::uint32_t accessibleToolBar = 63;
inline constexpr std::uint32_t accessibleEntry = 79;
inline constexpr std::uint32_t accessibleDocumentWeb = 95;

} // namespace stintbook
