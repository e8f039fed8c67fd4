#!/bin/bash
# SPDX-FileCopyrightText: 2026 The korvasync developers
# SPDX-License-Identifier: LGPL-2.1-or-later

# manual.sh KORVASYNC MANUAL
# The manual has every command and option that the client's help names, and no other. It and the
# help have every word that the client's own table has for an option, and so has the client, which
# names them to a person who gives another.
set -euo pipefail
korvasync=$1 manual=$2
export LC_ALL=C
trouble=0

# All lists are sorted.
help_options()
{
    case ${1-} in
    '') "$korvasync" --help ;;
    calls) for action in list add wipe; do "$korvasync" calls $action --help; done ;;
    *) "$korvasync" "$1" --help ;;
    esac | grep -oE '^  -[a-z-]+(, --[a-z-]+)?' | grep -oE -- '-[a-z-]+' | sort -u
}
help_commands() { "$korvasync" --help | sed -n '/^Commands/,/^$/s/^  \([a-z][a-z]*\) .*/\1/p' | sort; }
# "globals --store", "list --folder", ...
manual_options() {
    awk '$1 == ".Sh" { part = $2; owner = $2 == "OPTIONS" ? "globals" : "" }
         $1 == ".Ss" && part == "COMMANDS" { owner = $2 }
         $1 == ".It" && owner { for (i = 2; i < NF; i++) if ($i == "Fl") print owner, "-" $(i + 1) }' "$manual"
}
manual_commands() { awk '$1 == ".Sh" { part = $2 } $1 == ".Ss" && part == "COMMANDS" { print $2 }' "$manual" | sort; }
options_of() { sed -n "s/^$1 //p" <<<"$in_manual" | sort -u; }
# expect_none WHAT: standard input is what should not be
expect_none() {
    local word
    while read -r word; do
        echo "$1: $word"
        trouble=1
    done
}

in_manual=$(manual_options)
expect_none "a command only in the help" < <(comm -23 <(help_commands) <(manual_commands))
expect_none "a command only in the manual" < <(comm -13 <(help_commands) <(manual_commands))
all=
for command in '' $(help_commands); do
    named=$(help_options "$command")
    all+=$named$'\n'
    expect_none "$command, only in the help" < <(comm -23 <(echo "$named") \
        <({ options_of globals; options_of "${command:-globals}"; } | sort -u))
    [ -z "$command" ] || expect_none "$command, only in the manual" < <(comm -13 <(echo "$named") <(options_of "$command"))
done
expect_none "of all commands, only in the manual" < <(comm -13 <(sort -u <<<"$all") <(options_of globals))

# manual_of COMMAND OPTION: what the manual says of it
manual_of() {
    awk -v command="$1" -v option="${2#-}" '
        $1 == ".Sh" { part = $2; here = 0; owner = $2 == "OPTIONS" ? "globals" : "" }
        $1 == ".Ss" && part == "COMMANDS" { owner = $2; here = 0 }
        $1 == ".It" && owner { here = 0
            if (owner == command) for (i = 2; i < NF; i++) if ($i == "Fl" && $(i + 1) == option) here = 1 }
        $1 == ".El" { here = 0 }
        here' "$manual"
}
help_of() {
    # shellcheck disable=SC2086 # a command may be two words
    "$korvasync" $1 --help | awk -v option="$2" '
        /^  -/ { here = $1 == option || $1 == option "," || $2 == option } /^$/ { here = 0 } here'
}
export KORVASYNC_STORE=/nonexistent/store
# Standard input is the table.
missing_words()
{
    local command words option owner said shown named word file
    while IFS=: read -r command words; do
        [ "$command" != calls ] || continue # it stands there with its first action as well
        option=${words%% *} owner=${command%% *}
        case $option in -o | --progress) owner=globals ;; esac
        said=$(manual_of "${owner:-globals}" "$option")
        [[ ! $said =~ [Aa]s\ (above|for) ]] || said=$(manual_of add "$option")
        shown=$(help_of "$command" "$option")
        file=
        [ "$command" != verify ] || file=-
        # shellcheck disable=SC2086
        named=$("$korvasync" $command "$option" no-such-word $file 2>&1 </dev/null) || true
        for word in ${words#* }; do
            grep -qw -- "$word" <<<"$said" || echo "$command $option $word, not in the manual"
            [ -z "$shown" ] || grep -qw -- "$word" <<<"$shown" || echo "$command $option $word, not in the help"
            [ -z "$command" ] || grep -qw -- "$word" <<<"$named" || echo "$command $option $word, not in: $named"
        done
    done
}
table=$("$korvasync" --option-words)
expect_none "a word of the table" < <(missing_words <<<"$table")
[ -n "$in_manual" ] && [ -n "$table" ] && [ "$trouble" = 0 ]
