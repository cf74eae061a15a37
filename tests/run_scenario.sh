#!/usr/bin/env bash
# Plays a scenario on a router root of its own: run_scenario.sh PANEL_REPLAY BUILT_ROOT SCENARIO
# Fails when the play does, or when its trace is not the one that stands beside SCENARIO with the ending .trace, if one
# does. There a frame stands without its payload ("@7 frame").
set -eu -o pipefail
panel_replay=$1 assets=$(realpath -e "$2/sbin/lcd_ml") scenario=$3
expected=${scenario%.scenario}.trace

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/root/sbin"
ln -s "$assets" "$work/root/sbin/lcd_ml"

"$panel_replay" --root "$work/root" "$scenario" | sed -E 's/^(@[0-9]+ frame) .*/\1/' > "$work/trace"
if [[ -e $expected ]]; then
    diff -u "$expected" "$work/trace"
fi
