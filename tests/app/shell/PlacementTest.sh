#!/usr/bin/env bash
# Placement on Xvfb (1280x1024, no window manager): a frame off every screen is centred, one on
# it comes back where it was; start-up does not rewrite window.tsv, a move by the user does.
set -uo pipefail
velmar=$1 x11win=$2
[ -n "${DISPLAY:-}" ] || exec xvfb-run -a -s "-screen 0 1280x1024x24" bash "$0" "$@"
work=$(mktemp -d) pid="" failures=0
trap 'kill $pid 2>/dev/null; rm -rf "$work"' EXIT
tsv=$work/home/.config/velmar/window.tsv
mkdir -p "${tsv%/*}" "$work/bin"
printf '#!/bin/sh\nexit 0\n' >"$work/bin/gh" && chmod +x "$work/bin/gh"
export PATH="$work/bin:$PATH" VELMAR_HOME="$work/home" QT_QPA_PLATFORM=xcb
unset VELMAR_SNAPSHOT VELMAR_DEBUG_SEND
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
frame() { printf 'x\t%s\ny\t%s\nwidth\t400\nheight\t500\n' "$@"; }

# start X Y: saves that frame (dated long ago) and starts velmar.
start() { frame "$1" "$2" >"$tsv" && touch -d 2000-01-01 "$tsv" && { "$velmar" 2>"$work/err" & pid=$!; }; }
stop() { kill $pid 2>/dev/null; wait $pid 2>/dev/null; pid=""; }
# geometry: waits for the window and its second placement, then prints "x y width height".
geometry() {
    for _ in $(seq 50); do
        python3 "$x11win" geometry Velmar >/dev/null 2>&1 && sleep 0.7 && python3 "$x11win" geometry Velmar && return
        sleep 0.1
    done
}

start 5000 4000
got=$(geometry)
[ "$got" = "440 262 400 500" ] || fail "off screen: at '$got', want centred '440 262 400 500'"
stop

start 100 120
got=$(geometry)
[ "$got" = "100 120 400 500" ] || fail "on screen: at '$got', want '100 120 400 500'"
sleep 1
[ "$(stat -c %Y "$tsv")" = "$(date -d 2000-01-01 +%s)" ] || fail "start-up rewrote window.tsv"
python3 "$x11win" move Velmar 300 200
for _ in $(seq 30); do [ "$(cat "$tsv")" = "$(frame 300 200)" ] && break; sleep 0.1; done
[ "$(cat "$tsv")" = "$(frame 300 200)" ] || fail "move: window.tsv is '$(cat "$tsv")'"
stop

[ $failures -eq 0 ] || { echo "$failures check(s) failed"; exit 1; }
echo "all placement checks passed"
