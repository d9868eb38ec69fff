#!/usr/bin/env bash
# One panel per configuration folder, on Xvfb without a window manager: a second start with the
# same home exits 0 and the first panel takes the focus back; another home is another panel;
# --headless never asks; a panel killed with -9 does not block the next start; two starts at once
# leave one panel; and the window has an icon and the class that the desktop entry names.
set -uo pipefail
velmar=$1 x11win=$2 desktop=$3
[ -n "${DISPLAY:-}" ] || exec xvfb-run -a -s "-screen 0 1280x1024x24" bash "$0" "$@"
. "$(dirname "$0")/../support/script.sh"
export QT_QPA_PLATFORM=xcb
x11() { python3 "$x11win" "$@" 2>/dev/null; }
has_window() { x11 pids Velmar | grep -qx "$1"; }
focused() { [ "$(x11 focus)" = "$1" ]; }
ended() { ! kill -0 "$1" 2>/dev/null; }
either_ended() { ended "$1" || ended "$2"; }

# start HOME: velmar with that home (onboarded) in the background; its id in $pid.
start() {
    home "$work/$1" 'onboarded\t1\n'
    VELMAR_HOME="$work/$1" "$velmar" 2>>"$work/err" &
    pid=$!
    started+=("$pid")
}

start a && a=$pid
within 10 has_window "$a" || fail "first panel: no window"
start b && b=$pid
within 10 has_window "$b" || fail "another home: no second panel"
within 10 focused "$b" || fail "the second panel did not take the focus"

VELMAR_HOME="$work/a" timeout 20 "$velmar"
status=$?
[ $status -eq 0 ] || fail "second start with the same home: status $status"
within 10 focused "$a" || fail "the first panel did not come forward; focus is with $(x11 focus)"
kill -0 "$a" && kill -0 "$b" || fail "a panel ended"

out=$(echo '{"msg":"boot"}' | VELMAR_HOME="$work/a" timeout 20 "$velmar" --headless | tail -n 1)
[[ $out == '{"model":'* ]] || fail "--headless beside a running panel printed '$out'"

class=$(sed -n 's/^StartupWMClass=//p' "$desktop")
[ "$(x11 class Velmar)" = "velmar $class" ] || fail "window class '$(x11 class Velmar)', entry says '$class'"
[ -n "$(x11 icons Velmar)" ] || fail "the window has no icon"

{ kill -9 "$a" && wait "$a"; } 2>/dev/null
start a && a=$pid
within 10 has_window "$a" || fail "after kill -9 the next start has no window"
VELMAR_HOME="$work/a" timeout 20 "$velmar"
status=$?
[ $status -eq 0 ] || fail "after kill -9 the new panel does not serve its home: status $status"

start c && c1=$pid
start c && c2=$pid
within 10 either_ended "$c1" "$c2" || fail "two starts at once: both still run"
if ended "$c1"; then gone=$c1 kept=$c2; else gone=$c2 kept=$c1; fi
wait "$gone"
status=$?
[ $status -eq 0 ] || fail "two starts at once: the one that left has status $status"
within 10 has_window "$kept" || fail "two starts at once: the one that stayed has no window"
ended "$kept" && fail "two starts at once: no panel left"

finish one-instance "$work/err"
