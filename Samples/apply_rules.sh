#!/bin/bash
# Clients, projects, rates and rules under which every minute of working-day.jsonl finds its place.
#
# Fills the store that STINTBOOK_STORE_DIRECTORY names; VELLORAN_CLI is the program, if it is not on the PATH.
# Two rules that match the same work and disagree are a conflict, which a person has to settle. So each rule here is
# as general as it can be without reaching into work of another project.
set -euo pipefail
: "${STINTBOOK_STORE_DIRECTORY:?names the store to fill}"

cli() { "${VELLORAN_CLI:-velloran-cli}" "$@" >/dev/null; }
rule() {
    local client="$1" project="$2"
    shift 2
    cli rule add --client "$client" --project "$project" "$@"
}

cli billing currency EUR
cli billing rounding nearest-6m

cli client add Nordlicht --color "#1F6F8B" --rate 96
cli project add Nordlicht Relaunch
cli client add Hafenkante --color "#C8553D" --rate 88
cli project add Hafenkante "Berth planner"
cli project add Hafenkante Brochure --rate 72
cli client add "Own business" --color "#6B7280"
cli project add "Own business" Administration --billable no

# A rule is added at the top, so the general ones come first. These name an application, whatever it shows.
rule "Own business" Administration --application org.mozilla.Thunderbird
rule "Own business" Administration --application im.riot.Riot
rule Hafenkante Brochure --application gimp

# A client's hosts, with all below them, in any browser.
rule Nordlicht Relaunch --domain nordlicht.example.org
rule Hafenkante "Berth planner" --domain hafenkante.example.net
rule "Own business" Administration --domain office.example.org

# A title says which matter an editor, a terminal or an office program is about.
rule Nordlicht Relaunch --title relaunch
rule Hafenkante "Berth planner" --title planner
rule Hafenkante Brochure --title brochure
rule "Own business" Administration --application libreoffice-writer --title "Offer 20"

# The same reference pages serve both matters; the browser they are read in tells for which.
rule Nordlicht Relaunch --application firefox-esr --domain docs.example.com
rule Hafenkante "Berth planner" --application chromium --domain docs.example.com

# The morning paper is nobody's work.
cli exclude add --domain news.example.net
