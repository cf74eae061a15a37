#!/usr/bin/env bash
# The whole router in an emulator: run.sh [--driver DRIVER.c]
# A kernel with the display's driver, a shell, and the daemon as it ships; the pictures that the driver gets must be
# those of panel-replay. ./check emulator builds what this needs. What takes long to build is kept in build-emulator/.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
. cmake/setup.sh
here=tests/emulator kept=build-emulator
scenarios=("$here"/walk.scenario "$here"/empty_store.scenario)
longest=300 # seconds that the emulator may take

driver=$here/lcd_sink.c
if [ "${1:-}" = --driver ]; then
    driver=${2:?--driver needs a file}
elif [ $# -gt 0 ]; then
    die "unknown option $1"
fi

# built WHAT COMMAND...: says so, and shows the output of a build only when it fails.
built() {
    say "$1"
    shift
    "$@" > "$kept/build.log" 2>&1 || { tail -n 30 "$kept/build.log"; die "failed: $*"; }
}

# The router's file system: what is in router/, the libraries, the daemon and what it shows.
make_root() {
    local root=$1 library
    cp -r "$here/router" "$root"
    mkdir -p "$root"/{bin,lib,usr/sbin,sbin/lcd_ml/_auto_bitmap_}
    cp "$kept/busybox" "$root/bin"
    cp build-mips/bin/frontpaneld "$root/usr/sbin"
    for library in /usr/mips-linux-gnu/lib/{ld.so.1,libc.so.6} build-mips/lib/libnvram.so; do
        cp -L "$library" "$root/lib"
    done
    cp "${scenarios[@]}" "$root/emulator"
    cp -r build/root/sbin/lcd_ml/_auto_lang_ "$root/sbin/lcd_ml"
    # Pictures, and the glyphs of the European languages.
    cp build/root/sbin/lcd_ml/_auto_bitmap_/{ICON*,U_[0-2]*} "$root/sbin/lcd_ml/_auto_bitmap_"
    (cd "$root" && find . | cpio -o -H newc --quiet) | gzip -1 > "$work/root.cpio.gz"
}

# The router's clock goes by its instructions (8 ns each) and jumps over idle time: minutes pass in seconds, and each
# run is the same, on a busy machine too. Only a hard kill ends an emulator that hangs.
emulate() {
    timeout --foreground -s KILL "$longest" qemu-system-mips -M malta -cpu 24Kf -m 64 \
        -icount shift=3,sleep=off -rtc base=2026-01-01,clock=vm -display none -vga none -nic none -no-reboot \
        -monitor none -serial stdio -serial "file:$work/frames" \
        -kernel "$kept/vmlinux" -initrd "$work/root.cpio.gz" -append "console=ttyS0 loglevel=5 panic=-1" < /dev/null |
        sed -u 's/\r$//' | tee "$work/report" | sed -un '/^== /,$p'
}

replay() {
    local scenario
    for scenario in "${scenarios[@]}"; do
        rm -rf "$work/replayed"
        mkdir -p "$work/replayed/sbin"
        ln -s "$PWD/build/root/sbin/lcd_ml" "$work/replayed/sbin/lcd_ml"
        build/bin/panel-replay --root "$work/replayed" "$scenario"
    done
}

# The commands that change something; what is read is asked for at each redraw.
compare_commands() {
    sed -n 's/^@[0-9]* system //p' "$work/trace" | grep -v 'network_status\|pc_monitor' |
        sed -e 's/ *&$//' -e 's|^/sbin/||' > "$work/commands"
    sed -n 's/^ran: //p' "$work/report" | grep '^rc \|=' | diff "$work/commands" - || die "the commands differ"
}

# Pictures as they follow each other, one a line in hexadecimal; one that is sent again is the same picture.
compare_pictures() {
    sed -n 's/^@[0-9]* frame //p' "$work/trace" | uniq > "$kept/expected"
    od -An -v -tx1 -w1040 "$work/frames" | tr -d ' ' > "$work/messages"
    cut -c33- "$work/messages" | uniq > "$kept/shown"
    # Length 1040, type 18, no flags, no sequence number, the sender.
    if grep -Evq '^000004100012000000000000[0-9a-f]{8}' "$work/messages"; then die "a message has another header"; fi
    cmp "$kept/expected" "$kept/shown" || die "the pictures differ; a line is a picture"
    pictures=$(wc -l < "$kept/shown")
}

mkdir -p "$kept"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
built "the kernel, kept in $kept" "$here/build_kernel.sh" "$kept" "$driver"
built "the shell, kept in $kept" "$here/build_busybox.sh" "$kept"
make_root "$work/root"
say "the emulated router"
emulate || die "the emulator ended with $?"
grep -qx "end of the report" "$work/report" || die "the emulated router came to no end"
! grep -q "^FAILED" "$work/report" || die "something failed in the emulated router"
replay > "$work/trace"
compare_commands
compare_pictures
memory=$(sed -n 's/^memory: //p' "$work/report")
say "emulator: passed; $pictures pictures as in panel-replay, $(grep -c ^ok: "$work/report") checks, $memory"
