#!/bin/bash
# SPDX-FileCopyrightText: 2026 The korvasync developers
# SPDX-License-Identifier: LGPL-2.1-or-later

# completion.sh KORVASYNC-DIRECTORY COMPLETION SAMPLES
# What bash proposes, with a store of two messages, also to a person whose help is in German.
set -euo pipefail
unset LC_ALL LC_MESSAGES LANGUAGE
export LANG=de_DE.UTF-8
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export PATH=$1:$PATH KORVASYNC_STORE=$work/store DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent
# shellcheck source=/dev/null
source "$2"
korvasync add -qq "$3/handset/card" >/dev/null
mkdir "$work/place" "$work/place/folder"
touch "$work/place/two words.vmg"
cd "$work/place"
failures=0

# expect PROPOSALS WORD...: the last word is the one that is being typed; proposals are joined by ,
expect()
{
    local expected=$1 proposed
    shift
    COMP_WORDS=(korvasync "$@") COMP_CWORD=$# COMPREPLY=()
    _korvasync || true # bash does not look at it
    proposed=$(IFS=, && echo "${COMPREPLY[*]}")
    [ "$proposed" = "$expected" ] && return
    echo "korvasync $*: proposes \"$proposed\", not \"$expected\""
    failures=$((failures + 1))
}

expect list,show,add,modify,delete,calls,send,stats,numbers,dups,verify,changes,conversations ''
expect show,send,stats s
expect dups --store nowhere du
expect '' nonsense ''
expect --folder list --fo
expect --on-duplicate,--on-bad-time add --on
expect --keep dups --delete --k
expect --dry-run add --dr
expect '' stats --fo
expect --follow changes --fo
expect --number,--number-tail conversations --n
expect ndjson changes -o ''
expect text,ndjson,vmsg,csv,mbox,android-xml list -o ''
expect entries calls -o e
expect text,ndjson add -o ''
expect text,ndjson calls add -o ''
expect --yes calls wipe --y
expect inbox,outbox,drafts,sent,my,all list --folder ''
expect inbox,outbox,sent,my add --folder ''
expect inbox list --folder = in
expect inbox,outbox,drafts,sent,my,all list --folder =
expect in,out,missed calls --type ''
expect skip,add,fail add --on-duplicate ''
expect refuse,now add --on-bad-time ''
expect auto,vmsg,android-xml add --from ''
expect auto,entries,android-xml calls add --from ''
expect oldest,newest dups --keep ''
expect auto,always,never --progress ''
expect auto,always,never list --progress ''
expect vmsg,text,ndjson,csv,mbox,android-xml show -o ''
expect text,ndjson -o ''
expect '' no/such -o ''
expect Europe/Helsinki add --assume-tz Europe/Hels
expect '' list --since ''
expect 1,2 show ''
expect 1,2 delete --yes 1 ''
expect 1,2 modify ''
expect folder modify 1 fo
expect 'two words.vmg' modify 1 tw
expect 'two words.vmg' add tw
expect 'two words.vmg' add --rejects tw
expect folder --store ''
expect 'two words.vmg' calls add tw
expect list,add,wipe calls ''
expect '' --store "$work/place/folder" show ''
expect '' list ''
[ "$failures" = 0 ]
