#!/usr/bin/python3
"""Writes a trace of many working days that end on 2026-11-18, or on a date of one's own:

    make_history.py DAYS [LAST_DATE [SWITCHES]] > history.jsonl

A day has 959 switches between eight and six with a sample of idleness every 15 seconds, as 350,000 switches a year
ask for; the computer sleeps in between. A day's content depends on its date alone, so that the last day is the same
however much history there is before it.
"""

import argparse
import datetime
import pathlib
import random
import sys
import zoneinfo

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "Samples"))
import make_working_day as sample  # noqa: E402

LAST_DAY = "2026-11-18"
SWITCHES_A_DAY = 959
WORK_SECONDS = 10 * 3600
WINDOWS = [window for matter in sample.MATTERS.values() for window in matter]


def write_day(trace, date, switches):
    sample.RANDOM = random.Random(date.toordinal())
    start = datetime.datetime(date.year, date.month, date.day, 8, tzinfo=zoneinfo.ZoneInfo(sample.ZONE)).timestamp()
    trace.sleep(start)
    previous = None
    for switch in range(switches):
        window = sample.RANDOM.choice([other for other in WINDOWS if other is not previous])
        previous = window
        trace.show(*window[:3])
        trace.until(round(start + (switch + 1) * WORK_SECONDS / switches, 3))


def main():
    words = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    words.add_argument("days", type=int)
    words.add_argument("last", type=datetime.date.fromisoformat, nargs="?", default=LAST_DAY)
    words.add_argument("switches", type=int, nargs="?", default=SWITCHES_A_DAY)
    wanted = words.parse_args()
    first = wanted.last - datetime.timedelta(wanted.days - 1)
    trace = sample.Trace(datetime.datetime(first.year, first.month, first.day, 7, 59,
                                           tzinfo=zoneinfo.ZoneInfo(sample.ZONE)).timestamp())
    for day in range(wanted.days):
        write_day(trace, first + datetime.timedelta(day), wanted.switches)
    trace.emit({"stop": {}})


if __name__ == "__main__":
    main()
