#!/usr/bin/env bash
# Placement on Xvfb (1280x1024, no window manager): a frame off every screen is centred, one on
# it comes back where it was; start-up does not rewrite window.tsv, a move by the user does.
set -uo pipefail
velmar=$1 x11win=$2
[ -n "${DISPLAY:-}" ] || exec xvfb-run -a -s "-screen 0 1280x1024x24" bash "$0" "$@"
. "$(dirname "$0")/../support/script.sh"
config=$work/home/.config/velmar tsv=$work/home/.config/velmar/window.tsv
mkdir -p "$config"
export VELMAR_HOME="$work/home" QT_QPA_PLATFORM=xcb
frame() { printf 'x\t%s\ny\t%s\nwidth\t400\nheight\t500\n' "$@"; }

# start X Y: saves that frame (dated long ago) and starts velmar; a switch of the automatic
# refresh, sent after start-up, writes settings.tsv behind any save that start-up queued.
start() {
    rm -f "$config/settings.tsv"
    frame "$1" "$2" >"$tsv" && touch -d 2000-01-01 "$tsv"
    VELMAR_DEBUG_SEND='[{"msg":"set_auto","on":true}]' VELMAR_DEBUG_SEND_DELAY=0.5 "$velmar" 2>"$work/err" &
    pid=$! && started+=("$pid")
}
stop() { kill $pid 2>/dev/null; wait $pid 2>/dev/null; }
# placed X Y: the window stands at X Y, 400 by 500.
placed() { [ "$(python3 "$x11win" geometry Velmar 2>/dev/null)" = "$1 $2 400 500" ]; }
# comes_to WHAT X Y: the window reaches X Y and is still there once start-up is over.
comes_to() {
    within 10 placed "$2" "$3" && within 10 test -s "$config/settings.tsv" && placed "$2" "$3" ||
        fail "$1: at '$(python3 "$x11win" geometry Velmar)', want '$2 $3'"
}

start 5000 4000
comes_to "off screen" 440 262
stop

start 100 120
comes_to "on screen" 100 120
[ "$(stat -c %Y "$tsv")" = "$(date -d 2000-01-01 +%s)" ] || fail "start-up rewrote window.tsv"
python3 "$x11win" move Velmar 300 200
within 5 eval '[ "$(cat "$tsv")" = "$(frame 300 200)" ]' || fail "move: window.tsv is '$(cat "$tsv")'"
stop

finish placement
