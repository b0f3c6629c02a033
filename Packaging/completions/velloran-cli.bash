# bash completion for velloran-cli

# The names of all clients or projects, in the store that the command line names.
_velloran_cli_names() {
    local index
    local -a store=()
    for ((index = 1; index < COMP_CWORD; ++index)); do
        if [[ ${COMP_WORDS[index]} == --store ]]; then
            store=(--store "${COMP_WORDS[index + 1]}")
        fi
    done
    velloran-cli "${store[@]}" --json "$1" list 2>/dev/null | grep -o '"name":"[^"\\]*"' | cut -d'"' -f4
}

# Offers those of the given lines that begin as the word does; blanks in them are escaped.
_velloran_cli_offer_names() {
    local name typed="${cur//\\/}"
    typed="${typed#[\"\']}"
    while IFS= read -r name; do
        if [[ -n $name && $name == "$typed"* ]]; then
            COMPREPLY+=("$(printf '%q' "$name")")
        fi
    done < <(_velloran_cli_names "$1")
}

_velloran_cli() {
    local cur="${COMP_WORDS[COMP_CWORD]}" previous="${COMP_WORDS[COMP_CWORD - 1]}"
    local global="--store --time-zone --json --help"
    local policies="exact nearest-6m up-to-next-6m nearest-15m up-to-next-15m"
    local days="today yesterday"
    local request="--from --to --mode --fields --client --project"
    local columns="date client project duration timeOfDay description billableState rateAndAmount"
    COMPREPLY=()

    # The command's words and arguments, without options.
    local word index takesValue=false
    local -a words=()
    for ((index = 1; index < COMP_CWORD; ++index)); do
        word="${COMP_WORDS[index]}"
        if $takesValue; then
            takesValue=false
        elif [[ $word == --json || $word == --help || $word == --version || $word == --clipboard ]]; then
            :
        elif [[ $word == --* ]]; then
            takesValue=true
        else
            words+=("$word")
        fi
    done

    local choices=""
    case "$previous" in
    --store)
        mapfile -t COMPREPLY < <(compgen -d -- "$cur")
        return
        ;;
    --trace | --output)
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
        return
        ;;
    --client)
        _velloran_cli_offer_names client
        return
        ;;
    --project)
        _velloran_cli_offer_names project
        return
        ;;
    --time-zone)
        if command -v timedatectl >/dev/null; then
            choices="$(timedatectl list-timezones 2>/dev/null)"
        fi
        ;;
    --billable) choices="yes no" ;;
    --rounding) choices="$policies" ;;
    --mode) choices="detailed summarized" ;;
    --paper) choices="a4 usLetter" ;;
    --fields) choices="$columns" ;;
    --from | --to)
        if [[ ${words[0]:-} != work && ${words[0]:-} != rule ]]; then
            choices="$days"
        fi
        ;;
    --*)
        if $takesValue; then
            return
        fi
        ;;
    esac
    if $takesValue; then
        mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$cur")
        return
    fi

    case "${words[*]:0:2}" in
    "") choices="record replay status pause resume segments day work client project rule exclude billing export
        data preferences store help --version" ;;
    record) choices="--for --trace" ;;
    replay)
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
        return
        ;;
    pause) choices="15m 1h tomorrow until-resume" ;;
    segments*) choices="$days --to" ;;
    day) choices="list show ready" ;;
    "day list") choices="--from --to" ;;
    "day show" | "day ready") choices="$days" ;;
    work) choices="assign confirm ignore restore freeze split merge describe add convert-idle" ;;
    "work assign") choices="$days --client --project --billable" ;;
    "work confirm" | "work ignore" | "work restore" | "work freeze" | "work merge" | "work describe") choices="$days" ;;
    "work split") choices="$days --at" ;;
    "work add") choices="$days --from --to --client --project --billable --description" ;;
    "work convert-idle") choices="$days --client --project --billable --description" ;;
    client) choices="add list rename color archive restore delete rate rounding" ;;
    "client add") choices="--color --rate --rounding" ;;
    "client list") ;;
    project) choices="add list rename billable archive restore delete rate rounding" ;;
    "project list") choices="--client" ;;
    "project add") choices="--billable --rate --rounding" ;;
    rule) choices="add list copy move enable disable delete preview conflicts suggest" ;;
    "rule add") choices="--client --project --application --domain --title --billable" ;;
    "rule move") choices="--to" ;;
    "rule preview") choices="--days" ;;
    "rule suggest") choices="$days --title --client --project" ;;
    exclude) choices="add list delete" ;;
    "exclude add") choices="--application --domain --title" ;;
    billing) choices="show currency rounding" ;;
    "billing currency") choices="none" ;;
    "billing rounding") choices="$policies none" ;;
    export) choices="csv pdf summary preview history show" ;;
    "export csv") choices="$request --output" ;;
    "export pdf") choices="$request --output --paper" ;;
    "export show") choices="--output --paper" ;;
    "export summary") choices="$request --clipboard" ;;
    "export preview") choices="$request" ;;
    data) choices="export import delete retention cleanup" ;;
    "data export" | "data import")
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
        return
        ;;
    "data delete") choices="--from --to --all --yes" ;;
    "data retention") choices="forever --yes" ;;
    preferences) choices="list set" ;;
    "preferences set")
        case "${#words[@]} ${words[2]:-}" in
        2*) choices="stintbook.onboarding.completed
            stintbook.capture.titleContext
            stintbook.capture.browserContext
            stintbook.privacy.retentionDays
            stintbook.privacy.automaticCleanup
            stintbook.export.defaultMode
            stintbook.export.fields.summary
            stintbook.export.fields.detailed
            velloran.appearance
            velloran.opensWindowAtLogin" ;;
        3*defaultMode) choices="summarized detailed" ;;
        3*retentionDays) choices="forever" ;;
        3*fields*) choices="standard" ;;
        3*appearance) choices="system light dark" ;;
        3*) choices="true false" ;;
        esac
        ;;
    store) choices="info check" ;;
    help) choices="record replay status pause resume segments day work client project rule exclude billing export
        data preferences store" ;;
    esac

    # The first argument of what concerns one client or project is its name; the second may be a choice.
    if [[ $cur != -* ]]; then
        case "${#words[@]} ${words[*]:0:2}" in
        "2 client "* | "2 project add")
            if [[ ${words[1]} != add || ${words[0]} == project ]]; then
                _velloran_cli_offer_names client
                return
            fi
            ;;
        "2 project list") ;;
        "2 project "*)
            _velloran_cli_offer_names project
            return
            ;;
        "3 client rounding" | "3 project rounding") choices="$policies none" ;;
        "3 client rate" | "3 project rate" | "3 client color") choices="none" ;;
        "3 project billable") choices="yes no" ;;
        esac
    fi

    if [[ $cur == -* ]]; then
        choices+=" $global"
    fi
    mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$cur")
}

complete -F _velloran_cli velloran-cli
