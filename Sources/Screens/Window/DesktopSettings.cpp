#include "Screens/Window/DesktopSettings.h"

#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

namespace stintbook::desktopsettings {

namespace {

struct Program {
    /// As $XDG_CURRENT_DESKTOP names it.
    const char* desktop;
    const char* name;
};

constexpr Program programs[] = {
    {"GNOME", "gnome-control-center"},
    {"KDE", "systemsettings"},
    {"KDE", "systemsettings5"},
    {"XFCE", "xfce4-settings-manager"},
    {"X-Cinnamon", "cinnamon-settings"},
    {"MATE", "mate-control-center"},
    {"LXQt", "lxqt-config"},
    {"Budgie", "budgie-control-center"},
    {"Pantheon", "io.elementary.settings"},
};

QString program()
{
    const auto desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'));
    for (const auto& candidate : programs) {
        if (!desktops.contains(QLatin1String(candidate.desktop), Qt::CaseInsensitive))
            continue;
        auto path = QStandardPaths::findExecutable(QString::fromLatin1(candidate.name));
        if (!path.isEmpty())
            return path;
    }
    return {};
}

} // namespace

bool canBeOpened()
{
    return !program().isEmpty();
}

void open()
{
    if (const auto path = program(); !path.isEmpty())
        QProcess::startDetached(path, {});
}

} // namespace stintbook::desktopsettings
