#!/usr/bin/env bash
# SIGTERM, SIGINT and SIGHUP end the panel like its own Quit: status 0 within three seconds, a
# gh that hangs in a fetch ended with its group, every stored file whole, no temporary file left,
# and the next start is not refused as already running. Each signal idle during a fetch and with
# twenty saves queued, a second SIGTERM during the wait, and once on X11 (Xvfb). Prints the
# signal-to-exit times.
set -uo pipefail
velmar=$1
[ -n "${DISPLAY:-}" ] || exec xvfb-run -a -s "-screen 0 1280x1024x24" bash "$0" "$@"
. "$(dirname "$0")/../support/script.sh"
# gh: logged in; a pull request list that never ends. Each hanging gh notes its id.
cat >"$work/bin/gh" <<GH
#!/bin/sh
[ "\$1" = auth ] && exit 0
echo \$\$ >> "$work/ghpids"
/bin/sleep 1000
exit 0
GH
printf '#!/bin/sh\nprintf "__VELMAR_PATH__%%s__VELMAR_END__" "%s/bin:/usr/bin:/bin"\n' "$work" >"$work/login"
chmod +x "$work/bin/gh" "$work/login"
export SHELL="$work/login"
alive() { [ -e "/proc/$1" ] && ! grep -q '^[0-9]* ([^)]*) Z' "/proc/$1/stat" 2>/dev/null; }
gh_alive() { [ -f "$work/ghpids" ] || return 1; local p; for p in $(cat "$work/ghpids"); do alive "$p" && return 0; done; return 1; }
ended() { ! alive "$1"; }

saves='['
for i in $(seq 20); do saves+="{\"msg\":\"set_auto\",\"on\":$([ $((i % 2)) = 1 ] && echo true || echo false)},"; done
saves="${saves%,}]"

# row NAME SIGNALS SAVES [PLATFORM]: one start, a fetch hanging, SIGNALS sent (space-separated), checks.
row() {
    local name=$1 signals=$2 with_saves=$3 home="$work/home-$1"
    export QT_QPA_PLATFORM=${4:-offscreen}
    local config="$home/.config/velmar"
    home "$home" 'onboarded\t1\n' && rm -f "$work/ghpids"
    printf 'o/r\t\n' >"$config/repos.tsv"
    if [ "$with_saves" = yes ]; then
        VELMAR_HOME="$home" VELMAR_DEBUG_SEND="$saves" VELMAR_DEBUG_SEND_DELAY=1 "$velmar" 2>>"$work/err" &
    else
        VELMAR_HOME="$home" "$velmar" 2>>"$work/err" &
    fi
    local pid=$! && started+=("$pid")
    within 20 gh_alive || { fail "$name: no fetch started"; return; }
    # With saves: the signal comes as soon as the first of them has landed.
    [ "$with_saves" = no ] || within 20 grep -q '^auto' "$config/settings.tsv" || fail "$name: no save landed"
    local t0=$(date +%s%N) s
    for s in $signals; do kill -s "$s" "$pid"; done
    within 5 ended "$pid"
    local t1=$(date +%s%N)
    wait "$pid"; local status=$?
    local ms=$(((t1 - t0) / 1000000))
    echo "$name: exit $status after $ms ms"
    [ $status -eq 0 ] || fail "$name: exit status $status"
    [ $ms -le 3000 ] || fail "$name: took $ms ms"
    within 2 eval '! gh_alive' || fail "$name: gh still running"
    local stray
    stray=$(find "$config" -type f ! -name '*.tsv')
    [ -z "$stray" ] || fail "$name: left $stray"
    # The old text or one of the new ones, whole.
    local settings
    settings=$(cat "$config/settings.tsv"; echo .)
    [[ $settings == $'onboarded\t1\n.' || $settings =~ ^auto$'\t'[01]$'\n'view$'\t'list$'\n'onboarded$'\t'1$'\n'appearance$'\t'dark$'\n'\.$ ]] ||
        fail "$name: settings.tsv torn: $(od -c "$config/settings.tsv" | head -3)"
    [ "$(cat "$config/repos.tsv")" = $'o/r\t' ] || fail "$name: repos.tsv changed"

    # The next start serves the home again: it fetches, so it was not sent away.
    rm -f "$work/ghpids"
    VELMAR_HOME="$home" "$velmar" 2>>"$work/err" &
    local next=$! && started+=("$next")
    within 20 gh_alive || fail "$name: the next start did not come up"
    kill -TERM "$next"; wait "$next"
}

for s in TERM INT HUP; do
    row "$s-idle" "$s" no
    row "$s-saves" "$s" yes
done
row "TERM-twice" "TERM TERM" yes
row "TERM-x11" TERM yes xcb

finish quit "$work/err"
