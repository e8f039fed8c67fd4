#!/bin/sh
# SPDX-FileCopyrightText: 2026 The korvasync developers
# SPDX-License-Identifier: LGPL-2.1-or-later

# consumer.sh cmake|pkgconfig BUILD-DIR QT-MAJOR LIBDIR
set -eu
way=$1 build=$2 qt=$3 libdir=$4
source=$(dirname "$(realpath "$0")")/consumer
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

DESTDIR= cmake --install "$build" --prefix "$work/prefix" >"$work/install.log"
case $way in
cmake)
    cmake -S "$source" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/prefix" >"$work/configure.log"
    cmake --build "$work/build"
    ;;
pkgconfig)
    mkdir "$work/build"
    export PKG_CONFIG_PATH="$work/prefix/$libdir/pkgconfig"
    # shellcheck disable=SC2046
    c++ -std=c++17 -fPIC "$source/main.cpp" -o "$work/build/consumer" \
        $(pkg-config --cflags --libs korvasync)
    ;;
esac
output=$(LD_LIBRARY_PATH="$work/prefix/$libdir" "$work/build/consumer")
test "$output" = "BEGIN:VMSG"
