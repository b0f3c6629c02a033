#!/usr/bin/python3
"""Fills a store with six weeks of a freelancer's work for four clients, up to this moment.

    STINTBOOK_STORE_DIRECTORY=… Samples/make_demo.py

VELLORAN_CLI is the program, if it is not on the PATH. What was done when is drawn from seeds, so that the same date
gives the same days. Of these, the older ones are billed, one of them was changed since, those of last week are ready,
and this week's wait for their user; one holds work that two rules claim.
"""

import contextlib
import datetime
import json
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import zoneinfo

import make_working_day as sample
from make_working_day import CHAT, CHROMIUM, EDITOR, FILES, FIREFOX, IMAGES, MAIL, TERMINAL, WRITER

WEEKS = 6
DRAWING = ("org.inkscape.Inkscape", "Inkscape", 4110)
SHEETS = ("libreoffice-calc", "LibreOffice Calc", 4111)

MATTERS = {name: sample.MATTERS[name]
           for name in ("relaunch", "berth planner", "brochure", "administration", "meeting", "review call", "news")}
MATTERS |= {
    "signage": [
        (DRAWING, "Wayfinding ground floor.svg — Lindqvist", None, 140),
        (DRAWING, "Pictograms.svg — Lindqvist", None, 110),
        (FIREFOX, "Floor plans — Lindqvist Studio", "files.lindqvist.example.com", 50),
        (MAIL, "Re: Lindqvist signage, second round", None, 40),
        (SHEETS, "Sign schedule Lindqvist.ods", None, 70),
    ],
    # Two clients' rules claim the first of these.
    "workshop": [
        (WRITER, "Workshop: planner and relaunch.odt", None, 260),
        (CHAT, "Element", None, 25),
        (EDITOR, "agenda.md — relaunch", None, 60),
    ],
    # No rule knows these.
    "unknown": [
        (FIREFOX, "How tides are predicted", "harmonics.example.net", 90),
        (FILES, "Downloads", None, 30),
        (WRITER, "Talk.odt", None, 120),
    ],
}

# When what is done: (hour, minute, matter) — until the next entry.
PLANS = [
    [(8, 42, "administration"), (9, 6, "relaunch"), (10, 30, "meeting"), (11, 14, "relaunch"), (12, 24, "news"),
     (12, 32, "AWAY"), (13, 14, "berth planner"), (14, 46, "review call"), (15, 20, "berth planner"),
     (17, 4, "administration"), (17, 28, "END")],
    [(9, 2, "signage"), (11, 25, "administration"), (11, 48, "signage"), (12, 40, "AWAY"), (13, 22, "relaunch"),
     (16, 10, "SLEEP"), (16, 36, "relaunch"), (17, 50, "administration"), (18, 5, "END")],
    [(8, 31, "berth planner"), (10, 2, "administration"), (10, 20, "berth planner"), (12, 15, "AWAY"),
     (13, 1, "brochure"), (15, 36, "signage"), (17, 12, "news"), (17, 20, "administration"), (17, 44, "END")],
    [(9, 15, "brochure"), (11, 40, "relaunch"), (12, 55, "AWAY"), (13, 40, "relaunch"), (15, 5, "review call"),
     (15, 38, "berth planner"), (18, 2, "END")],
]
WITH_CONFLICTS = [(9, 4, "administration"), (9, 30, "workshop"), (11, 50, "relaunch"), (12, 41, "AWAY"),
                  (13, 20, "signage"), (15, 2, "workshop"), (15, 50, "unknown"), (16, 25, "berth planner"),
                  (17, 40, "END")]
WITH_UNKNOWN = [(8, 50, "administration"), (9, 20, "signage"), (11, 30, "unknown"), (12, 20, "AWAY"),
                (13, 5, "berth planner"), (15, 30, "relaunch"), (17, 35, "END")]

CLIENTS = [("Nordlicht", "#1F6F8B", "96"), ("Hafenkante", "#C8553D", "88"), ("Lindqvist", "#7A5CB8", "104"),
           ("Own business", "#6B7280", None)]
PROJECTS = [("Nordlicht", "Relaunch"), ("Hafenkante", "Berth planner"), ("Hafenkante", "Brochure", "--rate", "72"),
            ("Lindqvist", "Signage"), ("Own business", "Administration", "--billable", "no")]
# A rule is added at the top, so the general ones come first.
RULES = [
    ("Own business", "Administration", "--application", MAIL[0]),
    ("Own business", "Administration", "--application", CHAT[0]),
    ("Hafenkante", "Brochure", "--application", IMAGES[0]),
    ("Lindqvist", "Signage", "--application", DRAWING[0]),
    ("Nordlicht", "Relaunch", "--domain", "nordlicht.example.org"),
    ("Hafenkante", "Berth planner", "--domain", "hafenkante.example.net"),
    ("Lindqvist", "Signage", "--domain", "lindqvist.example.com"),
    ("Own business", "Administration", "--domain", "office.example.org"),
    ("Nordlicht", "Relaunch", "--title", "relaunch"),
    ("Hafenkante", "Berth planner", "--title", "planner"),
    ("Hafenkante", "Brochure", "--title", "brochure"),
    ("Lindqvist", "Signage", "--application", SHEETS[0], "--title", "lindqvist"),
    ("Own business", "Administration", "--application", WRITER[0], "--title", "Offer 20"),
    ("Nordlicht", "Relaunch", "--application", FIREFOX[0], "--domain", "docs.example.com"),
    ("Hafenkante", "Berth planner", "--application", CHROMIUM[0], "--domain", "docs.example.com"),
]
DESCRIPTIONS = {
    "Relaunch": ["Catalogue search, umlauts", "Catalogue, staging", "Search index", "Issue 218"],
    "Berth planner": ["Tides in the berth plan", "Berths for visitors", "Board, open questions"],
    "Brochure": ["Cover and map", "Typesetting"],
    "Signage": ["Wayfinding, ground floor", "Pictograms", "Sign schedule"],
    "Administration": ["Offers and mail"],
}


