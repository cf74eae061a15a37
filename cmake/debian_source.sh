#!/usr/bin/env bash
# Gets a Debian source package: debian_source.sh FOLDER PACKAGE
# Its files come to FOLDER as they are; of the machine's own package lists nothing changes.
set -euo pipefail
mkdir -p "$1/apt/sources.list.d" "$1/apt/lists/partial"
cd "$1"
apt=$PWD/apt

# The machine's lists, asked for sources.
for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.{list,sources}; do
    if [ -e "$list" ]; then
        sed -e 's/^Types: deb$/Types: deb-src/' -e 's/^deb /deb-src /' "$list" > "$apt/sources.list.d/${list##*/}"
    fi
done
[ ! -e "$apt/sources.list.d/sources.list" ] || mv "$apt/sources.list.d/sources.list" "$apt/sources.list"
apt_source() {
    apt-get -qq -o Dir::Etc::sourcelist="$apt/sources.list" -o Dir::Etc::sourceparts="$apt/sources.list.d" \
        -o Dir::State::lists="$apt/lists" -o APT::Sandbox::User= "$@"
}
apt_source update
apt_source source --download-only "$2"
