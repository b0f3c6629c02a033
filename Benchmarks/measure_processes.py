#!/usr/bin/python3
"""Measures velloran-cli as whole processes: measure_processes.py build/release/bin/velloran-cli [YEARS]

Replays a year, then shows one day out of a month and the same day out of YEARS (10) years of history, and, where
there is a display, watches a recorder for a minute. Everything happens in a temporary directory, which takes about
3 GB for ten years.
"""

import os
import pathlib
import signal
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).parent
DAY = "2026-11-18@Europe/Berlin"
RUNS = 41


def peak_memory(process):
    """In KB so far; nothing once it has ended. (What wait4 tells of a child includes the one that started it.)"""
    status = pathlib.Path(f"/proc/{process.pid}/status").read_text()
    return next((int(line.split()[1]) for line in status.splitlines() if line.startswith("VmHWM")), 0)


def measured(command, environment, output=subprocess.DEVNULL):
    """Wall-clock seconds, processor seconds and greatest resident size in MB of one process."""
    began = time.monotonic()
    process = subprocess.Popen(command, env=environment, stdout=output)
    peak = ended = 0
    while not ended:
        peak = max(peak, peak_memory(process))
        time.sleep(0.002)
        ended, status, usage = os.wait4(process.pid, os.WNOHANG)
    if status != 0:
        sys.exit(f"{' '.join(map(str, command))} failed.")
    return time.monotonic() - began, usage.ru_utime + usage.ru_stime, peak / 1024


def with_history(program, directory, name, days):
    """The environment of a store that holds so many days, and what filling it took."""
    trace = directory / "trace.jsonl"
    with trace.open("w") as output:
        subprocess.run([HERE / "make_history.py", str(days)], stdout=output, check=True)
    environment = os.environ | {"STINTBOOK_STORE_DIRECTORY": str(directory / name),
                                "VELLORAN_CLI": program, "XDG_CONFIG_HOME": str(directory)}
    figures = measured([program, "replay", str(trace)], environment)
    trace.unlink()
    subprocess.run([HERE.parent / "Samples" / "apply_rules.sh"], env=environment, check=True)
    return environment, figures


def median_times(program, environments, *command):
    """In milliseconds of processor time; the stores take turns, so that a busy machine slows all of them."""
    times = [[measured([program, *command], environment)[1] for environment in environments]
             for _ in range(RUNS)]
    return [statistics.median(column) * 1000 for column in zip(*times)]


def watch_deletion(program, environment):
    """Deletes the year 2020; seconds in all, and the longest stretch in which nobody else could write."""
    writer = sqlite3.connect(pathlib.Path(environment["STINTBOOK_STORE_DIRECTORY"]) / "Velloran.store", timeout=0,
                             isolation_level=None)
    began = free = time.monotonic()
    longest = 0
    deletion = subprocess.Popen([program, "data", "delete", "--from", "2020-01-01", "--to", "2020-12-31", "--yes"],
                                env=environment, stdout=subprocess.DEVNULL)
    while deletion.poll() is None:
        try:
            writer.execute("BEGIN IMMEDIATE")
            writer.execute("ROLLBACK")
            longest, free = max(longest, time.monotonic() - free), time.monotonic()
        except sqlite3.OperationalError:
            pass
        time.sleep(0.01)
    if deletion.returncode != 0:
        sys.exit("The deletion failed.")
    return time.monotonic() - began, max(longest, time.monotonic() - free)


def watch_recorder(program, directory):
    environment = os.environ | {"STINTBOOK_STORE_DIRECTORY": str(directory / "recorded"),
                                "XDG_CONFIG_HOME": str(directory)}
    recorder = subprocess.Popen([program, "record"], env=environment, stdout=subprocess.DEVNULL)
    status = pathlib.Path(f"/proc/{recorder.pid}/status")

    def field(name):
        return next(int(line.split()[1]) for line in status.read_text().splitlines() if line.startswith(name))

    def wake_ups():
        return sum(int(line.split()[1]) for task in pathlib.Path(f"/proc/{recorder.pid}/task").iterdir()
                   for line in (task / "status").read_text().splitlines()
                   if line.startswith("voluntary_ctxt_switches"))

    time.sleep(10)
    before = wake_ups()
    time.sleep(60)
    print(f"record: {field('VmRSS') / 1024:.1f} MB resident, {(wake_ups() - before) / 60:.2f} wake-ups a second")
    recorder.send_signal(signal.SIGTERM)
    recorder.wait()


def main():
    program = str(pathlib.Path(sys.argv[1]).resolve())
    years = int(sys.argv[2]) if len(sys.argv) > 2 else 10
    with tempfile.TemporaryDirectory() as name:
        directory = pathlib.Path(name)
        _, (seconds, processor, megabytes) = with_history(program, directory, "year", 365)
        print(f"replay of a year, 350,000 switches: {seconds:.1f} s ({processor:.1f} s of processor time), "
              f"{megabytes:.0f} MB", flush=True)

        month, _ = with_history(program, directory, "month", 30)
        long, _ = with_history(program, directory, "long", 365 * years)
        for command in (("segments", DAY), ("segments", DAY, "--json"), ("day", "show", DAY),
                        ("day", "show", DAY, "--json")):
            short_time, long_time = median_times(program, (month, long), *command)
            print(f"{' '.join(command).replace(DAY, 'DAY')}: {short_time:.1f} ms in a month's store, "
                  f"{long_time:.1f} ms in one of {years} years", flush=True)
        if years >= 8:
            seconds, longest = watch_deletion(program, long)
            print(f"a year deleted out of {years}: {seconds:.1f} s, others kept from writing for {longest:.1f} s",
                  flush=True)
        if os.environ.get("DISPLAY") or os.environ.get("WAYLAND_DISPLAY"):
            watch_recorder(program, directory)


if __name__ == "__main__":
    main()
