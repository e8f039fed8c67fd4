#!/bin/bash
# SPDX-FileCopyrightText: 2026 The korvasync developers
# SPDX-License-Identifier: LGPL-2.1-or-later

# growth.sh PROGRAM SEED COUNT: fails when the work of reading a file grows faster than the file,
# or when a byte of one takes too much of it. Counts instructions, so a busy machine changes
# nothing.
set -euo pipefail

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
env -i "PATH=$PATH" LANG=C.UTF-8 TZ=UTC QT_HASH_SEED=0 valgrind -q --tool=callgrind \
    --callgrind-out-file="$folder/counted" "$@" >"$folder/shapes"

# The first count is of what is done but once; then there are two for each line.
work() { awk '/^totals:/ { print $2 }' "$folder/counted.$1"; }

most=2000  # instructions a byte
few=200000 # what no growth is told from, as that of a buffer
failed=false
number=2
while read -r small large shape; do
    before=$(work $number)
    after=$(work $((number + 1)))
    number=$((number + 2))
    echo "$((after / large)) a byte, $((after * 100 / before)) % of the work: $shape"
    if [ $((after * 4)) -gt $((before * large / small * 5 + few)) ] ||
        [ $((after / large)) -gt $most ]; then
        echo "  too much: $before instructions for $small bytes, $after for $large"
        failed=true
    fi
done <"$folder/shapes"
! $failed
