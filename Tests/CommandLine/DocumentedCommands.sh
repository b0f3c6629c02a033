#!/bin/bash
# Every command and option of velloran-cli stands in its man page and in the completions of each shell, and every
# command of the man page exists. Takes the program and the source directory.
set -euo pipefail
cli="$1"
source="$2"

man_page="$source/Packaging/velloran-cli.1"
completions=("$source/Packaging/completions/velloran-cli.bash" "$source/Packaging/completions/velloran-cli.fish"
    "$source/Packaging/completions/_velloran-cli")
faults=0
fault() {
    echo "$1" >&2
    faults=$((faults + 1))
}

# The words below a heading of a help text that begin its entries.
entries() { awk -v heading="$1" '/^[A-Za-z]+:$/ { inside = ($0 == heading ":"); next } inside && /^  [^ ]/ { print $1 }'; }
options_of() { "$cli" "$@" --help | grep -oE -- '(^|[ ,])--[a-z][a-z-]*' | grep -oE -- '--[a-z-]+' | sort -u; }

# The man page's entry of a command, in plain letters: "work split DAY ID --at TIME".
documented() {
    sed -e 's/^\.It Xo$//' -e 's/\.\(It\|Op\|Oo\|Cm\) //' "$man_page" |
        sed -e 's/\bFl -/--/g' -e 's/\b\(Ar\|Cm\|Op\|Oo\|Oc\|Ns\) //g' -e 's/ \(Oc\|Ns\)\b//g' |
        awk -v command="$1" '
            index($0, command " ") == 1 || $0 == command { inside = 1; print; next }
            /^--/ && inside { print; next }
            { inside = 0 }'
}

command_words() {
    local noun verb verbs
    for noun in $("$cli" --help | entries Subcommands); do
        verbs="$("$cli" "$noun" --help | entries Subcommands)"
        if [[ -z "$verbs" ]]; then
            echo "$noun"
        else
            for verb in $verbs; do
                echo "$noun $verb"
            done
        fi
    done
}

mapfile -t commands < <(command_words)
if ((${#commands[@]} < 40)); then
    fault "Only ${#commands[@]} commands were found in the help texts: ${commands[*]}"
fi
global="$(options_of)"

for command in "${commands[@]}"; do
    read -ra words <<<"$command"
    entry="$(documented "$command")"
    if [[ -z "$entry" ]]; then
        fault "The man page does not explain '$command'."
    fi
    if [[ "${words[0]}" == export ]]; then
        entry+=" $(grep -A8 '^\.Ar request$' "$man_page" | sed 's/Fl -/--/g')"
    fi
    for completion in "${completions[@]}"; do
        for word in "${words[@]}"; do
            grep -qE -- "(^|[^a-z-])$word([^a-z-]|$)" "$completion" ||
                fault "${completion##*/} does not offer '$word' of '$command'."
        done
    done
    for option in $(comm -23 <(options_of "${words[@]}") <(echo "$global")); do
        grep -qE -- "$option([^a-z-]|$)" <<<"$entry" || fault "The man page has no $option at '$command'."
        for completion in "${completions[@]}"; do
            grep -qE -- "(--|-l )${option#--}([^a-z-]|$)" "$completion" ||
                fault "${completion##*/} does not offer $option of '$command'."
        done
    done
done

for option in $global; do
    grep -q -- "Fl .*-${option#--}" "$man_page" || fault "The man page has no $option."
    for completion in "${completions[@]}"; do
        grep -qE -- "(--|-l )${option#--}([^a-z-]|$)" "$completion" ||
            fault "${completion##*/} does not offer $option."
    done
done

known="$(printf '%s\n' "${commands[@]}")"
while read -r command; do
    grep -qxF -- "$command" <<<"$known" || fault "The man page explains '$command', which is no command."
done < <(awk '
    /^\.Sh/ { inside = ($2 == "COMMANDS") }
    inside && (/^\.It Cm / || (/^\.Cm / && previous == ".It Xo")) {
        words = ""
        for (i = ($1 == ".It" ? 3 : 2); i <= NF && $i ~ /^[a-z][a-z-]*$/; ++i)
            words = words (words == "" ? "" : " ") $i
        print words
    }
    { previous = $0 }' "$man_page")

exit $((faults > 0))
