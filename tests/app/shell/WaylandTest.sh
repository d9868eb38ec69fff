#!/usr/bin/env bash
# The panel on Wayland, in a weston whose output is a window of Xvfb (weston's X11 backend gives it a
# seat, so keys pressed through XTEST reach the panel as a user's would): it draws at the size it
# was left, start-up writes nothing, the window keys work through the compositor's keyboard, a
# second start brings the first forward and exits 0, and Ctrl+Q ends it with status 0.
set -uo pipefail
velmar=$1 probe=$2 x11win=$3
[ -n "${DISPLAY:-}" ] || exec xvfb-run -a -s "-screen 0 1280x800x24" bash "$0" "$@"
. "$(dirname "$0")/../support/script.sh"

weston --backend=x11-backend.so --socket=velmar-wayland --idle-time=0 >"$work/weston.log" 2>&1 &
started+=($!)
within 20 test -S "$work/run/velmar-wayland" || { cat "$work/weston.log"; echo "weston did not start"; exit 1; }
export QT_QPA_PLATFORM=wayland WAYLAND_DISPLAY=velmar-wayland
# wayland() COMMAND...: runs it with no X display to fall back to.
wayland() { env -u DISPLAY "$@"; }
keys() { python3 "$x11win" keys "$@"; }
view_is() { grep -qx "view	$1" "$work/a/.config/velmar/settings.tsv"; }

home "$work/a"
printf 'acme/web\t\n' >"$work/a/.config/velmar/repos.tsv"
printf 'x\t40\ny\t30\nwidth\t360\nheight\t500\n' >"$work/a/.config/velmar/window.tsv"
cp "$work/a/.config/velmar/window.tsv" "$work/window.before"

VELMAR_HOME="$work/a" VELMAR_SNAPSHOT="$work/shot.png" VELMAR_SNAPSHOT_DELAY=1.5 \
    wayland timeout 30 "$velmar" 2>"$work/err"
status=$?
[ $status -eq 0 ] || fail "the snapshot run ended with status $status"
read -r width height colours _ < <("$probe" "$work/shot.png" 2>/dev/null) || true
[ "${width:-0}x${height:-0}" = "360x500" ] || fail "drawn at ${width:-?}x${height:-?}, left at 360x500"
[ "${colours:-0}" -gt 20 ] || fail "the picture has ${colours:-no} colours: nothing was drawn"
cmp -s "$work/window.before" "$work/a/.config/velmar/window.tsv" || fail "start-up rewrote window.tsv"

VELMAR_HOME="$work/a" wayland "$velmar" 2>>"$work/err" &
panel=$!
started+=("$panel")
# The first keys may come before the window has the keyboard: press until the screen changes.
settings() { keys ctrl+comma && view_is manage; }
within 15 settings || fail "Ctrl+comma through the seat did not open the settings"
keys Escape
within 5 view_is list || fail "Escape through the seat did not go back to the list"

VELMAR_HOME="$work/a" wayland timeout 20 "$velmar" 2>>"$work/err"
status=$?
[ $status -eq 0 ] || fail "a second start with the same home: status $status"
kill -0 "$panel" 2>/dev/null || fail "the first panel ended when the second started"

keys ctrl+q
ended() { ! kill -0 "$panel" 2>/dev/null; }
within 5 ended || fail "Ctrl+Q through the seat did not end the panel"
wait "$panel"
status=$?
[ $status -eq 0 ] || fail "Ctrl+Q: status $status"

finish wayland "$work/err" "$work/weston.log"
