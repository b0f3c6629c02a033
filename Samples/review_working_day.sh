#!/bin/bash
# What a person does to working-day.jsonl in the evening: joins what belongs together, says what it was, adds what
# the computer could not see.
#
# Works on the store that STINTBOOK_STORE_DIRECTORY names, after apply_rules.sh; VELLORAN_CLI is the program, if it
# is not on the PATH.
set -euo pipefail
: "${STINTBOOK_STORE_DIRECTORY:?names the store to review}"
export LC_ALL=C.UTF-8

day="2026-11-18@Europe/Berlin"
cli() { "${VELLORAN_CLI:-velloran-cli}" "$@"; }

# The identifiers of the blocks and items that begin in a span of the day, both ends HH:MM.
work_between() {
    cli day show "$day" | awk -v from="$1:00" -v to="$2:00" '
        length($NF) == 36 && $1 >= from && $1 < to { print $NF }'
}

# Makes one described item of all work that begins in a span of the day.
describe_as_one() {
    local ids
    mapfile -t ids < <(work_between "$1" "$2")
    if ((${#ids[@]} > 1)); then
        cli work merge "$day" "${ids[@]}" >/dev/null
        mapfile -t ids < <(work_between "$1" "$2")
    fi
    cli work describe "$day" "${ids[0]}" "$3" >/dev/null
}

describe_as_one 08:00 09:05 "Offer for the second phase"
describe_as_one 09:05 10:29 "Catalogue search"
describe_as_one 10:29 11:15 "Weekly meeting"
describe_as_one 11:15 12:30 "Catalogue search, umlauts"
describe_as_one 13:00 14:44 "Tides in the berth plan"
describe_as_one 14:44 15:20 "Review call"
describe_as_one 15:20 16:05 "Changes from the review call"
describe_as_one 16:30 17:30 "Cover and map"
describe_as_one 17:30 17:40 "Mail"
describe_as_one 17:40 18:50 "Catalogue search, staging"
describe_as_one 18:50 19:30 "Offer and mail"

# The lid was closed on the way to the library, but the telephone was not.
cli work add "$day" --from 16:08 --to 16:26 --client Hafenkante --project "Berth planner" \
    --description "Call: berths for visitors" >/dev/null
