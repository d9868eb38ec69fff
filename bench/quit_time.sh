#!/usr/bin/env bash
# Time from SIGTERM to the end of the process, offscreen, with a gh that hangs
# in a fetch (its group has to be ended too): idle, and right after the first
# of twenty queued saves has landed. Prints each run and the median, in ms.
# Usage: bench/quit_time.sh <path to velmar> [runs]
set -uo pipefail
velmar=${1:?usage: quit_time.sh <velmar> [runs]}
runs=${2:-9}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/bin" "$work/run" && chmod 700 "$work/run"
printf '#!/bin/sh\n[ "$1" = auth ] && exit 0\necho $$ >> "%s/ghpids"\n/bin/sleep 1000\nexit 0\n' "$work" >"$work/bin/gh"
printf '#!/bin/sh\nprintf "__VELMAR_PATH__%%s__VELMAR_END__" "%s/bin:/usr/bin:/bin"\n' "$work" >"$work/login"
chmod +x "$work/bin/gh" "$work/login"
export SHELL="$work/login" XDG_RUNTIME_DIR="$work/run" QT_QPA_PLATFORM=offscreen
unset VELMAR_SNAPSHOT VELMAR_DEBUG_SEND VELMAR_DEBUG_SEND_DELAY

median() { sort -n | awk '{a[NR]=$1} END {print a[int((NR+1)/2)]}'; }
saves='['
for i in $(seq 20); do saves+="{\"msg\":\"set_auto\",\"on\":$([ $((i % 2)) = 1 ] && echo true || echo false)},"; done
saves="${saves%,}]"

# once SAVES: one run; prints the milliseconds from the signal to the exit.
once() {
    local home="$work/home" config="$work/home/.config/velmar"
    rm -rf "$home" "$work/ghpids" && mkdir -p "$config"
    printf 'onboarded\t1\n' >"$config/settings.tsv"
    printf 'o/r\t\n' >"$config/repos.tsv"
    if [ "$1" = yes ]; then
        VELMAR_HOME="$home" VELMAR_DEBUG_SEND="$saves" VELMAR_DEBUG_SEND_DELAY=1 "$velmar" 2>/dev/null &
    else
        VELMAR_HOME="$home" "$velmar" 2>/dev/null &
    fi
    local pid=$!
    until [ -s "$work/ghpids" ]; do sleep 0.01; done
    [ "$1" = no ] || until grep -q '^auto' "$config/settings.tsv"; do sleep 0.002; done
    local t0=$(date +%s%N)
    kill -TERM "$pid"
    while kill -0 "$pid" 2>/dev/null && ! grep -q '^[0-9]* ([^)]*) Z' "/proc/$pid/stat" 2>/dev/null; do sleep 0.002; done
    local t1=$(date +%s%N)
    wait "$pid"
    echo $(((t1 - t0) / 1000000))
}

for mode in no yes; do
    [ $mode = no ] && echo "idle, a fetch hanging (ms, $runs runs):" || echo "20 saves queued (ms, $runs runs):"
    for _ in $(seq "$runs"); do once $mode; done | tee "$work/times" | tr '\n' ' '
    echo "-> median $(median <"$work/times") ms"
done
