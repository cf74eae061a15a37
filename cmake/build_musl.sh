#!/usr/bin/env bash
# Builds musl for 32-bit big-endian MIPS from Debian's source package: build_musl.sh FOLDER
# The library goes to FOLDER/mips; what is there is kept.
set -euo pipefail
folder=$(realpath -m "$1")
[ ! -e "$folder/mips/lib/libc.a" ] || exit 0
mkdir -p "$folder"
"$(dirname "${BASH_SOURCE[0]}")/debian_source.sh" "$folder" musl
cd "$folder"

rm -rf source mips
mkdir source
tar -xf musl_*.orig.tar.gz -C source --strip-components=1
cd source
./configure --prefix="$folder/mips" --target=mips-linux-gnu CROSS_COMPILE=mips-linux-gnu- CFLAGS=-Os --disable-shared
make -s -j"$(nproc)"
make -s install
