#!/usr/bin/env bash
# Runs the real application offscreen against a temporary home and a stub gh,
# and checks the pictures it saves of itself: the list side, the settings side
# reached through a replayed message, the light scheme, and a failing path.
# Usage: SnapshotTest.sh <velmar> <png_probe>
set -uo pipefail
velmar=$1
probe=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

home=$work/home
mkdir -p "$home/.config/velmar" "$work/bin"
printf 'auto\t1\nview\tlist\nonboarded\t1\nappearance\tdark\n' >"$home/.config/velmar/settings.tsv"
printf 'x\t40\ny\t30\nwidth\t360\nheight\t480\n' >"$home/.config/velmar/window.tsv"
: >"$home/.config/velmar/repos.tsv"
# A gh that is installed and logged in, with nothing to report.
printf '#!/bin/sh\nexit 0\n' >"$work/bin/gh"
chmod +x "$work/bin/gh"

export PATH="$work/bin:$PATH" QT_QPA_PLATFORM=offscreen VELMAR_HOME="$home"
unset VELMAR_APPEARANCE VELMAR_MATERIAL VELMAR_DEBUG_SEND VELMAR_DEBUG_SEND_DELAY

failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

# shot NAME [VAR=VALUE...]: one run that saves $work/NAME.png and quits.
shot() {
    local name=$1
    shift
    env "$@" VELMAR_SNAPSHOT="$work/$name.png" VELMAR_SNAPSHOT_DELAY=2.5 \
        timeout 60 "$velmar" 2>"$work/$name.err"
    local rc=$?
    [ $rc -eq 124 ] && fail "$name: did not quit after its snapshot"
    grep -q 'snapshot failed' "$work/$name.err" && fail "$name: $(cat "$work/$name.err")"
    [ -s "$work/$name.png" ] || fail "$name: no PNG written"
}

# probe NAME: "width height colours luminance" of a saved picture.
describe() { "$probe" "$work/$1.png"; }

shot list
read -r w h colours lum_dark < <(describe list)
[ "$w" = 360 ] && [ "$h" = 480 ] || fail "list: size ${w}x${h}, want the saved 360x480"
[ "${colours:-0}" -ge 16 ] || fail "list: only ${colours:-0} colours, looks blank"

shot settings VELMAR_DEBUG_SEND='[{"msg":"navigate","screen":"manage"}]' VELMAR_DEBUG_SEND_DELAY=0.3
read -r w h colours _ differ < <("$probe" "$work/settings.png" "$work/list.png")
[ "$w" = 360 ] && [ "$h" = 480 ] || fail "settings: size ${w}x${h}"
[ "${colours:-0}" -ge 8 ] || fail "settings: looks blank"
[ "${differ:-0}" -gt 200 ] || fail "settings: only ${differ:-0} pixels differ from the list side"

shot light VELMAR_APPEARANCE=LIGHT
read -r _ _ _ lum_light < <(describe light)
[ "${lum_light:-0}" -gt $((lum_dark + 100)) ] || fail "light: mean luminance $lum_light, dark was $lum_dark"

# A path that cannot be written is reported, and the process still quits.
env VELMAR_SNAPSHOT="$work/missing/dir/x.png" VELMAR_SNAPSHOT_DELAY=0.2 timeout 60 "$velmar" 2>"$work/bad.err"
[ $? -ne 124 ] || fail "bad path: did not quit"
grep -q '^velmar: snapshot failed: ' "$work/bad.err" || fail "bad path: no failure line"

[ $failures -eq 0 ] || { echo "$failures check(s) failed"; exit 1; }
echo "all snapshot checks passed"
