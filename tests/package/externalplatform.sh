#!/bin/sh
# SPDX-FileCopyrightText: 2026 The korvasync developers
# SPDX-License-Identifier: LGPL-2.1-or-later

# externalplatform.sh ROOT LIBDIR
# Installs a platform into a fresh prefix, builds the library with -DKORVASYNC_PLATFORM=external
# against it, and tries a consumer of both.
set -eu
root=$1 libdir=$2
here=$(dirname "$(realpath "$0")")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# install SOURCE NAME [OPTION...]
install() {
    source=$1 build=$work/$2
    shift 2
    cmake -G Ninja -S "$source" -B "$build" -DCMAKE_INSTALL_LIBDIR="$libdir" \
        -DCMAKE_PREFIX_PATH="$work/prefix" "$@" >"$work/configure.log"
    cmake --build "$build"
    DESTDIR= cmake --install "$build" --prefix "$work/prefix" >"$work/install.log"
}

install "$here/externalplatform" platform
install "$root" library -DKORVASYNC_PLATFORM=external -DBUILD_TESTING=OFF
# Whatever the library takes from the platform must be there at once, not when it is called.
LD_BIND_NOW=1 "$here/consumer.sh" cmake "$root/examples" "$work/prefix" "$libdir"
