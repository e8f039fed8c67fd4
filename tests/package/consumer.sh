#!/bin/sh
# SPDX-FileCopyrightText: 2026 The korvasync developers
# SPDX-License-Identifier: LGPL-2.1-or-later

# consumer.sh cmake|pkgconfig|example EXAMPLES [PREFIX LIBDIR]
# Builds and runs a program against the library that is installed in the system or in PREFIX.
set -eu
way=$1 examples=$2 prefix=${3:-/usr} libdir=${4:-lib}
source=$(dirname "$(realpath "$0")")/consumer
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
if [ "$prefix" != /usr ]; then
    export PKG_CONFIG_PATH="$prefix/$libdir/pkgconfig" LD_LIBRARY_PATH="$prefix/$libdir"
fi

build() { # SOURCE
    cmake -S "$1" -B "$work/build" -DCMAKE_PREFIX_PATH="$prefix" >"$work/configure.log"
    cmake --build "$work/build"
}

# is WHAT EXPECTED
is() {
    [ "$1" = "$2" ] && return
    printf 'got:\n%s\nexpected:\n%s\n' "$1" "$2" >&2
    exit 1
}

case $way in
cmake)
    build "$source"
    is "$("$work/build/consumer")" "BEGIN:VMSG"
    ;;
pkgconfig)
    # shellcheck disable=SC2046
    c++ -std=c++17 -fPIC "$source/main.cpp" -o "$work/consumer" \
        $(pkg-config --cflags --libs korvasync)
    is "$("$work/consumer")" "BEGIN:VMSG"
    ;;
example)
    build "$examples"
    is "$(printf 'BEGIN:VMSG\r\nX-QLT-DT:20240501T100000Z\r\nBEGIN:VCARD\r\nTEL:+15550100\r
END:VCARD\r\nBEGIN:VBODY\r\nHello, Ada!\r\nEND:VBODY\r\nEND:VMSG\r\n' | "$work/build/readmessage")" \
        "2024-05-01T10:00:00Z +15550100
Hello, Ada!"
    is "$(echo Hello | "$work/build/readmessage" 2>&1 || echo "rc $?")" \
        "readmessage: not a whole message, see line 1
rc 1"
    # A new phone, without a store: reads are errors until the first write.
    export XDG_DATA_HOME="$work/data"
    unset KORVASYNC_STORE
    absent="korvasync.store: There is no store in $XDG_DATA_HOME/korvasync yet; add something \
first, or name the directory of another store."
    is "$("$work/build/inbox" 2>&1 || echo "rc $?")" "$absent
inbox: the messages cannot be read
rc 1"
    is "$("$work/build/followchanges" 2>&1 || echo "rc $?")" "$absent
followchanges: the store cannot be read
rc 1"
    is "$("$work/build/newest" 2>&1 || echo "rc $?")" "$absent
newest: the store cannot be read
rc 1"
    "$work/build/pullandpush" 2024-05-01T10:00:00Z +15550101 Hello >"$work/out" 2>"$work/errors" ||
        { cat "$work/errors" >&2; exit 1; }
    is "$(cat "$work/out")" "added as 1"
    is "$(grep -v '^korvasync.announcement: ' "$work/errors")" "$absent
pullandpush: the messages cannot be read; a new phone has none. Adding first."
    is "$("$work/build/inbox")" 1
    # A store that cannot be made takes no message.
    is "$(KORVASYNC_STORE=/dev/null/store "$work/build/pullandpush" 2024-05-01T10:00:00Z +15550101 \
        Hello 2>&1 | grep '^pullandpush')" \
        "pullandpush: the messages cannot be read; a new phone has none. Adding first.
pullandpush: the message was not added"
    export KORVASYNC_STORE="$work/store"
    cat >"$work/first.vmsg" <<'END'
BEGIN:VMSG
VERSION:1.1
X-IRMC-STATUS:READ
X-IRMC-BOX:INBOX
X-IRMC-TYPE:SMS
X-MDO-TIMESTAMP:20240105T081500Z
X-QLT-DT:20240105T081500Z
BEGIN:VCARD
VERSION:2.1
TEL:+15550100
END:VCARD
BEGIN:VENV
BEGIN:VBODY
X-SMS;TYPE=TEXT;CHARSET=UTF-8:Good morning, Ada!
END:VBODY
END:VENV
END:VMSG
END
    "$prefix/bin/korvasync" -qq add "$work/first.vmsg" >"$work/added"
    is "$("$work/build/pullandpush" 2024-05-01T10:00:00Z +15550101 Hello | tr -d '\r')" \
        "1
$(cat "$work/first.vmsg")
added as 2"
    is "$("$prefix/bin/korvasync" list --number +15550101 --count)" 1
    is "$("$work/build/inbox")" \
        "1
2"
    is "$("$work/build/newest")" \
        "2
1"
    is "$("$work/build/followchanges" | head -n 2)" \
        "added 1
added 2"
    cursor=$("$work/build/followchanges" | tail -n 1)
    "$prefix/bin/korvasync" -qq delete 1 --yes
    is "$("$work/build/followchanges" "$cursor" | head -n 1)" "deleted 1"
    is "$("$work/build/followchanges" yesterday 2>&1 || echo "rc $?")" \
        "followchanges: no cursor of this store; begin again without one
rc 1"
    ;;
esac
