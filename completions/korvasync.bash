# SPDX-FileCopyrightText: 2026 The korvasync developers
# SPDX-License-Identifier: LGPL-2.1-or-later
# shellcheck shell=bash

# Completion of korvasync for bash. Commands and options are those that the client's help names,
# and their words those of its own table.

_korvasync_commands() { LC_ALL=C korvasync --help 2>/dev/null | sed -n '/^Commands/,/^$/s/^  \([a-z][a-z]*\) .*/\1/p'; }

# _korvasync_options HELP [MARK]: all options, or those behind which MARK stands.
_korvasync_options()
{
    grep -oE "^  -[a-z-]+(, --[a-z-]+)?${2-}" <<<"$1" | grep -oE -- '-[a-z-]+'
}

# The ids of the newest messages. A store that is busy or broken has none.
_korvasync_ids() { korvasync "$@" --timeout 2 list --ids --limit 50 2>/dev/null; }

_korvasync_values() # COMMAND OPTION
{
    case $2 in
    --assume-tz) awk '$1 == "Z" { print $2 } $1 == "L" { print $3 }' /usr/share/zoneinfo/tzdata.zi 2>/dev/null ;;
    *) LC_ALL=C korvasync --option-words 2>/dev/null | awk -v key="$1:$2 " 'index($0, key) == 1 { print substr($0, length(key) + 1) }' ;;
    esac
}

# What may stand in place of an argument: words, or "files" or "folders".
_korvasync_arguments() # COMMAND COUNT-BEFORE
{
    case $1:$2 in
    add:* | verify:* | modify:1 | 'calls add':*) echo files ;;
    show:* | delete:* | modify:0) _korvasync_ids "${store[@]}" ;;
    calls:0) echo list add wipe ;;
    esac
}

_korvasync()
{
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    # bash takes "--folder=inbox" for three words
    if [[ $word == = ]]; then
        word=
    elif [[ $previous == = ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    local help valued command='' arguments=0 candidates i
    local -a store=()
    help=$(LC_ALL=C korvasync --help 2>/dev/null)
    valued=" $(_korvasync_options "$help" ' <' | tr '\n' ' ')"
    for ((i = 1; i < COMP_CWORD; i++)); do
        local this=${COMP_WORDS[i]}
        if [[ $this == -?* ]]; then
            [[ ${COMP_WORDS[i + 1]} != = ]] || ((++i))
            if [[ $valued == *" $this "* || ${COMP_WORDS[i]} == = ]]; then
                ((++i))
                [[ $this != --store ]] || store=(--store "${COMP_WORDS[i]/#\~/$HOME}")
            fi
        elif [[ -z $command ]]; then
            command=$this
            help=$(LC_ALL=C korvasync "$command" --help 2>/dev/null)
            valued+="$(_korvasync_options "$help" ' <' | tr '\n' ' ')"
        elif [[ $command:$this =~ ^calls:(list|add|wipe)$ ]]; then
            command="calls $this"
            help=$(LC_ALL=C korvasync calls "$this" --help 2>/dev/null)
            valued+="$(_korvasync_options "$help" ' <' | tr '\n' ' ')"
        else
            ((++arguments))
        fi
    done

    if [[ $valued == *" $previous "* ]]; then
        case $previous in
        --store) candidates=folders ;;
        --rejects | --vmessage) candidates=files ;;
        *) candidates=$(_korvasync_values "$command" "$previous") ;;
        esac
    elif [[ $word == -* ]]; then
        candidates=$(_korvasync_options "$help")
    elif [[ -z $command ]]; then
        candidates=$(_korvasync_commands)
    else
        candidates=$(_korvasync_arguments "$command" "$arguments")
    fi
    case $candidates in
    files | folders)
        compopt -o filenames 2>/dev/null # fails only where no completion is under way
        mapfile -t COMPREPLY < <(compgen "$([[ $candidates == files ]] && echo -f || echo -d)" -- "$word")
        ;;
    *) mapfile -t COMPREPLY < <(compgen -W "$candidates" -- "$word") ;;
    esac
}

complete -F _korvasync korvasync
