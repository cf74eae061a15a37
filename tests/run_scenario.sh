#!/usr/bin/env bash
# Plays a scenario on a router root of its own: run_scenario.sh BUILT_ROOT SCENARIO PANEL_REPLAY...
# Fails when the play does, or when its trace is not the one that stands beside SCENARIO with the ending .trace, if one
# does. There a frame stands without its payload ("@7 frame").
set -eu -o pipefail
assets=$(realpath -e "$1/sbin/lcd_ml") scenario=$2
shift 2
expected=${scenario%.scenario}.trace

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/root/sbin"
ln -s "$assets" "$work/root/sbin/lcd_ml"

"$@" --root "$work/root" "$scenario" | sed -E 's/^(@[0-9]+ frame) .*/\1/' > "$work/trace"
if [[ -e $expected ]]; then
    diff -u "$expected" "$work/trace"
fi
