#!/usr/bin/env bash
# The real app offscreen, driven by the synthetic input: a held drag of the first heading of the
# list reorders the watch list in repos.tsv, a drag that moves before the hold ends changes
# nothing, a row of the settings list moves without a hold but not from its info button, and the
# clicks, key and malformed values log what they should and nothing more.
set -uo pipefail
velmar=$1 work=$(mktemp -d) failures=0
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/bin"
# gh answers every repository with no pull request; the login shell keeps our PATH.
printf '#!/bin/sh\nexit 0\n' >"$work/bin/gh"
printf '#!/bin/sh\nexec /bin/sh -c "$4"\n' >"$work/bin/shell"
chmod +x "$work/bin/gh" "$work/bin/shell"
export PATH="$work/bin:$PATH" SHELL="$work/bin/shell" QT_QPA_PLATFORM=offscreen \
       XDG_DATA_DIRS="$work/none" XDG_DATA_HOME="$work/none"
unset VELMAR_APPEARANCE VELMAR_MATERIAL VELMAR_DEBUG_SEND VELMAR_DEBUG_SEND_DELAY VELMAR_DEBUG_CLICK \
      VELMAR_DEBUG_KEY VELMAR_DEBUG_DRAG VELMAR_DEBUG_DRAG_HOLD VELMAR_DEBUG_DRAG_PRESS
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

# run NAME [VAR=VALUE...]: a fresh home of four repositories, the automation starting at 1 s, a
# snapshot at 3.5 s that ends the run. Leaves NAME.tsv (repos.tsv after) and NAME.err.
run() {
    local name=$1
    shift
    local config=$work/$name/.config/velmar
    mkdir -p "$config"
    printf 'auto\t0\nview\tlist\nonboarded\t1\nappearance\tdark\n' >"$config/settings.tsv"
    printf 'x\t40\ny\t30\nwidth\t360\nheight\t480\n' >"$config/window.tsv"
    printf 'acme/one\t\nacme/two\t\nacme/three\t\nacme/four\t\n' >"$config/repos.tsv"
    env VELMAR_HOME="$work/$name" VELMAR_DEBUG_CLICK_DELAY=1 VELMAR_SNAPSHOT="$work/$name.png" \
        VELMAR_SNAPSHOT_DELAY=3.5 "$@" timeout 60 "$velmar" 2>"$work/$name.err"
    [ $? -ne 124 ] || fail "$name: did not quit"
    cut -f1 "$config/repos.tsv" | paste -sd' ' >"$work/$name.tsv"
}
logged() { grep '^velmar: ' "$work/$1.err" | grep -v 'snapshot failed'; }

# Headings stand 35 apart, the first one's row centred at y 60: held for 0.5 s, then down by 80,
# past the third heading's middle.
run held VELMAR_DEBUG_DRAG='100,60, 100,140' VELMAR_DEBUG_DRAG_PRESS=0.5
[ "$(cat "$work/held.tsv")" = "acme/two acme/three acme/one acme/four" ] ||
    fail "held drag: repos.tsv is '$(cat "$work/held.tsv")'"
logged held | grep -q '^velmar: drag (100, 60) → (100, 140) hit QQuickRowLayout < RepoSectionHeader < ' ||
    fail "held drag: log '$(logged held)'"
[ "$(logged held | awk -F' hit ' '{print $2}' | awk -F' < ' '{print NF}')" -le 8 ] || fail "held drag: more than 8 names"

run early VELMAR_DEBUG_DRAG='100,60,100,140'
[ "$(cat "$work/early.tsv")" = "acme/one acme/two acme/three acme/four" ] ||
    fail "drag before the hold: repos.tsv is '$(cat "$work/early.tsv")'"

# The settings list: rows 44 apart, the first centred at y 230; a row lifts on moving, at once.
# A press on the trailing 34 points (the info button) is the button's, and moves nothing.
manage=(VELMAR_DEBUG_SEND='[{"msg":"navigate","screen":"manage"}]' VELMAR_DEBUG_SEND_DELAY=0.3)
run settings "${manage[@]}" VELMAR_DEBUG_DRAG='60,230,60,330'
[ "$(cat "$work/settings.tsv")" = "acme/two acme/three acme/one acme/four" ] ||
    fail "settings drag: repos.tsv is '$(cat "$work/settings.tsv")'; $(logged settings)"
logged settings | grep -q '^velmar: drag (60, 230) → (60, 330) hit .*WatchedRepoRow' ||
    fail "settings drag: log '$(logged settings)'"
run trailing "${manage[@]}" VELMAR_DEBUG_DRAG='330,230,330,330'
[ "$(cat "$work/trailing.tsv")" = "acme/one acme/two acme/three acme/four" ] ||
    fail "drag from the info button: repos.tsv is '$(cat "$work/trailing.tsv")'"

# Malformed values are ignored in silence; points that are no place are clicked without harm.
run odd VELMAR_DEBUG_DRAG='100,60,100' VELMAR_DEBUG_KEY=70000 VELMAR_DEBUG_CLICK='nan,inf;x;10, 20;1,2,3'
[ "$(logged odd | wc -l)" -eq 2 ] || fail "odd values: log '$(logged odd)'"
logged odd | sed -n 1p | grep -qx 'velmar: click (nan, inf) → nil ' || fail "odd values: '$(logged odd | sed -n 1p)'"
logged odd | sed -n 2p | grep -q '^velmar: click (10, 20) → [A-Za-z]* ([0-9]*, [0-9]*, [0-9]*×[0-9]*)$' ||
    fail "odd values: '$(logged odd | sed -n 2p)'"
[ -s "$work/odd.png" ] || fail "odd values: the process did not live to its snapshot"

run key VELMAR_DEBUG_KEY=53
[ "$(logged key)" = "velmar: key 53" ] || fail "key: log '$(logged key)'"

[ $failures -eq 0 ] || { echo "$failures check(s) failed"; exit 1; }
echo "all drag checks passed"
