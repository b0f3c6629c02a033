#!/bin/bash
# The sample day goes the whole way, from its trace over rules and review to what it bills. Takes the program and the
# source directory.
set -euo pipefail
export VELLORAN_CLI="$1" LC_ALL=C.UTF-8
source="$2"

directory="$(mktemp -d)"
trap 'rm -rf "$directory"' EXIT
export STINTBOOK_STORE_DIRECTORY="$directory/store" XDG_CONFIG_HOME="$directory"
day="2026-11-18@Europe/Berlin"
export_as() { "$VELLORAN_CLI" export "$@" --from "$day" --to "$day" | sed 's/\xc2\xa0/ /g; s/\r$//'; }

# The generator still writes the trace that lies beside it.
python3 "$source/Samples/make_working_day.py" 2>/dev/null | cmp - "$source/Samples/working-day.jsonl"

"$VELLORAN_CLI" replay "$source/Samples/working-day.jsonl"
"$source/Samples/apply_rules.sh"
"$source/Samples/review_working_day.sh"
"$VELLORAN_CLI" day ready "$day"

diff - <(export_as summary --mode summarized) <<'END'
Timesheet · 2026-11-18
Own business / Administration — 42 min
Nordlicht / Relaunch — 4 h 30 min · € 432.00
Hafenkante / Berth planner — 3 h 12 min · € 281.60
Hafenkante / Brochure — 1 h · € 72.00
Total: 9 h 24 min
Reviewed total: 9 h 19 min
Amount: € 785.60
Billed to the nearest 6 minutes
END

diff - <(export_as csv --mode detailed --fields description,rateAndAmount --client Hafenkante |
    cut -d, -f 3-5,11) <<'END'
project,description,actual_seconds,amount
Berth planner,Tides in the berth plan,5580,140.8
Berth planner,Review call,2199,52.8
Berth planner,Changes from the review call,2421,61.6
Berth planner,Call: berths for visitors,1080,26.4
Brochure,Cover and map,3529,72
END
