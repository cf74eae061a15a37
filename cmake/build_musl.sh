#!/usr/bin/env bash
# Builds musl for 32-bit big-endian MIPS from Debian's source package: build_musl.sh FOLDER
# The library goes to FOLDER/mips; what is there is kept.
set -euo pipefail
folder=$(realpath -m "$1")
[ ! -e "$folder/mips/lib/libc.a" ] || exit 0
mkdir -p "$folder/lists/partial"
cd "$folder"

# Debian's own list, for sources, apart from the machine's.
sed 's/^Types: deb$/Types: deb-src/' /etc/apt/sources.list.d/debian.sources > debian-src.sources
apt_source() {
    apt-get -qq -o Dir::Etc::sourcelist="$folder/debian-src.sources" -o Dir::Etc::sourceparts=/dev/null \
        -o Dir::State::lists="$folder/lists" -o APT::Sandbox::User= "$@"
}
apt_source update
apt_source source --download-only musl

rm -rf source mips
mkdir source
tar -xf musl_*.orig.tar.gz -C source --strip-components=1
cd source
./configure --prefix="$folder/mips" --target=mips-linux-gnu CROSS_COMPILE=mips-linux-gnu- CFLAGS=-Os --disable-shared
make -s -j"$(nproc)"
make -s install
