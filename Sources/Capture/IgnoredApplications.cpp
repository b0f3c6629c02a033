#include "Capture/IgnoredApplications.h"

#include <algorithm>
#include <array>

namespace stintbook {

namespace {

/// Desktop-entry ids and, behind "x11:", window classes in lower case.
constexpr auto sortedIgnored = [] {
    auto ignored = std::to_array<std::string_view>({
        // This application
        "app.velloran.Velloran",
        "x11:app.velloran.velloran",
        "x11:velloran",

        // Shells and window managers
        "cinnamon",
        "org.gnome.Shell",
        "org.kde.kwin_wayland",
        "org.kde.kwin_x11",
        "org.kde.plasmashell",
        "x11:budgie-wm",
        "x11:cinnamon",
        "x11:gnome-shell",
        "x11:ksmserver-logout-greeter",
        "x11:ksmserver",
        "x11:kwin_x11",
        "x11:kwin",
        "x11:marco",
        "x11:metacity",
        "x11:muffin",
        "x11:mutter",
        "x11:openbox",
        "x11:plasmashell",
        "x11:xfwm4",

        // Panels, docks and desktops
        "mate-panel",
        "org.kde.plasma.emojier",
        "pcmanfm-desktop-pref",
        "plank",
        "x11:budgie-panel",
        "x11:cairo-dock",
        "x11:desktop_window",
        "x11:latte-dock",
        "x11:lxpanel",
        "x11:lxqt-panel",
        "x11:mate-panel",
        "x11:pcmanfm-desktop",
        "x11:plank",
        "x11:polybar",
        "x11:stalonetray",
        "x11:tint2",
        "x11:trayer",
        "x11:waybar",
        "x11:wrapper-2.0",
        "x11:xfce4-panel",
        "x11:xfdesktop",
        "xfce4-panel",
        "xfdesktop",

        // Launchers and logout dialogs
        "albert",
        "io.ulauncher.Ulauncher",
        "lxqt-leave",
        "lxqt-runner",
        "org.kde.krunner",
        "org.kde.ksmserver-logout-greeter",
        "rofi",
        "ulauncher",
        "wofi",
        "x11:albert",
        "x11:dmenu",
        "x11:fuzzel",
        "x11:gmrun",
        "x11:krunner",
        "x11:lxqt-leave",
        "x11:lxqt-runner",
        "x11:mate-session",
        "x11:rofi",
        "x11:synapse",
        "x11:ulauncher",
        "x11:wofi",
        "x11:xfce4-appfinder",
        "x11:xfce4-session-logout",
        "x11:xfrun4",
        "xfce4-appfinder",
        "xfce4-session-logout",

        // Notifications and on-screen displays
        "mate-notification-daemon",
        "x11:dunst",
        "x11:lxqt-notificationd",
        "x11:mako",
        "x11:mate-notification-daemon",
        "x11:notify-osd",
        "x11:swaync",
        "x11:xfce4-notifyd",
        "xfce4-notifyd",

        // Lock screens, screen savers and greeters
        "org.kde.kscreenlocker_greet",
        "x11:cinnamon-screensaver",
        "x11:gnome-screensaver",
        "x11:i3lock",
        "x11:kscreenlocker_greet",
        "x11:light-locker",
        "x11:lightdm-gtk-greeter",
        "x11:mate-screensaver",
        "x11:slock",
        "x11:swaylock",
        "x11:xfce4-screensaver",
        "x11:xscreensaver",
        "x11:xsecurelock",
        "x11:xss-lock",
        "xscreensaver",

        // Portals: what they ask belongs to the application behind them
        "org.freedesktop.impl.portal.desktop.gtk",
        "org.freedesktop.impl.portal.desktop.kde",
        "org.gnome.Shell.Portal",
        "x11:xdg-desktop-portal-gnome",
        "x11:xdg-desktop-portal-gtk",
        "x11:xdg-desktop-portal-kde",
        "x11:xdg-desktop-portal-lxqt",
        "x11:xdg-desktop-portal-xapp",
        "x11:xdg-desktop-portal",
        "xdg-desktop-portal-gnome",
        "xdg-desktop-portal-gtk",

        // Authentication agents
        "gcr-prompter",
        "org.gnome.keyring.SystemPrompter",
        "org.kde.polkit-kde-authentication-agent-1",
        "polkit-gnome-authentication-agent-1",
        "x11:gcr-prompter",
        "x11:ksshaskpass",
        "x11:lxpolkit",
        "x11:lxqt-openssh-askpass",
        "x11:lxqt-policykit-agent",
        "x11:mate-polkit",
        "x11:pinentry",
        "x11:pinentry-gnome3",
        "x11:pinentry-gtk-2",
        "x11:pinentry-qt",
        "x11:polkit-gnome-authentication-agent-1",
        "x11:polkit-kde-authentication-agent-1",
        "x11:polkit-mate-authentication-agent-1",
        "x11:ssh-askpass",
        "x11:xfce-polkit",

        // Screenshots
        "flameshot",
        "mate-screenshot",
        "org.flameshot.Flameshot",
        "org.gnome.Screenshot",
        "org.kde.spectacle",
        "x11:flameshot",
        "x11:gnome-screenshot",
        "x11:ksnip",
        "x11:mate-screenshot",
        "x11:scrot",
        "x11:slop",
        "x11:spectacle",
        "x11:xfce4-screenshooter",
        "xfce4-screenshooter",
    });
    std::ranges::sort(ignored);
    return ignored;
}();

} // namespace

bool isIgnoredApplication(std::string_view bundleIdentifier)
{
    return std::ranges::binary_search(sortedIgnored, bundleIdentifier);
}

} // namespace stintbook
