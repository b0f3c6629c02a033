#!/usr/bin/python3
"""Measures the desktop application as a whole process, on an X server and a session bus of its own:

    dbus-run-session xvfb-run -a -s "-screen 0 1440x900x24" \
        Benchmarks/measure_window.py build/release/bin/velloran STORE_DIRECTORY

The store's directory is copied first. Prints memory (proportional) and wake-ups with the item alone and with the
window open, and how long the first frame takes: until anything but one colour stands where the window is.
"""

import collections
import ctypes
import os
import pathlib
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time

from gi.repository import Gio, GLib

IDLE_SECONDS = 30
RUNS = 9
SIDEBAR = (0, 0, 200, 300)

WATCHER = """<node><interface name="org.kde.StatusNotifierWatcher">
    <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
    <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
</interface></node>"""


class Host:
    """Shows status icons, as a desktop's panel does; here nobody sees them."""

    def __init__(self):
        self.item = None
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        interface = Gio.DBusNodeInfo.new_for_xml(WATCHER).interfaces[0]
        self.bus.register_object("/StatusNotifierWatcher", interface, self.called,
                                 lambda *_: GLib.Variant("b", True), None)
        Gio.bus_own_name_on_connection(self.bus, interface.name, Gio.BusNameOwnerFlags.NONE, None, None)

    def called(self, _bus, sender, _path, _interface, _method, _parameters, invocation):
        self.item = sender
        invocation.return_value(None)

    def wait(self, seconds):
        """Answers meanwhile."""
        end = time.monotonic() + seconds
        while (left := end - time.monotonic()) > 0:
            GLib.timeout_add(max(1, int(left * 1000)), lambda: False)
            GLib.MainContext.default().iteration(True)

    def click(self):
        self.bus.call_sync(self.item, "/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate",
                           GLib.Variant("(ii)", (0, 0)), None, Gio.DBusCallFlags.NONE, 5000, None)


class Display:
    def __init__(self):
        self.x = ctypes.CDLL("libX11.so.6")
        self.x.XOpenDisplay.restype = self.x.XGetImage.restype = ctypes.c_void_p
        self.x.XDefaultRootWindow.restype = self.x.XGetPixel.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(None))
        self.root = ctypes.c_ulong(self.x.XDefaultRootWindow(self.display))

    def is_blank(self):
        """Of the place where the window's sidebar will be."""
        image = ctypes.c_void_p(self.x.XGetImage(self.display, self.root, *SIDEBAR, ctypes.c_ulong(2**32 - 1), 2))
        colors = {self.x.XGetPixel(image, x, y) for x in range(0, SIDEBAR[2], 8) for y in range(0, SIDEBAR[3], 8)}
        self.x.XDestroyImage(image)
        return len(colors) < 2


def started(program, environment, *arguments):
    return subprocess.Popen([program, *arguments], env=environment, stdout=subprocess.DEVNULL,
                            stderr=subprocess.DEVNULL)


def end(process):
    process.send_signal(signal.SIGTERM)
    if process.wait(10) != 0:
        sys.exit("It did not end well.")


def memory(process):
    """Proportional, in MB."""
    rollup = pathlib.Path(f"/proc/{process.pid}/smaps_rollup").read_text()
    return next(int(line.split()[1]) for line in rollup.splitlines() if line.startswith("Pss:")) / 1024


def wake_ups(process):
    """So far, by thread."""
    counts = collections.Counter()
    for task in pathlib.Path(f"/proc/{process.pid}/task").iterdir():
        status = (task / "status").read_text().splitlines()
        count = next(int(line.split()[1]) for line in status if line.startswith("voluntary_ctxt_switches"))
        counts[(task / "comm").read_text().strip()] += count
    return counts


def report(what, process, host):
    before = wake_ups(process)
    host.wait(IDLE_SECONDS)
    woken = wake_ups(process) - before
    threads = ", ".join(f"{name} {count / IDLE_SECONDS:.2f}" for name, count in woken.most_common()) or "none"
    print(f"{what}: {memory(process):.1f} MB, wake-ups a second: {threads}", flush=True)


def processor_time(process):
    """In seconds so far."""
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def first_frame(program, environment, display):
    """Milliseconds until it, and those of processor time, which a busy machine does not stretch."""
    while not display.is_blank():
        time.sleep(0.01)
    began = time.monotonic()
    process = started(program, environment)
    while display.is_blank():
        time.sleep(0.002)
    elapsed = (time.monotonic() - began) * 1000, processor_time(process) * 1000
    time.sleep(1)
    end(process)
    return elapsed


def main():
    program = str(pathlib.Path(sys.argv[1]).resolve())
    with tempfile.TemporaryDirectory() as name:
        directory = pathlib.Path(name)
        shutil.copytree(sys.argv[2], directory / "store")
        environment = os.environ | {"STINTBOOK_STORE_DIRECTORY": str(directory / "store"),
                                    "XDG_CONFIG_HOME": str(directory / "config")}
        subprocess.run([pathlib.Path(program).with_name("velloran-cli"), "preferences", "set",
                        "stintbook.onboarding.completed", "true"], env=environment, check=True)
        display = Display()
        times, processor = zip(*(first_frame(program, environment, display) for _ in range(RUNS)))
        print(f"first frame: {statistics.median(times):.0f} ms, at most {max(times):.0f} ms; processor time "
              f"{statistics.median(processor):.0f} ms", flush=True)

        host = Host()
        process = started(program, environment, "--hidden")
        host.wait(4)
        if host.item is None:
            sys.exit("There is no item.")
        report("item alone", process, host)
        host.click()
        host.wait(4)
        report("window open", process, host)
        end(process)


if __name__ == "__main__":
    main()