def cli(*arguments):
    command = [os.environ.get("VELLORAN_CLI", "velloran-cli"), *arguments]
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        sys.exit(f"{' '.join(command)}: {done.stderr.strip()}")
    return done.stdout


def system_zone():
    if os.environ.get("TZ"):
        return os.environ["TZ"].removeprefix(":")
    target = os.path.realpath("/etc/localtime")
    return target.split("zoneinfo/")[1] if "zoneinfo/" in target else "UTC"


def plan_of(day, today):
    if day == today:
        return PLANS[0]
    if day == last_working_day(today - datetime.timedelta(days=1)):
        return WITH_CONFLICTS
    if day == last_working_day(today - datetime.timedelta(days=2)):
        return WITH_UNKNOWN
    return PLANS[day.toordinal() % len(PLANS)]


def last_working_day(day):
    while day.weekday() > 4:
        day -= datetime.timedelta(days=1)
    return day


def record(day, plan, now):
    """The day as a trace, up to now."""
    draw = sample.RANDOM = random.Random(day.toordinal())
    zone = zoneinfo.ZoneInfo(sample.ZONE)
    late = draw.randint(-9, 9)

    def instant(hour, minute):
        at = datetime.datetime(day.year, day.month, day.day, hour, minute, tzinfo=zone)
        return min((at + datetime.timedelta(minutes=late)).timestamp(), now)

    trace = sample.Trace(instant(*plan[0][:2]))
    for (*_, matter), (hour, minute, _) in zip(plan, plan[1:]):
        end = instant(hour, minute)
        if trace.now >= end:
            break
        if matter == "AWAY":
            trace.until(end, present=False)
        elif matter == "SLEEP":
            trace.sleep(end)
        else:
            stay_until(trace, end, MATTERS[matter], draw)
    trace.emit({"stop": {}})


def stay_until(trace, end, windows, draw):
    while trace.now < end:
        application, title, host, mean = draw.choice(windows)
        trace.show(application, title, host)
        stay = max(5, draw.gammavariate(1.6, 3 * mean / 2.35))
        trace.until(min(end, round(trace.now + stay, 3)))


def replay(days, now, today):
    with tempfile.TemporaryDirectory() as directory:
        for day in days:
            file = pathlib.Path(directory) / f"{day}.jsonl"
            with file.open("w", encoding="utf-8") as stream, contextlib.redirect_stdout(stream):
                record(day, plan_of(day, today), now)
            cli("replay", str(file))


def describe(day):
    """Says of the day's longer work what it was."""
    shown = json.loads(cli("--json", "day", "show", str(day)))
    names = {project["id"]: project["name"] for project in json.loads(cli("--json", "project", "list"))["projects"]}
    draw = random.Random(day.toordinal())
    longest = sorted(shown["blocks"], key=lambda block: block["start"] - block["end"])[:3]
    for block in longest:
        project = names.get(block.get("assignment", {}).get("projectID"))
        if project:
            cli("work", "describe", str(day), block["id"], draw.choice(DESCRIPTIONS[project]))


def main():
    zone = system_zone()
    sample.ZONE = zone
    now = datetime.datetime.now(zoneinfo.ZoneInfo(zone))
    today = now.date()
    monday = today - datetime.timedelta(days=today.weekday())
    first = monday - datetime.timedelta(weeks=WEEKS - 1)
    days = [day for day in (first + datetime.timedelta(days=n) for n in range((today - first).days + 1))
            if day.weekday() < 5 or day == today]
    # Before its first work a day has nothing.
    if days and days[-1] == today and now.hour < 9:
        days.pop()

    cli("preferences", "set", "stintbook.onboarding.completed", "true")
    cli("billing", "currency", "EUR")
    cli("billing", "rounding", "nearest-6m")
    for name, color, rate in CLIENTS:
        cli("client", "add", name, "--color", color, *(["--rate", rate] if rate else []))
    for project in PROJECTS:
        cli("project", "add", *project)
    for client, project, *conditions in RULES:
        cli("rule", "add", "--client", client, "--project", project, *conditions)
    cli("exclude", "add", "--domain", "news.example.net")
    replay(days, now.timestamp(), today)

    ready = [day for day in days if day < min(monday, days[-3] if len(days) > 2 else monday)]
    waiting = [day for day in days if day not in ready]
    for day in ready[-8:] + waiting[:2]:
        describe(day)
    for day in ready:
        cli("day", "ready", str(day))
    billed = [day for day in ready if day < monday - datetime.timedelta(weeks=1)]
    out = pathlib.Path(os.environ["STINTBOOK_STORE_DIRECTORY"]).parent / "timesheet.csv"
    cli("export", "csv", "--from", str(billed[0]), "--to", str(billed[-1]), "--output", str(out))

    # Somebody remembered a call afterwards.
    cli("work", "add", str(billed[-2]), "--from", "20:05", "--to", "20:35", "--client", "Hafenkante", "--project",
        "Berth planner", "--description", "Call: berths for visitors")
    cli("day", "ready", str(billed[-2]))


if __name__ == "__main__":
    main()
