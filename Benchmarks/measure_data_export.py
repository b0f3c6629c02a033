#!/usr/bin/python3
"""Measures a data export of long history against the sqlite3 shell, and reads it back: measure_data_export.py
build/release/bin/velloran-cli [MONTHS]

Replays one month and copies it in SQL until there are MONTHS (122, 3.5 million segments), which takes about 2 GB and
as much again for each copy of the data. Set TMPDIR to a disk that has it. Both programs write to a file there, turn by
turn, as whole processes.
"""

import pathlib
import shutil
import sqlite3
import statistics
import sys
import tempfile

from measure_processes import measured, with_history

MONTH = 30 * 86400
ROUNDS = 3
# What a `Segment` of the document holds.
SEGMENTS = """SELECT hex(s.id) AS id, s.start, s."end", s.kindRaw AS kind, s.gapReasonRaw AS gapReason,
 s.bundleIdentifier, s.applicationName, s.contextKindRaw, s.contextTitle, s.evidenceRaw AS evidence,
 s.originRaw AS origin, s.timeZoneIdentifier, s.utcOffsetSeconds, d.host AS browserDomain
 FROM ActivitySegment s LEFT JOIN SegmentBrowserDomain d ON d.segmentID = s.id ORDER BY s.start, s."end", s.id"""


def earlier(identifier, months):
    """An identifier that begins with the time of its making, as of so many months before."""
    milliseconds = int.from_bytes(identifier[:6], "big") - months * MONTH * 1000
    return milliseconds.to_bytes(6, "big") + bytes([(identifier[6] + months) % 256]) + identifier[7:]


def multiply(store, months):
    database = sqlite3.connect(store)
    database.create_function("earlier", 2, earlier, deterministic=True)
    database.execute("CREATE TEMP TABLE Month AS SELECT * FROM ActivitySegment")
    database.execute("CREATE TEMP TABLE MonthDomain AS SELECT * FROM SegmentBrowserDomain")
    for month in range(months - 1, 0, -1):
        database.execute('INSERT INTO ActivitySegment SELECT earlier(id, ?1), start - ?2, "end" - ?2, kindRaw,'
                         " gapReasonRaw, bundleIdentifier, applicationName, contextKindRaw, contextTitle, evidenceRaw,"
                         " originRaw, timeZoneIdentifier, utcOffsetSeconds FROM Month", (month, month * MONTH))
        database.execute("INSERT INTO SegmentBrowserDomain SELECT earlier(segmentID, ?1), host FROM MonthDomain",
                         (month,))
        database.commit()
    count = database.execute("SELECT count(*) FROM ActivitySegment").fetchone()[0]
    database.execute("PRAGMA wal_checkpoint(TRUNCATE)")
    database.close()
    return count


def report(name, runs, file):
    wall, processor, memory = (statistics.median(column) for column in zip(*runs))
    print(f"{name}: {wall:.1f} s ({processor:.1f} s of processor time), {memory:.0f} MB, "
          f"{file.stat().st_size / 1e6:.0f} MB written", flush=True)


def main():
    program = str(pathlib.Path(sys.argv[1]).resolve())
    months = int(sys.argv[2]) if len(sys.argv) > 2 else 122
    with tempfile.TemporaryDirectory() as name:
        directory = pathlib.Path(name)
        environment, _ = with_history(program, directory, "store", 30)
        store = directory / "store" / "Velloran.store"
        print(f"{multiply(store, months)} segments", flush=True)
        _, _, idle = measured([program, "client", "list"], environment)
        document, dump, again = (directory / name for name in ("data.json", "dump.json", "again.json"))
        exports, dumps = [], []
        for _ in range(ROUNDS):
            with dump.open("w") as output:
                dumps.append(measured(["sqlite3", "-json", str(store), SEGMENTS], environment, output))
            exports.append(measured([program, "data", "export", str(document)], environment))
        report("sqlite3 -json", dumps, dump)
        report("data export", exports, document)
        print(f"data export, above a command that reads no history: {max(run[2] for run in exports) - idle:.0f} MB",
              flush=True)

        shutil.rmtree(directory / "store")
        report("data import", [measured([program, "data", "import", str(document)], environment)], document)
        measured([program, "data", "export", str(again)], environment)
        with document.open() as first, again.open() as second:
            differing = sum(one != other for one, other in zip(first, second, strict=True))
        print(f"lines of the document that differ after import and export: {differing}")


if __name__ == "__main__":
    main()
