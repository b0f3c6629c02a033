# fish completion for velloran-cli

# The command's words and arguments so far, without options and their values.
function __velloran_cli_words
    set -l takes_value 0
    for word in (commandline -opc)[2..]
        if test $takes_value = 1
            set takes_value 0
        else if contains -- $word --json --help --version --clipboard
        else if string match -q -- '--*=*' $word
        else if string match -q -- '--*' $word
            set takes_value 1
        else
            echo $word
        end
    end
end

# True when the command is exactly this, and as many arguments follow it as said.
function __velloran_cli_at -a count
    set -l words (__velloran_cli_words)
    set -l command $argv[2..]
    test (count $words) -eq (math $count + (count $command)); or return 1
    test -z "$command"; or __velloran_cli_in $command
end

# True when the command begins like this.
function __velloran_cli_in
    set -l words (__velloran_cli_words)
    test (count $words) -ge (count $argv); or return 1
    test "$words[1..$(count $argv)]" = "$argv"
end

function __velloran_cli_any_in
    for command in $argv
        __velloran_cli_in (string split ' ' $command); and return 0
    end
    return 1
end

# The names of all clients or projects, in the store that the command line names.
function __velloran_cli_names -a kind
    set -l words (commandline -opc)
    set -l store
    if set -l index (contains -i -- --store $words)
        set store --store $words[(math $index + 1)]
    end
    velloran-cli $store --json $kind list 2>/dev/null | string match -ar '"name":"[^"\\\\]*"' | string split -f4 '"'
end

function __velloran_cli_command -a noun verb description
    complete -c velloran-cli -n "__velloran_cli_at 0 $noun" -a $verb -d $description
end

set -l policies exact nearest-6m up-to-next-6m nearest-15m up-to-next-15m

complete -c velloran-cli -f
complete -c velloran-cli -l store -x -a '(__fish_complete_directories)' -d 'The directory of the store'
complete -c velloran-cli -l time-zone -x -a '(timedatectl list-timezones 2>/dev/null)' -d 'The zone that cuts time into days'
complete -c velloran-cli -l json -d 'Print one JSON document'
complete -c velloran-cli -l help -s h -d 'Explain the command'
complete -c velloran-cli -n '__velloran_cli_at 0' -l version -d 'Print the version'

__velloran_cli_command '' record 'Record until interrupted'
__velloran_cli_command '' replay 'Run a trace into the store'
__velloran_cli_command '' status 'What the running copy is doing'
__velloran_cli_command '' pause 'Pause recording'
__velloran_cli_command '' resume 'Resume recording'
__velloran_cli_command '' segments 'What was recorded on a day'
__velloran_cli_command '' day 'Days under review'
__velloran_cli_command '' work "Review a day's work"
__velloran_cli_command '' client Clients
__velloran_cli_command '' project 'Projects of clients'
__velloran_cli_command '' rule 'Rules that attribute work'
__velloran_cli_command '' exclude 'Rules that keep work out of review'
__velloran_cli_command '' billing 'Currency and rounding of the whole ledger'
__velloran_cli_command '' export 'Bill ready work'
__velloran_cli_command '' data 'Everything that was recorded, as a whole'
__velloran_cli_command '' preferences 'What is recorded and kept, and how exports begin'
__velloran_cli_command '' store 'Where everything is kept'
__velloran_cli_command '' help 'Explain a command'

complete -c velloran-cli -n '__velloran_cli_in record' -l for -x -d 'Stop by itself after so many seconds'
complete -c velloran-cli -n '__velloran_cli_in record' -l trace -r -F -d 'Also write a trace'
complete -c velloran-cli -n '__velloran_cli_at 0 replay' -F
complete -c velloran-cli -n '__velloran_cli_at 0 pause' -a '15m 1h tomorrow until-resume'

complete -c velloran-cli -n '__velloran_cli_at 0 segments' -a 'today yesterday'
complete -c velloran-cli -n '__velloran_cli_in segments' -l to -x -a 'today yesterday' -d 'The last day of a range'
__velloran_cli_command day list 'Days with recorded or reviewed work'
__velloran_cli_command day show "A day's blocks, items and totals"
__velloran_cli_command day ready "Freeze a day's work and mark it ready to bill"
complete -c velloran-cli -n '__velloran_cli_at 0 day show; or __velloran_cli_at 0 day ready' -a 'today yesterday'

__velloran_cli_command work assign 'Assign work to a client and project'
__velloran_cli_command work confirm 'Keep what blocks are attributed to'
__velloran_cli_command work ignore 'Mark as not work'
__velloran_cli_command work restore 'Restore what was marked as not work'
__velloran_cli_command work freeze 'Make blocks reviewed items'
__velloran_cli_command work split 'Cut a block or item in two'
__velloran_cli_command work merge 'Make one item of adjacent work'
__velloran_cli_command work describe 'Describe work'
__velloran_cli_command work add 'Add missing work'
__velloran_cli_command work convert-idle 'Make work of idle time'
for verb in assign confirm ignore restore freeze split merge describe add convert-idle
    complete -c velloran-cli -n "__velloran_cli_at 0 work $verb" -a 'today yesterday'
