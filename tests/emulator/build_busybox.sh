#!/usr/bin/env bash
# Builds the emulated router's shell and tools from Debian's source package: build_busybox.sh FOLDER
# The program is FOLDER/busybox; one of the same configuration is kept.
set -euo pipefail
here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
mkdir -p "$1"
cd "$1"
! cmp -s "$here/busybox.config" busybox.built || exit 0

rm -rf busybox-source
mkdir busybox-source
compgen -G 'busybox_*.orig.tar.bz2' >/dev/null || "$here/../../cmake/debian_source.sh" . busybox
tar -xf busybox_*.orig.tar.bz2 -C busybox-source --strip-components=1
busybox_make() { nice make -s -C busybox-source CROSS_COMPILE=mips-linux-gnu- "$@"; }
busybox_make allnoconfig >/dev/null
# Of two lines for one option the first counts.
cat "$here/busybox.config" busybox-source/.config > asked.config
mv asked.config busybox-source/.config
(yes '' || true) | busybox_make oldconfig >/dev/null
busybox_make -j"$(nproc)" busybox
cp busybox-source/busybox busybox
cp "$here/busybox.config" busybox.built
