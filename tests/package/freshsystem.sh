#!/bin/bash
# SPDX-FileCopyrightText: 2026 The korvasync developers
# SPDX-License-Identifier: LGPL-2.1-or-later

# freshsystem.sh PACKAGES-DIR
# Installs the packages into a fresh Debian 12 and uses them there: first as somebody who has the
# client alone, then as a programmer. Needs root, and a mirror of Debian's packages, KORVASYNC_MIRROR.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
packages=$(realpath "$1")
mirror=${KORVASYNC_MIRROR:-http://deb.debian.org/debian}

if [ -z "${KORVASYNC_IN_OWN_MOUNTS:-}" ]; then
    KORVASYNC_IN_OWN_MOUNTS=1 exec unshare --mount "$0" "$@"
fi
system=$(mktemp -d "${TMPDIR:-/tmp}/korvasync-system.XXXXXX")
trap 'umount "$system/proc" 2>/dev/null || true; rm -rf --one-file-system "$system"' EXIT

debootstrap --variant=minbase bookworm "$system" "$mirror" >"$system.log" 2>&1 || {
    tail -n 5 "$system.log" >&2
    echo "No fresh Debian could be made from the mirror $mirror (see KORVASYNC_MIRROR)." >&2
    exit 1
}
rm "$system.log"
chmod 755 "$system" # mktemp's is for root alone
mount -t proc proc "$system/proc"
printf '#!/bin/sh\nexit 101\n' >"$system/usr/sbin/policy-rc.d" # no service is started
chmod +x "$system/usr/sbin/policy-rc.d"
mkdir "$system/packages"
cp "$packages"/*.deb "$system/packages"
cp -r "$here/consumer" "$here/consumer.sh" "$system/packages"

inside() { chroot "$system" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 "$@"; }
install() {
    inside DEBIAN_FRONTEND=noninteractive apt-get install -q -y -o Dpkg::Use-Pty=0 --no-install-recommends "$@" \
        >"$system/apt.log" 2>&1 || { cat "$system/apt.log" >&2; exit 1; }
}
# The package's file as the fresh system sees it.
file_of() { echo "/packages/$(basename "$packages/$1"_*.deb)"; }
as_ada() { inside runuser -u ada -- env HOME=/home/ada "$@"; }

tell() { printf '# %s\n' "$*"; }
tell "the client"
install "$(file_of libkorvasync1)" "$(file_of korvasync)" systemd
inside useradd --create-home ada
as_ada korvasync add - <<'END'
BEGIN:VMSG
VERSION:1.1
X-IRMC-STATUS:READ
X-IRMC-BOX:INBOX
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
[ "$(as_ada korvasync list -o ndjson)" = \
    '{"id":1,"folder":"inbox","number":"+15550100","time":"2024-01-05T08:15:00Z","read":true,"body":"Good morning, Ada!"}' ]
tell "the service"
unit=$(inside XDG_RUNTIME_DIR=/run systemd-analyze --user --man=no verify \
    /usr/lib/systemd/user/korvasyncd.service 2>&1 | grep korvasyncd || true)
[ -z "$unit" ] || { echo "$unit" >&2; exit 1; }

tell "programs"
install "$(file_of libkorvasync-dev)" cmake g++ make pkg-config
for way in cmake pkgconfig example; do
    as_ada /packages/consumer.sh "$way" /usr/share/doc/libkorvasync-dev/examples
done

tell "gone again"
inside apt-get purge -q -y -o Dpkg::Use-Pty=0 korvasync libkorvasync1 >/dev/null
left=$(inside find / -xdev -not -path '/packages/*' -not -path '/home/*' -name '*korvasync*')
[ -z "$left" ] || { echo "left behind: $left" >&2; exit 1; }
