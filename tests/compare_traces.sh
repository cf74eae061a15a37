#!/usr/bin/env bash
# Plays a scenario with this machine's panel-replay and with another processor's, on a router root each:
# compare_traces.sh BUILT_ROOT SCENARIO PANEL_REPLAY OTHER_PANEL_REPLAY...
# Fails unless both say the same, byte for byte, and end alike.
set -eu -o pipefail
assets=$(realpath -e "$1/sbin/lcd_ml") scenario=$2 panel_replay=$3
shift 3

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# play NAME PANEL_REPLAY...
play() {
    local name=$1
    shift
    mkdir -p "$work/$name/sbin"
    ln -s "$assets" "$work/$name/sbin/lcd_ml"
    { "$@" --root "$work/$name" "$scenario" 2>&1 && echo "status 0" || echo "status $?"; } > "$work/$name.trace"
}

play here "$panel_replay"
play there "$@"
cmp "$work/here.trace" "$work/there.trace"
