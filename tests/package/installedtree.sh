#!/bin/sh
# SPDX-FileCopyrightText: 2026 The korvasync developers
# SPDX-License-Identifier: LGPL-2.1-or-later

# installedtree.sh cmake|pkgconfig|example EXAMPLES BUILD-DIR LIBDIR
# Installs into a fresh prefix and tries a consumer there.
set -eu
way=$1 examples=$2 build=$3 libdir=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
DESTDIR= cmake --install "$build" --prefix "$work/prefix" >"$work/install.log"
# The programs find the library, and the session bus the service, below any prefix.
"$work/prefix/bin/korvasync" --version >/dev/null
grep -q "^Exec=$work/prefix/libexec/korvasyncd$" \
    "$work/prefix/share/dbus-1/services/org.korvasync.Sender.service"
grep -q '<interface name="org.korvasync.SendSms1">' \
    "$work/prefix/share/dbus-1/interfaces/org.korvasync.SendSms1.xml"
"$(dirname "$0")/consumer.sh" "$way" "$examples" "$work/prefix" "$libdir"
