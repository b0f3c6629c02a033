#include "Screens/StatusItem/StatusNotifierHosts.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

namespace stintbook {

namespace {

const auto service = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto path = QStringLiteral("/StatusNotifierWatcher");

} // namespace

StatusNotifierHosts::StatusNotifierHosts(QObject* parent)
    : QObject(parent)
    , m_watcher(service, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForOwnerChange)
{
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &StatusNotifierHosts::ask);
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] { setPresent(false); });
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        QDBusConnection::sessionBus().connect(service, path, service, QString::fromLatin1(signal), this,
                                              SLOT(ask()));
    ask();
}

std::vector<MenuBarIconWindow> StatusNotifierHosts::windows() const
{
    if (!m_isPresent)
        return {};
    return {{.frame = {}, .isDrawn = true}};
}

void StatusNotifierHosts::ask()
{
    auto call = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call.setAutoStartService(false);
    call << service << QStringLiteral("IsStatusNotifierHostRegistered");
    auto* const watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        setPresent(!reply.isError() && reply.value().variant().toBool());
    });
}

void StatusNotifierHosts::setPresent(bool isPresent)
{
    if (std::exchange(m_isPresent, isPresent) != isPresent)
        Q_EMIT changed();
}

} // namespace stintbook
