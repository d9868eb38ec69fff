#!/usr/bin/env bash
# Real placement on an X server (Xvfb, 1280x1024, no window manager): a saved
# frame on the screen comes back where it was, a frame off every screen is
# centred on the first, and a move by the user writes window.tsv, which the
# start-up itself never does.
# Usage: PlacementTest.sh <velmar> <x11win.py>
set -uo pipefail
velmar=$1
x11win=$2
if [ -z "${DISPLAY:-}" ]; then
    exec xvfb-run -a -s "-screen 0 1280x1024x24" bash "$0" "$@"
fi

work=$(mktemp -d)
trap 'kill "$pid" 2>/dev/null; rm -rf "$work"' EXIT
home=$work/home
config=$home/.config/velmar
mkdir -p "$config" "$work/bin"
printf '#!/bin/sh\nexit 0\n' >"$work/bin/gh"
chmod +x "$work/bin/gh"
export PATH="$work/bin:$PATH" VELMAR_HOME="$home" QT_QPA_PLATFORM=xcb
unset VELMAR_SNAPSHOT VELMAR_DEBUG_SEND
pid=""
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

# geometry_when_up: waits for the window, then prints "x y width height".
geometry_when_up() {
    for _ in $(seq 1 50); do
        if g=$(python3 "$x11win" geometry Velmar 2>/dev/null); then
            sleep 0.7  # let the second placement land
            python3 "$x11win" geometry Velmar
            return 0
        fi
        sleep 0.1
    done
    return 1
}

start() { "$velmar" 2>"$work/err" & pid=$!; }
stop() { kill "$pid" 2>/dev/null; wait "$pid" 2>/dev/null; pid=""; }

# 1. On screen: back where it was.
printf 'x\t100\ny\t120\nwidth\t400\nheight\t500\n' >"$config/window.tsv"
start
got=$(geometry_when_up) || fail "on screen: no window"
[ "$got" = "100 120 400 500" ] || fail "on screen: at '$got', want '100 120 400 500'"
stop

# 2. Off every screen: centred on the first, size kept.
printf 'x\t5000\ny\t4000\nwidth\t400\nheight\t500\n' >"$config/window.tsv"
start
got=$(geometry_when_up) || fail "off screen: no window"
[ "$got" = "440 262 400 500" ] || fail "off screen: at '$got', want centred '440 262 400 500'"
stop

# 3. Start-up writes nothing; a move afterwards writes the new frame.
printf 'x\t100\ny\t120\nwidth\t400\nheight\t500\n' >"$config/window.tsv"
touch -d '2000-01-01' "$config/window.tsv"
before=$(stat -c %Y "$config/window.tsv")
start
geometry_when_up >/dev/null || fail "move: no window"
sleep 1
[ "$(stat -c %Y "$config/window.tsv")" = "$before" ] || fail "move: start-up rewrote window.tsv"
python3 "$x11win" move Velmar 300 200
want=$(printf 'x\t300\ny\t200\nwidth\t400\nheight\t500\n')
for _ in $(seq 1 30); do
    [ "$(cat "$config/window.tsv")" = "$want" ] && break
    sleep 0.1
done
[ "$(cat "$config/window.tsv")" = "$want" ] || fail "move: window.tsv is '$(cat "$config/window.tsv")'"
stop

[ $failures -eq 0 ] || { echo "$failures check(s) failed"; exit 1; }
echo "all placement checks passed"
