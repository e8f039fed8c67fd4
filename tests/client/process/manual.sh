#!/bin/bash
# SPDX-FileCopyrightText: 2026 The korvasync developers
# SPDX-License-Identifier: LGPL-2.1-or-later

# manual.sh KORVASYNC MANUAL
# The manual has every command and option that the client's help names, and no other.
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
[ -n "$in_manual" ] && [ "$trouble" = 0 ]
