#!/usr/bin/python3
"""Measures days of 10,000 segments in the window: measure_day.py BUILD_DIRECTORY [SEGMENTS]

It is shown at 1440 × 900 by the software renderer, on an X server, window manager and session bus of its own. The
keys and the wheel are pressed as a user would; what is counted is the time until the picture has its last change, and
how long the frames in between took, by the toolkit's own clock.
"""

import ctypes
import datetime
import os
import pathlib
import re
import select
import subprocess
import sys
import threading
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "Tests" / "Screens"))
from private_desktop import PrivateDesktop, eventually  # noqa: E402

FRAME = re.compile(r"Frame rendered .* in (\d+)ms, polish=(\d+), sync=(\d+), render=(\d+)")
LIST, TIMELINE = (560, 560), (560, 300)
RATE = 60
# What is looked at for changes: right of the sidebar.
AREA = (220, 60, 1200, 820)
# Of a damage: that there is any, until it is taken note of.
NON_EMPTY = 3


class Display:
    """Looks at the screen, and presses keys and the wheel on it.

    A picture is taken only when the server tells of something that was painted: looking all the time would take a core
    from what is measured.
    """

    def __init__(self):
        self.x = ctypes.CDLL("libX11.so.6")
        self.test = ctypes.CDLL("libXtst.so.6")
        self.damage = ctypes.CDLL("libXdamage.so.1")
        self.x.XOpenDisplay.restype = self.x.XGetImage.restype = ctypes.c_void_p
        for function in (self.x.XDefaultRootWindow, self.x.XStringToKeysym, self.damage.XDamageCreate):
            function.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(None))
        self.root = ctypes.c_ulong(self.x.XDefaultRootWindow(self.display))
        self.damage.XDamageQueryExtension(self.display, ctypes.byref(ctypes.c_int()), ctypes.byref(ctypes.c_int()))
        self.painted = ctypes.c_ulong(self.damage.XDamageCreate(self.display, self.root, NON_EMPTY))
        self.event = ctypes.create_string_buffer(192)

    def wait_for_paint(self, patience):
        """The moment at which something was painted, or nothing after so many seconds."""
        if not self.x.XPending(self.display):
            select.select([self.x.XConnectionNumber(self.display)], [], [], patience)
        moment = time.monotonic()
        if not self.x.XPending(self.display):
            return None
        while self.x.XPending(self.display):
            self.x.XNextEvent(self.display, self.event)
        nothing = ctypes.c_ulong(0)
        self.damage.XDamageSubtract(self.display, self.painted, nothing, nothing)
        return moment

    def picture(self):
        image = ctypes.c_void_p(self.x.XGetImage(self.display, self.root, *AREA, ctypes.c_ulong(2**32 - 1), 2))
        # Of the structure: width, height, xoffset, format, and then where the pixels lie.
        data = ctypes.cast(image.value + 16, ctypes.POINTER(ctypes.c_void_p))[0]
        pixels = ctypes.string_at(data, AREA[2] * AREA[3] * 4)
        self.x.XDestroyImage(image)
        return hash(pixels)

    def press(self, key, states=(1, 0)):
        code = self.x.XKeysymToKeycode(self.display, ctypes.c_ulong(self.x.XStringToKeysym(key.encode())))
        for isDown in states:
            self.test.XTestFakeKeyEvent(self.display, code, isDown, ctypes.c_ulong(0))
        self.x.XFlush(self.display)

    def point(self, place):
        self.test.XTestFakeMotionEvent(self.display, -1, *place, ctypes.c_ulong(0))
        self.x.XFlush(self.display)

    def button(self, number):
        for isDown in (1, 0):
            self.test.XTestFakeButtonEvent(self.display, number, isDown, ctypes.c_ulong(0))
        self.x.XFlush(self.display)


class Frames:
    """That a program tells of, in milliseconds."""

    def __init__(self, process):
        self.frames = []
        threading.Thread(target=self.read, args=(process.stderr,), daemon=True).start()

    def read(self, stream):
        for line in stream:
            if found := FRAME.search(line):
                self.frames.append(tuple(map(int, found.groups())))


def until_still(display, act, still=0.4, patience=5):
    """Milliseconds from the act until the last change that follows it; fails when there is none at all."""
    seen = display.picture()
    began = time.monotonic()
    changed = None
    act()
    while (left := (changed + still if changed else began + patience) - time.monotonic()) > 0:
        moment = display.wait_for_paint(left)
        # Much is painted as it was before.
        if moment and (now := display.picture()) != seen:
            seen, changed = now, moment
    if changed is None:
        sys.exit("Nothing was to be seen of what was done.")
    return (changed - began) * 1000


