"""A desktop of the test's own: display, window manager, session bus with accessibility, and a host for status items.

Nothing of the machine's own desktop is seen or changed. At its end everything that came from it is killed.
"""

import os
import shutil
import signal
import subprocess
import tempfile
import threading
import time
from pathlib import Path

PATIENCE = 20.0


def eventually(condition, what, limit=PATIENCE):
    """The first true value that the condition gives; fails with `what`, a text or what makes one, when none comes."""
    deadline = time.monotonic() + limit
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"Did not come: {what() if callable(what) else what}")
        time.sleep(0.05)


class PrivateDesktop:
    def __init__(self, size="1440x900"):
        self.home = Path(tempfile.mkdtemp(prefix="velloran-desktop-"))
        self.processes = []
        runtime = self.home / "run"
        runtime.mkdir(mode=0o700)
        os.environ.update(
            HOME=str(self.home),
            XDG_RUNTIME_DIR=str(runtime),
            XDG_CONFIG_HOME=str(self.home / "config"),
            XDG_DATA_HOME=str(self.home / "data"),
            XDG_CACHE_HOME=str(self.home / "cache"),
            STINTBOOK_STORE_DIRECTORY=str(self.home / "store"),
            GSETTINGS_BACKEND="memory",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
            LC_ALL="C.UTF-8",
            TZ="Europe/Berlin",
        )
        os.environ.pop("WAYLAND_DISPLAY", None)
        number = self._line_of(["Xvfb", "-displayfd", "3", "-screen", "0", f"{size}x24", "-nolisten", "tcp"])
        os.environ["DISPLAY"] = f":{number}"
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self._line_of(
            ["dbus-daemon", "--session", "--nofork", "--print-address=3"])
        self.start(["openbox"])
        eventually(lambda: "window id" in self.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"]), "a window manager")

    def _line_of(self, command):
        """Starts a program that writes a line to its descriptor 3, and gives that line."""
        reading, writing = os.pipe()
        shell = " ".join(f"'{word}'" for word in command) + f" 3>&{writing}"
        self.processes.append(
            subprocess.Popen(["bash", "-c", "exec " + shell], pass_fds=[writing], start_new_session=True,
                             stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        os.close(writing)
        with os.fdopen(reading) as pipe:
            return pipe.readline().strip()

    def start(self, command):
        log = open(self.home / f"{Path(command[0]).name}.log", "ab")
        process = subprocess.Popen(command, stdout=log, stderr=log, start_new_session=True)
        self.processes.append(process)
        return process

    @staticmethod
    def run(command):
        return subprocess.run(command, capture_output=True, text=True, timeout=30, check=False).stdout

    def close(self):
        for process in reversed(self.processes):
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
            process.wait()
        shutil.rmtree(self.home, ignore_errors=True)


class StatusItemHost:
    """Shows status items, as a desktop's panel does: here, by what their menus say on the bus."""

    NAME = "org.kde.StatusNotifierWatcher"
    INTERFACE = f"""
        <node><interface name='{NAME}'>
            <method name='RegisterStatusNotifierItem'><arg type='s' direction='in'/></method>
            <method name='RegisterStatusNotifierHost'><arg type='s' direction='in'/></method>
            <property name='IsStatusNotifierHostRegistered' type='b' access='read'/>
            <property name='ProtocolVersion' type='i' access='read'/>
            <property name='RegisteredStatusNotifierItems' type='as' access='read'/>
            <signal name='StatusNotifierHostRegistered'/>
        </interface></node>"""

    def __init__(self):
        from gi.repository import Gio, GLib
        self.gio, self.glib = Gio, GLib
        self.items = []
        self.bus = Gio.DBusConnection.new_for_address_sync(
            os.environ["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self.context = GLib.MainContext.new()
        self.loop = GLib.MainLoop.new(self.context, False)
        ready = threading.Event()

        def serve():
            self.context.push_thread_default()
            interface = Gio.DBusNodeInfo.new_for_xml(self.INTERFACE).interfaces[0]
            self.bus.register_object("/StatusNotifierWatcher", interface, self._called, self._read, None)
            self.come(ready.set)
            self.loop.run()

        threading.Thread(target=serve, daemon=True).start()
        ready.wait(PATIENCE)

    def come(self, done=lambda: None):
        self.presence = self.gio.bus_own_name_on_connection(
            self.bus, self.NAME, self.gio.BusNameOwnerFlags.NONE, lambda *_: done(), None)

    def leave(self):
        self.gio.bus_unown_name(self.presence)

    def _called(self, _bus, sender, _path, _interface, method, arguments, invocation):
        if method == "RegisterStatusNotifierItem":
            name = arguments.unpack()[0]
            self.items.append((sender, name if name.startswith("/") else "/StatusNotifierItem"))
        invocation.return_value(None)

    def _read(self, _bus, _sender, _path, _interface, key):
        return {
            "IsStatusNotifierHostRegistered": self.glib.Variant("b", True),
            "ProtocolVersion": self.glib.Variant("i", 0),
            "RegisteredStatusNotifierItems": self.glib.Variant("as", [owner for owner, _ in self.items]),
        }[key]

    def _call(self, path, interface, method, arguments):
        return self.bus.call_sync(self.items[-1][0], path, interface, method, arguments, None,
                                  self.gio.DBusCallFlags.NONE, 5000, None).unpack()

    def _menu(self):
        item = self._call(self.items[-1][1], "org.freedesktop.DBus.Properties", "Get",
                          self.glib.Variant("(ss)", ("org.kde.StatusNotifierItem", "Menu")))
        return item[0]

    def rows(self):
        """{ title: identifier } of the menu and its submenus."""
        path = self._menu()
        self._call(path, "com.canonical.dbusmenu", "AboutToShow", self.glib.Variant("(i)", (0,)))
        _, layout = self._call(path, "com.canonical.dbusmenu", "GetLayout",
                               self.glib.Variant("(iias)", (0, -1, ["label", "visible"])))
        found = {}

        def walk(entry):
            identifier, properties, children = entry
            if "label" in properties and properties.get("visible", True):
                found[properties["label"].replace("_", "")] = identifier
            for child in children:
                walk(child)

        walk(layout)
        return found

    def choose(self, title):
        identifier = eventually(lambda: self.rows().get(title), f"the item's row “{title}”")
        self._call(self._menu(), "com.canonical.dbusmenu", "Event",
                   self.glib.Variant("(isvu)", (identifier, "clicked", self.glib.Variant("s", ""), 0)))
