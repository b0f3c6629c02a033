#!/usr/bin/python3
"""Takes the pictures of Documentation/pictures anew, on a desktop and with sample work of their own.

    Packaging/install-dependencies build test pictures && Packaging/build release velloran velloran-cli
    Samples/take_pictures.py
"""

import os
import pathlib
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
PROGRAMS = pathlib.Path(os.environ.get("VELLORAN_PROGRAMS", ROOT / "build/release/bin"))
PICTURES = ROOT / "Documentation/pictures"
sys.path.insert(0, str(ROOT / "Tests/Screens"))
sys.dont_write_bytecode = True

from private_desktop import PrivateDesktop, StatusItemHost  # noqa: E402

DESKTOP = PrivateDesktop("1400x900")

from screen_reader import BUTTON, ROW, ScreenReader  # noqa: E402


def cli(*words):
    subprocess.run([PROGRAMS / "velloran-cli", *words], check=True, capture_output=True)


class Velloran:
    """Runs with its window as large as it is asked for."""

    def __init__(self, size=(1280, 820), **environment):
        self.size = size
        os.environ.update(environment)
        self.process = DESKTOP.start([str(PROGRAMS / "velloran")])
        for name in environment:
            os.environ.pop(name)
        os.environ["LC_ALL"] = "C.UTF-8"
        self.screen = ScreenReader("velloran")

    def __enter__(self):
        self.screen.wait("frame", "Velloran")
        self.place("^Velloran$", *self.size)
        if self.screen.find(BUTTON, "Dismiss"):
            self.screen.press(BUTTON, "Dismiss")
        return self.screen

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()

    @staticmethod
    def place(title, width, height):
        subprocess.run(["xdotool", "search", "--sync", "--onlyvisible", "--name", title, "windowmove", "0", "0",
                        "windowsize", str(width), str(height)], check=True)
        subprocess.run(["xdotool", "mousemove", "1399", "899"], check=True)


def take(name, title="^Velloran$"):
    time.sleep(1.5)  # for what is still on its way to the screen
    window = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", title], check=True, capture_output=True,
                            text=True).stdout.split()[-1]
    PICTURES.mkdir(parents=True, exist_ok=True)
    subprocess.run(["import", "-window", window, "-depth", "8", str(PICTURES / f"{name}.png")], check=True)


def main():
    os.environ["VELLORAN_CLI"] = str(PROGRAMS / "velloran-cli")
    host = StatusItemHost()

    with Velloran() as screen:
        take("first-steps")
        screen.press(BUTTON, "Skip")
    subprocess.run([ROOT / "Samples/make_demo.py"], check=True, capture_output=True)

    cli("preferences", "set", "velloran.appearance", "light")
    with Velloran() as screen:
        screen.press(BUTTON, "Previous Day")
        screen.keys("Down", "Down", "Down")
        take("review")
        screen.press(BUTTON, "Make rule")
        take("rule-from-work")
        screen.keys("Escape", "ctrl+2")
        screen.wait(BUTTON, "Export…")
        screen.keys("Down", "Down", "Down", "Down", "Down", "Down", "Down", "Down", "space")
        take("records")
        screen.press(BUTTON, "Export…")
        take("export")
        screen.keys("Escape", "ctrl+3")
        screen.press(ROW, "Nordlicht")
        take("clients")
        screen.keys("ctrl+4")
        screen.wait(BUTTON, "Add Rule")
        take("rules")
        screen.keys("ctrl+comma")
        screen.press(BUTTON, "Capture")
        take("settings", "Settings")

    cli("preferences", "set", "velloran.appearance", "dark")
    with Velloran() as screen:
        screen.press(BUTTON, "Previous Day")
        screen.keys("Down", "Down", "Down")
        take("review-dark")
        screen.keys("ctrl+2")
        take("records-dark")
    with Velloran(size=(900, 600)) as screen:
        screen.press(BUTTON, "Previous Day")
        screen.keys("Down", "Down")
        take("review-small")

    cli("preferences", "set", "velloran.appearance", "light")
    with Velloran(LC_ALL="ar_EG.UTF-8") as screen:
        screen.press(BUTTON, "Previous Day")
        screen.keys("Down", "Down")
        take("review-right-to-left")
    del host


try:
    main()
finally:
    sys.stderr.write((DESKTOP.home / "velloran.log").read_text())
    DESKTOP.close()
