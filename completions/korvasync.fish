# SPDX-FileCopyrightText: 2026 The korvasync developers
# SPDX-License-Identifier: LGPL-2.1-or-later

# Completion of korvasync for fish. Commands and options are those that the client's help names,
# and their words those of its own table.

# Each option in a help with what it does.
function __korvasync_described
    string replace -rf '^  (-[a-z]), (--[a-z-]+) +(.*)' '$1\t$3\n$2\t$3' -- $argv | string split '\n'
    string match -rv '^  -[a-z], ' -- $argv | string replace -rf '^  (--?[a-z-]+)( <[^>]*>)? +(.*)' '$1\t$3'
end

function __korvasync_valued
    string replace -rf '^  (--?[a-z-]+) <.*' '$1' -- $argv
end

function __korvasync_value # COMMAND OPTION WORD
    switch "$argv[1]:$argv[2]"
        case '*:--store'
            __fish_complete_directories $argv[3]
        case '*:--rejects' '*:--vmessage'
            __fish_complete_path $argv[3]
        case '*:--assume-tz'
            awk '$1 == "Z" { print $2 } $1 == "L" { print $3 }' /usr/share/zoneinfo/tzdata.zi 2>/dev/null
        case '*'
            set -l key (string escape --style=regex -- "$argv[1]:$argv[2] ")
            env LC_ALL=C korvasync --option-words 2>/dev/null | string replace -rf "^$key" '' | string split ' '
    end
end

function __korvasync_proposals
    set -l words (commandline -opc)[2..-1]
    set -l word (commandline -ct)
    set -l help (env LC_ALL=C korvasync --help 2>/dev/null)
    set -l valued (__korvasync_valued $help)
    set -l command ''
    set -l option ''
    set -l store
    set -l arguments 0
    for this in $words
        if test -n "$option"
            test $option = --store; and set store --store (string replace -r '^~' $HOME -- $this)
            set option ''
        else if contains -- $this $valued
            set option $this
        else if string match -q -- '--store=*' $this
            set store --store (string replace -r '^--store=(~)?' '$1' -- $this | string replace -r '^~' $HOME)
        else if string match -q -- '-?*' $this
            continue
        else if test -z "$command"
            set command $this
            set help (env LC_ALL=C korvasync $command --help 2>/dev/null)
            set -a valued (__korvasync_valued $help)
        else if test "$command" = calls; and contains -- $this list add wipe
            set command "calls $this"
            set help (env LC_ALL=C korvasync calls $this --help 2>/dev/null)
            set -a valued (__korvasync_valued $help)
        else
            set arguments (math $arguments + 1)
        end
    end

    if test -n "$option"
        __korvasync_value "$command" $option $word
    else if set -l parts (string match -r '^(--[a-z-]+)=(.*)' -- $word); and contains -- $parts[2] $valued
        printf "$parts[2]=%s\n" (__korvasync_value "$command" $parts[2] $parts[3])
    else if string match -q -- '-*' $word
        __korvasync_described $help
    else if test -z "$command"
        set -l in_commands no
        for line in $help
            string match -q 'Commands*' -- $line; and set in_commands yes
            test -z "$line"; and set in_commands no
            test $in_commands = yes; and string replace -rf '^  ([a-z]+) +(.*)' '$1\t$2' -- $line
        end
    else
        switch "$command:$arguments"
            case 'add:*' 'verify:*' modify:1 'calls add:*'
                __fish_complete_path $word
            case 'show:*' 'delete:*' modify:0
                # The newest messages. A store that is busy or broken has none.
                korvasync $store --timeout 2 list --ids --limit 50 2>/dev/null
            case calls:0
                string split ' ' 'list add wipe'
        end
    end
end

complete -c korvasync -f -k -a '(__korvasync_proposals)'