end
complete -c velloran-cli -n '__velloran_cli_in work split' -l at -x -d 'Where to cut'
complete -c velloran-cli -n '__velloran_cli_in work add' -l from -x -d 'Its start'
complete -c velloran-cli -n '__velloran_cli_in work add' -l to -x -d 'Its end'
complete -c velloran-cli -n '__velloran_cli_any_in "work add" "work convert-idle"' -l description -x -d 'What was done'

set -l targeting '__velloran_cli_any_in "work assign" "work add" "work convert-idle" "rule add"'
complete -c velloran-cli -n "$targeting" -l client -x -a '(__velloran_cli_names client)' -d 'The client'
complete -c velloran-cli -n "$targeting" -l project -x -a '(__velloran_cli_names project)' -d 'The project'
complete -c velloran-cli -n "$targeting; or __velloran_cli_in project add" -l billable -x -a 'yes no' -d 'Whether it is billed'

__velloran_cli_command client add 'Add a client'
__velloran_cli_command client list 'All clients'
__velloran_cli_command client rename "Change a client's name"
__velloran_cli_command client color "Change a client's colour"
__velloran_cli_command client archive "Keep a client's history, but give it no new work"
__velloran_cli_command client restore 'Take a client out of the archive'
__velloran_cli_command client delete 'Delete a client that nothing recorded names'
__velloran_cli_command client rate 'Set what an hour costs'
__velloran_cli_command client rounding 'Set how time is rounded'
__velloran_cli_command project add 'Add a project to a client'
__velloran_cli_command project list 'All projects, or those of a client'
__velloran_cli_command project rename "Change a project's name"
__velloran_cli_command project billable 'Set whether its work is billed'
__velloran_cli_command project archive "Keep a project's history, but give it no new work"
__velloran_cli_command project restore 'Take a project out of the archive'
__velloran_cli_command project delete 'Delete a project that nothing recorded names'
__velloran_cli_command project rate 'Set what an hour costs'
__velloran_cli_command project rounding 'Set how time is rounded'
for verb in rename color archive restore delete rate rounding
    complete -c velloran-cli -n "__velloran_cli_at 0 client $verb" -a '(__velloran_cli_names client)'
end
for verb in rename billable archive restore delete rate rounding
    complete -c velloran-cli -n "__velloran_cli_at 0 project $verb" -a '(__velloran_cli_names project)'
end
complete -c velloran-cli -n '__velloran_cli_at 0 project add' -a '(__velloran_cli_names client)'
for noun in client project
    complete -c velloran-cli -n "__velloran_cli_at 1 $noun rate" -a none
    complete -c velloran-cli -n "__velloran_cli_at 1 $noun rounding" -a "$policies none"
    complete -c velloran-cli -n "__velloran_cli_in $noun add" -l rate -x -d 'Money an hour'
    complete -c velloran-cli -n "__velloran_cli_in $noun add" -l rounding -x -a "$policies" -d 'How its time is rounded'
end
complete -c velloran-cli -n '__velloran_cli_at 1 client color' -a none
complete -c velloran-cli -n '__velloran_cli_at 1 project billable' -a 'yes no'
complete -c velloran-cli -n '__velloran_cli_in client add' -l color -x -d 'Its colour, as #1A2B3C'
complete -c velloran-cli -n '__velloran_cli_in project list' -l client -x -a '(__velloran_cli_names client)' -d "Only this client's"

__velloran_cli_command rule add 'Add a rule at the top of the list'
__velloran_cli_command rule list 'All rules, in order'
__velloran_cli_command rule copy 'Copy a rule, directly below it'
__velloran_cli_command rule move 'Move a rule to a place in the list, counted from 1'
__velloran_cli_command rule enable 'Turn a rule on'
__velloran_cli_command rule disable 'Turn a rule off'
__velloran_cli_command rule delete 'Delete a rule'
__velloran_cli_command rule preview 'How much each rule attributes and loses'
__velloran_cli_command rule conflicts 'Rules that disagree about the same work'
__velloran_cli_command rule suggest 'The rule that would have attributed work so'
__velloran_cli_command exclude add 'Add an exclusion'
__velloran_cli_command exclude list 'All exclusions'
__velloran_cli_command exclude delete 'Delete an exclusion'
set -l matching '__velloran_cli_any_in "rule add" "exclude add"'
complete -c velloran-cli -n "$matching" -l application -x -d 'Exactly this application'
complete -c velloran-cli -n "$matching" -l domain -x -d 'This host and its subdomains'
complete -c velloran-cli -n "$matching" -l title -x -d 'A title that contains this text'
complete -c velloran-cli -n '__velloran_cli_in rule preview' -l days -x -d 'How many days up to today'
complete -c velloran-cli -n '__velloran_cli_in rule suggest' -l title -x -d 'Only with these words in the title'
complete -c velloran-cli -n '__velloran_cli_in rule suggest' -l client -x -a '(__velloran_cli_names client)' -d 'Instead of whom it is for'
complete -c velloran-cli -n '__velloran_cli_in rule suggest' -l project -x -a '(__velloran_cli_names project)' -d 'Instead of what it is for'
complete -c velloran-cli -n '__velloran_cli_at 0 rule suggest' -a 'today yesterday'
complete -c velloran-cli -n '__velloran_cli_in rule move' -l to -x -d 'Where it is to stand'

