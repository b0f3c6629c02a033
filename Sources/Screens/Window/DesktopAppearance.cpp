#include "Screens/Window/DesktopAppearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace stintbook {

namespace {

const auto service = QStringLiteral("org.freedesktop.portal.Desktop");
const auto path = QStringLiteral("/org/freedesktop/portal/desktop");
const auto interface = QStringLiteral("org.freedesktop.portal.Settings");

const auto appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const auto schemeKey = QStringLiteral("color-scheme");
const auto desktopGroup = QStringLiteral("org.gnome.desktop.interface");
const auto animationsKey = QStringLiteral("enable-animations");

/// Answers wrap the value once more than announcements do.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

DesktopAppearance::DesktopAppearance(QObject* parent)
    : QObject(parent)
{
    QDBusConnection::sessionBus().connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                                          SLOT(settingChanged(QString, QString, QDBusVariant)));
    read(appearanceGroup, schemeKey);
    read(desktopGroup, animationsKey);
}

void DesktopAppearance::read(const QString& group, const QString& key)
{
    auto call = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
    call << group << key;
    auto* const watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, group, key] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError())
            settingChanged(group, key, reply.value());
    });
}

void DesktopAppearance::settingChanged(const QString& group, const QString& key, const QDBusVariant& value)
{
    const auto setting = unwrapped(QVariant::fromValue(value));
    if (group == appearanceGroup && key == schemeKey) {
        constexpr uint dark = 1;
        constexpr uint light = 2;
        const auto scheme = setting.toUInt();
        m_prefersDark = scheme == dark || scheme == light ? std::optional(scheme == dark) : std::nullopt;
    } else if (group == desktopGroup && key == animationsKey) {
        m_reducesMotion = !setting.toBool();
    } else {
        return;
    }
    Q_EMIT changed();
}

} // namespace stintbook