def report(what, frames, elapsed=None):
    took = f"{elapsed:.0f} ms; " if elapsed is not None else ""
    longest = max(frames.frames, default=(0, 0, 0, 0))
    late = sum(frame[0] > 33 for frame in frames.frames)
    print(f"{what}: {took}{len(frames.frames)} frames, the longest {longest[0]} ms (polish {longest[1]}, sync "
          f"{longest[2]}, render {longest[3]}), {late} over 33 ms", flush=True)
    frames.frames.clear()


def report_times(what, frames, times):
    """Of the same act, done several times."""
    took = sorted(round(time) for time in times)
    report(f"{what}, {len(took)} times: {took[0]} to {took[-1]} ms, {took[len(took) // 2]} in the middle", frames)


def repeated(count, act):
    began = time.monotonic()
    for turn in range(count):
        act(turn)
        time.sleep(max(0.0, began + (turn + 1) / RATE - time.monotonic()))


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    segments = sys.argv[2] if len(sys.argv) > 2 else "10000"
    desktop = PrivateDesktop()
    try:
        os.environ.pop("QT_LINUX_ACCESSIBILITY_ALWAYS_ON")
        yesterday = datetime.date.today() - datetime.timedelta(1)
        trace = desktop.home / "day.jsonl"
        with trace.open("w") as output:
            subprocess.run([HERE / "make_history.py", "2", str(yesterday), segments], stdout=output, check=True)
        subprocess.run([build / "bin" / "velloran-cli", "replay", str(trace)], check=True, stdout=subprocess.DEVNULL)
        os.environ["VELLORAN_CLI"] = str(build / "bin" / "velloran-cli")
        subprocess.run([HERE.parent / "Samples" / "apply_rules.sh"], check=True, stdout=subprocess.DEVNULL)
        subprocess.run([os.environ["VELLORAN_CLI"], "preferences", "set", "stintbook.onboarding.completed", "true"],
                       check=True)

        program = subprocess.Popen(
            [build / "bin" / "velloran"], stderr=subprocess.PIPE, stdout=subprocess.DEVNULL, text=True,
            env=os.environ | {"QT_QUICK_BACKEND": "software",
                              "QT_LOGGING_RULES": "qt.scenegraph.time.renderloop=true"})
        frames = Frames(program)
        eventually(lambda: frames.frames, "a frame")
        subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Velloran$", "windowsize", "1440", "900",
                        "windowmove", "0", "0"], check=True)
        display = Display()
        # The first key of an invented keyboard has the toolkit read that keyboard's map.
        display.press("Shift_L")
        time.sleep(2)
        frames.frames.clear()

        def times_of(*keys):
            """What each key of a sequence takes, with pauses, as of somebody who looks at what it did."""
            for key in keys:
                yield until_still(display, lambda: display.press(key))
                time.sleep(0.3)

        report("open the first day, from an empty one", frames, *times_of("bracketleft"))
        report_times("open another day", frames, times_of(*["bracketleft", "bracketright"] * 5))
        display.point(LIST)
        repeated(180, lambda _: display.button(5))
        report("scroll the list down", frames)
        repeated(180, lambda _: display.button(4))
        report("scroll the list up", frames)
        display.point(TIMELINE)
        display.press("Control_L", [1])
        repeated(60, lambda _: display.button(4))
        report("zoom in", frames)
        display.press("Control_L", [0])
        repeated(120, lambda _: display.button(5))
        report("pan", frames)
        display.press("Control_L", [1])
        repeated(60, lambda _: display.button(5))
        display.press("Control_L", [0])
        report("zoom out", frames)
        time.sleep(0.5)
        until_still(display, lambda: display.press("slash"))
        frames.frames.clear()
        for letter in "rel":
            report(f"search, {letter}", frames, until_still(display, lambda: display.press(letter)))
        until_still(display, lambda: display.press("Escape"))
        display.point(LIST)
        report("select", frames, until_still(display, lambda: display.button(1)))
        report("unresolved only", frames, until_still(display, lambda: display.press("u")))
        report("all", frames, until_still(display, lambda: display.press("u")))
        report_times("ignore and restore", frames, times_of(*["i", "i"] * 5))
        program.terminate()
        program.wait(10)
    finally:
        desktop.close()


if __name__ == "__main__":
    main()
