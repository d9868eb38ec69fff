# Sourced by the scripts that run the real program. It makes the scratch
# folder `work` (removed at exit, after killing the ids in `started`), puts a
# gh that answers nothing first on PATH, gives the program a runtime folder of
# its own, and clears the automation variables a caller's environment may hold.
work=$(mktemp -d) failures=0 started=()
trap 'kill -9 "${started[@]}" 2>/dev/null; wait 2>/dev/null; rm -rf "$work"' EXIT
mkdir -p "$work/bin" "$work/run" && chmod 700 "$work/run"
printf '#!/bin/sh\nexit 0\n' >"$work/bin/gh" && chmod +x "$work/bin/gh"
export PATH="$work/bin:$PATH" XDG_RUNTIME_DIR="$work/run"
unset VELMAR_APPEARANCE VELMAR_MATERIAL VELMAR_SNAPSHOT VELMAR_DEBUG_SEND VELMAR_DEBUG_SEND_DELAY \
      XDG_ACTIVATION_TOKEN DESKTOP_STARTUP_ID

fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

# within SECONDS COMMAND...: true once the command succeeds, polling every 20 ms.
within() {
    local end=$(($(date +%s%N) + $1 * 1000000000))
    shift
    until "$@"; do [ "$(date +%s%N)" -lt $end ] || return 1; sleep 0.02; done
}

# home DIR [SETTINGS]: a configuration folder whose settings.tsv holds SETTINGS
# (printf's format), by default onboarded, dark and refreshing on demand.
home() {
    mkdir -p "$1/.config/velmar"
    printf "${2:-auto\t0\nview\tlist\nonboarded\t1\nappearance\tdark\n}" >"$1/.config/velmar/settings.tsv"
}

# finish WHAT [FILE...]: the verdict; on failure the files are shown too.
finish() {
    [ $failures -eq 0 ] || { echo "$failures check(s) failed"; shift; [ $# -eq 0 ] || cat "$@"; exit 1; }
    echo "all $1 checks passed"
}