__velloran_cli_command billing show 'What is set'
__velloran_cli_command billing currency 'Set the currency'
__velloran_cli_command billing rounding 'Set how time is rounded where neither client nor project says so'
complete -c velloran-cli -n '__velloran_cli_at 0 billing currency' -a none
complete -c velloran-cli -n '__velloran_cli_at 0 billing rounding' -a "$policies none"

__velloran_cli_command export csv 'Ready work as CSV'
__velloran_cli_command export pdf 'Ready work as a timesheet to print or to send'
__velloran_cli_command export summary 'Ready work as a short text'
__velloran_cli_command export preview 'What an export would hold; records nothing'
__velloran_cli_command export history 'Every delivered export, newest first'
__velloran_cli_command export show 'A delivered export as it was'
set -l requesting '__velloran_cli_any_in "export csv" "export pdf" "export summary" "export preview"'
complete -c velloran-cli -n "$requesting; or __velloran_cli_in day list" -l from -x -a 'today yesterday' -d 'The first day'
complete -c velloran-cli -n "$requesting; or __velloran_cli_in day list" -l to -x -a 'today yesterday' -d 'The last day'
complete -c velloran-cli -n "$requesting" -l mode -x -a 'detailed summarized' -d 'A row an item, or a row a group of equal terms'
complete -c velloran-cli -n "$requesting" -l fields -x -d 'Columns, separated by commas' \
    -a 'date client project duration timeOfDay description billableState rateAndAmount'
complete -c velloran-cli -n "$requesting" -l client -x -a '(__velloran_cli_names client)' -d "Only this client's work"
complete -c velloran-cli -n "$requesting" -l project -x -a '(__velloran_cli_names project)' -d "Only this project's work"
complete -c velloran-cli -n '__velloran_cli_any_in "export csv" "export pdf" "export show"' -l output -r -F -d 'Where to'
complete -c velloran-cli -n '__velloran_cli_any_in "export pdf" "export show"' -l paper -x -a 'a4 usLetter' -d 'What it is printed on'
complete -c velloran-cli -n '__velloran_cli_in export summary' -l clipboard -d 'Onto the clipboard'

__velloran_cli_command data export 'A copy of everything, as one JSON document'
__velloran_cli_command data import 'Fill an empty store from such a copy'
complete -c velloran-cli -n '__velloran_cli_at 0 data export; or __velloran_cli_at 0 data import' -F
__velloran_cli_command data delete 'Delete days with their review, or all that was recorded'
__velloran_cli_command data retention 'For how many days observed activity is kept'
__velloran_cli_command data cleanup 'Remove the observed activity that is no longer to be kept'
complete -c velloran-cli -n '__velloran_cli_in data delete' -l from -x -a 'today yesterday' -d 'The first day'
complete -c velloran-cli -n '__velloran_cli_in data delete' -l to -x -a 'today yesterday' -d 'The last day'
complete -c velloran-cli -n '__velloran_cli_in data delete' -l all -d 'Every recorded day'
complete -c velloran-cli -n '__velloran_cli_in data delete; or __velloran_cli_in data retention' -l yes -d 'Do it'
complete -c velloran-cli -n '__velloran_cli_at 0 data retention' -a forever

__velloran_cli_command preferences list 'What was chosen, and what holds by default'
__velloran_cli_command preferences set 'Choose something else'
complete -c velloran-cli -n '__velloran_cli_in preferences set' -x -a 'stintbook.onboarding.completed stintbook.capture.titleContext stintbook.capture.browserContext stintbook.privacy.retentionDays stintbook.privacy.automaticCleanup stintbook.export.defaultMode stintbook.export.fields.summary stintbook.export.fields.detailed velloran.appearance velloran.opensWindowAtLogin true false forever standard summarized detailed system light dark' \
    -d 'A preference, or its value'

__velloran_cli_command store info 'Path, version, counts, span, sizes and last cleanup'
__velloran_cli_command store check 'Name everything that is wrong with it'
complete -c velloran-cli -n '__velloran_cli_in help' -a 'record replay status pause resume segments day work client project rule exclude billing export data preferences store'

functions -e __velloran_cli_command
