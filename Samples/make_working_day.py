#!/usr/bin/python3
"""Writes working-day.jsonl: one believable day of a freelance developer, about 700 switches.

The day is drawn from a fixed seed, so that running this again gives the same bytes:

    Samples/make_working_day.py > Samples/working-day.jsonl
"""

import datetime
import json
import random
import zoneinfo

ZONE = "Europe/Berlin"
DAY = datetime.datetime(2026, 11, 18, tzinfo=zoneinfo.ZoneInfo(ZONE))

EDITOR = ("org.kde.kate", "Kate", 4101)
TERMINAL = ("org.kde.konsole", "Konsole", 4102)
MAIL = ("org.mozilla.Thunderbird", "Thunderbird", 4103)
WRITER = ("libreoffice-writer", "LibreOffice Writer", 4104)
IMAGES = ("gimp", "GNU Image Manipulation Program", 4105)
CHAT = ("im.riot.Riot", "Element", 4106)
FILES = ("org.gnome.Nautilus", "Files", 4107)
FIREFOX = ("firefox-esr", "Firefox ESR", 4108)
CHROMIUM = ("chromium", "Chromium", 4109)

# What a stretch of work on one matter looks like: (application, title, host, mean seconds in front).
MATTERS = {
    "relaunch": [
        (EDITOR, "catalogue.tsx — relaunch", None, 95),
        (EDITOR, "search-index.ts — relaunch", None, 80),
        (TERMINAL, "relaunch: npm run dev", None, 25),
        (TERMINAL, "relaunch: git", None, 20),
        (FIREFOX, "Catalogue — Nordlicht (staging)", "staging.nordlicht.example.org", 40),
        (FIREFOX, "Issue 218: search ignores umlauts", "tickets.nordlicht.example.org", 45),
        (FIREFOX, "Array.prototype.toSorted", "docs.example.com", 30),
    ],
    "berth planner": [
        (EDITOR, "berths.rs — planner", None, 90),
        (EDITOR, "tides.rs — planner", None, 85),
        (TERMINAL, "planner: cargo test", None, 30),
        (CHROMIUM, "Berth planner — board", "board.hafenkante.example.net", 45),
        (CHROMIUM, "Tide tables — Hafenkante wiki", "wiki.hafenkante.example.net", 40),
        (CHROMIUM, "serde attributes", "docs.example.com", 25),
    ],
    "brochure": [
        (IMAGES, "cover-final.xcf", None, 120),
        (IMAGES, "map-inset.xcf", None, 90),
        (WRITER, "Brochure Hafenkante.odt", None, 100),
        (FILES, "Hafenkante brochure", None, 15),
    ],
    "administration": [
        (MAIL, "Inbox", None, 45),
        (MAIL, "Write: Re: offer for the second phase", None, 80),
        (CHAT, "Element", None, 20),
        (WRITER, "Offer 2026-031.odt", None, 90),
        (FIREFOX, "Tax calendar", "office.example.org", 35),
    ],
    "meeting": [
        (FIREFOX, "Nordlicht weekly", "meet.nordlicht.example.org", 420),
        (EDITOR, "notes-weekly.md — relaunch", None, 45),
    ],
    "review call": [
        (CHROMIUM, "Planner review call", "meet.hafenkante.example.net", 380),
        (CHROMIUM, "Berth planner — board", "board.hafenkante.example.net", 40),
    ],
    "news": [
        (FIREFOX, "Morning paper", "news.example.net", 60),
    ],
}

# When what is done: (hour, minute, matter) — until the next entry.
PLAN = [
    (8, 41, "administration"),
    (9, 5, "relaunch"),
    (10, 30, "meeting"),
    (11, 14, "relaunch"),
    (12, 22, "news"),
    (12, 31, "AWAY"),       # lunch: the screen stays on, nobody is there
    (13, 12, "berth planner"),
    (14, 45, "review call"),
    (15, 20, "berth planner"),
    (16, 2, "SLEEP"),       # lid closed on the way to the library
    (16, 34, "brochure"),
    (17, 25, "administration"),
    (17, 40, "relaunch"),
    (18, 52, "administration"),
    (19, 4, "END"),
]

IDLE_POLL = 15
BROWSERS = (FIREFOX[0], CHROMIUM[0])


class Trace:
    def __init__(self, start):
        self.now = start
        self.last_input = start
        self.awake = 5207.25
        self.next_poll = start + IDLE_POLL
        self.front = None
        self.switches = 0
        self.emit({"start": {"timeZone": ZONE, "browserContextEnabled": True}})

    def emit(self, what):
        print(json.dumps({"at": self.now, **what}, ensure_ascii=False, separators=(",", ":")))

    def until(self, instant, present=True):
        """Lets time pass, with a sample of idleness every poll interval."""
        while self.next_poll <= instant:
            self.awake += self.next_poll - self.now
            self.now = self.next_poll
            if present:
                self.last_input = self.now - round(RANDOM.random() * 6, 3)
            idle = round(self.now - self.last_input, 3)
            self.emit({"idleSample": {"idleSeconds": idle, "awakeSeconds": round(self.awake, 3)}})
            self.next_poll += IDLE_POLL
        self.awake += instant - self.now
        self.now = instant

    def show(self, application, title, host):
        identifier, name, process = application
        if self.front == (identifier, title):
            return
        self.front = (identifier, title)
        self.last_input = self.now
        self.switches += 1
        self.emit({"frontmost": {"bundleIdentifier": identifier, "displayName": name,
                                 "processIdentifier": process, "windowTitle": title}})
        if identifier in BROWSERS:
            self.emit({"browserDomain": {"reading": "domain", "host": host, "browser": identifier}})

    def sleep(self, wake):
        self.emit({"suspended": "systemSleep"})
        self.now = wake
        self.last_input = wake
        self.emit({"resumed": "systemWake"})
        self.next_poll = wake + 5


def instant(hour, minute):
    return DAY.replace(hour=hour, minute=minute).timestamp()


RANDOM = random.Random(20261118)


def main():
    trace = Trace(instant(*PLAN[0][:2]))
    for (hour, minute, matter), (next_hour, next_minute, _) in zip(PLAN, PLAN[1:]):
        end = instant(next_hour, next_minute)
        if matter == "AWAY":
            trace.until(end, present=False)
            continue
        if matter == "SLEEP":
            trace.sleep(end)
            continue
        windows = MATTERS[matter]
        while trace.now < end:
            application, title, host, mean = RANDOM.choice(windows)
            trace.show(application, title, host)
            stay = round(max(3, RANDOM.gammavariate(1.6, mean / 2.35)), 3)
            trace.until(min(end, round(trace.now + stay, 3)))
    trace.emit({"stop": {}})
    return trace.switches


if __name__ == "__main__":
    import sys
    print(main(), "switches", file=sys.stderr)
