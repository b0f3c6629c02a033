#include "Platform/X11FrontmostApplication.h"

#include <utility>

#include "Base/Text.h"

namespace stintbook {

namespace {

void select(X11Connection& connection, xcb_window_t window, std::uint32_t eventMask)
{
    xcb_change_window_attributes(connection.get(), window, XCB_CW_EVENT_MASK, &eventMask);
}

std::string fromLatin1(std::string_view bytes)
{
    std::string text;
    for (unsigned char byte : bytes) {
        if (byte < 0x80) {
            text += static_cast<char>(byte);
        } else {
            text += static_cast<char>(0xC0 | (byte >> 6));
            text += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return text;
}

/// Drops the last character where only its first bytes were read.
void dropPartialCharacter(std::string& utf8)
{
    auto lead = utf8.size();
    while (lead > 0 && utf8.size() - lead < 3 && (static_cast<unsigned char>(utf8[lead - 1]) & 0xC0) == 0x80)
        --lead;
    if (lead > 0 && !isValidUTF8(std::string_view(utf8).substr(lead - 1)))
        utf8.resize(lead - 1);
}

/// The second of the two texts in WM_CLASS, which both end in a zero byte.
std::string windowClass(std::string_view bytes)
{
    auto end = bytes.find('\0');
    if (end == bytes.npos || end + 1 >= bytes.size())
        return std::string(bytes.substr(0, end));
    auto second = bytes.substr(end + 1);
    return std::string(second.substr(0, second.find('\0')));
}

} // namespace

X11FrontmostApplication::Atoms::Atoms(X11Connection& connection)
    : activeWindow(connection.atom("_NET_ACTIVE_WINDOW"))
    , netName(connection.atom("_NET_WM_NAME"))
    , processIdentifier(connection.atom("_NET_WM_PID"))
    , gtkApplicationID(connection.atom("_GTK_APPLICATION_ID"))
    , utf8(connection.atom("UTF8_STRING"))
{
}

X11FrontmostApplication::X11FrontmostApplication(EventLoop& loop, const TimeSource& timeSource,
                                                 ApplicationIdentities& identities)
    : m_loop(loop)
    , m_reporter(loop, timeSource, identities, [this] { return read(); })
    , m_reconnection(loop, "X server", [this] { return connect(); })
{
    connect();
}

void X11FrontmostApplication::follow(Follower follower)
{
    m_isFollowed = true;
    if (m_connection)
        select(*m_connection, m_connection->root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    else
        m_reconnection.start();
    m_reporter.follow(std::move(follower));
    if (m_connection)
        m_connection->handleQueuedEvents();
}

void X11FrontmostApplication::stop()
{
    m_isFollowed = false;
    m_reconnection.stop();
    m_reporter.stop();
    if (!m_connection)
        return;
    watchWindow(XCB_WINDOW_NONE);
    select(*m_connection, m_connection->root(), XCB_EVENT_MASK_NO_EVENT);
    xcb_flush(m_connection->get());
}

bool X11FrontmostApplication::connect()
{
    m_atoms.reset();
    m_watchedWindow = XCB_WINDOW_NONE;
    m_connection = X11Connection::open();
    if (!m_connection)
        return false;
    m_atoms.emplace(*m_connection);
    m_connection->attach(
        m_loop, [this](const xcb_generic_event_t& event) { handle(event); },
        [this] {
            m_connection.reset();
            if (m_isFollowed)
                m_reconnection.start();
        });
    if (m_isFollowed) {
        select(*m_connection, m_connection->root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
        m_reporter.noteSwitch();
    }
    return true;
}

void X11FrontmostApplication::handle(const xcb_generic_event_t& event)
{
    if ((event.response_type & 0x7F) != XCB_PROPERTY_NOTIFY)
        return;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window == m_connection->root()) {
        if (change.atom == m_atoms->activeWindow)
            m_reporter.noteSwitch();
    } else if (change.window == m_watchedWindow
               && (change.atom == m_atoms->netName || change.atom == XCB_ATOM_WM_NAME)) {
        m_reporter.noteTitle();
    }
}

std::optional<SeenWindow> X11FrontmostApplication::read()
{
    if (!m_connection || m_connection->isBroken())
        return std::nullopt;
    auto& x11 = *m_connection;
    auto active = x11.answer(x11.ask(x11.root(), m_atoms->activeWindow));
    xcb_window_t window = active ? active->number().value_or(0) : 0;
    if (window == XCB_WINDOW_NONE)
        return std::nullopt;

    // Before its properties are read, so that no change falls in between.
    if (m_isFollowed)
        watchWindow(window);
    auto netName = x11.ask(window, m_atoms->netName);
    auto plainName = x11.ask(window, XCB_ATOM_WM_NAME);
    auto process = x11.ask(window, m_atoms->processIdentifier);
    auto classes = x11.ask(window, XCB_ATOM_WM_CLASS);
    auto gtkApplication = x11.ask(window, m_atoms->gtkApplicationID);

    SeenWindow seen{.window = window};
    auto title = x11.answer(netName);
    auto plainTitle = x11.answer(plainName);
    if (!title || title->bytes.empty())
        title = std::move(plainTitle);
    if (title)
        seen.title = text(*title);
    if (auto property = x11.answer(process))
        seen.hints.processIdentifier = static_cast<std::int32_t>(property->number().value_or(0));
    if (auto property = x11.answer(classes))
        seen.hints.windowClass = windowClass(text(*property));
    if (auto property = x11.answer(gtkApplication))
        seen.hints.applicationID = text(*property);
    // The answers may have brought events along, which nothing else would fetch.
    m_loop.post([this, life = std::weak_ptr(m_life)] {
        if (!life.expired() && m_connection)
            m_connection->handleQueuedEvents();
    });
    if (seen.title.empty() && seen.hints.windowClass.empty() && seen.hints.processIdentifier == 0)
        return std::nullopt; // It was closed meanwhile.
    return seen;
}

std::string X11FrontmostApplication::text(const X11Connection::Property& property) const
{
    if (property.type != m_atoms->utf8 && !isValidUTF8(property.bytes))
        return fromLatin1(property.bytes);
    auto text = property.bytes;
    dropPartialCharacter(text);
    return isValidUTF8(text) ? text : fromLatin1(text);
}

void X11FrontmostApplication::watchWindow(xcb_window_t window)
{
    if (window == m_watchedWindow)
        return;
    if (m_watchedWindow != XCB_WINDOW_NONE)
        select(*m_connection, m_watchedWindow, XCB_EVENT_MASK_NO_EVENT);
    if (window != XCB_WINDOW_NONE)
        select(*m_connection, window, XCB_EVENT_MASK_PROPERTY_CHANGE);
    m_watchedWindow = window;
}

} // namespace stintbook
