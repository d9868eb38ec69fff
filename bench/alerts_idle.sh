#!/usr/bin/env bash
# What notifications and the tray icon cost while nothing happens: the real program, offscreen, on a
# private session bus with a fake tray and a fake notification server, checks on, one answer of 40
# pull requests (and three waiting for review) handed in, then left alone. Runs with both switches
# off and on in turns and prints, per run, the CPU of the idle period (percent of a core) and the
# resident memory after it, then the medians and the ratios on/off.
#   bench/alerts_idle.sh build/app/velmar [pairs] [idle seconds]    (5, 20)
set -uo pipefail
velmar=$1 pairs=${2:-5} seconds=${3:-20}
here=$(cd "$(dirname "$0")" && pwd)
support=$here/../tests/app/support
work=$(mktemp -d) bus="" fakes=()
trap 'for p in "${fakes[@]}"; do kill "$p" 2>/dev/null; done; kill $bus 2>/dev/null; rm -rf "$work"' EXIT
mkdir -p "$work/bin" "$work/run" && chmod 700 "$work/run"
printf '#!/bin/sh\nexit 0\n' >"$work/bin/gh" && chmod +x "$work/bin/gh"
. "$support/private_bus.sh"
private_bus "$work"
export PATH="$work/bin:$PATH" QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen} XDG_RUNTIME_DIR="$work/run"
unset VELMAR_APPEARANCE VELMAR_MATERIAL VELMAR_SNAPSHOT
for fake in fake_tray.py fake_notifications.py; do
    mkfifo "$work/$fake.in"
    /usr/bin/python3 "$support/$fake" <"$work/$fake.in" >"$work/$fake.out" &
    fakes+=($!)
    exec {fd}>"$work/$fake.in"
done

answer=$(python3 - <<'EOF'
import json
def pr(n, author, state, repo="acme/web"):
    return {"id": "PR_%d" % n, "number": n, "title": "Change %d with a title long enough to be cut" % n,
            "url": "https://github.com/%s/pull/%d" % (repo, n), "headRefName": "b%d" % n, "headRefOid": "o%d" % n,
            "isDraft": False, "updatedAt": "2026-01-01T00:00:00Z", "author": {"login": author},
            "reviewDecision": None, "mergeable": "MERGEABLE", "statusCheckRollup": {"state": state}}
review = [dict(pr(n, "bo", "SUCCESS", "acme/api"), repository={"nameWithOwner": "acme/api"}) for n in (1, 2, 3)]
rows = [pr(n, "ana" if n % 4 == 0 else "bo", "FAILURE" if n % 7 == 0 else "SUCCESS") for n in range(1, 41)]
data = {"viewer": {"login": "ana"}, "r0": {"pullRequests": {"nodes": rows}}, "review": {"nodes": review}}
print(json.dumps([{"msg": "batch_fetched", "repos": ["acme/web"], "output": json.dumps({"data": data}), "ok": True}]))
EOF
)

# run on|off: one run; prints "CPU_PERCENT RSS_KB".
run() {
    local home=$work/home-$1-$RANDOM
    mkdir -p "$home/.config/velmar"
    printf 'auto\t0\nview\tlist\nonboarded\t1\nappearance\tdark\n' >"$home/.config/velmar/settings.tsv"
    printf 'acme/web\t\n' >"$home/.config/velmar/repos.tsv"
    if [ "$1" = on ]; then
        printf 'checks\t1\nnotify\t1\nnotify_new\t1\nnotify_checks\t1\nnotify_review\t1\ntray\t1\n'
    else
        printf 'checks\t1\n'
    fi >"$home/.config/velmar/extras.tsv"
    VELMAR_HOME="$home" VELMAR_DEBUG_SEND="$answer" VELMAR_DEBUG_SEND_DELAY=1 "$velmar" 2>/dev/null &
    local pid=$!
    sleep 4
    local t0 c0 t1 c1
    t0=$(date +%s.%N) c0=$(awk '{print $14 + $15}' "/proc/$pid/stat")
    sleep "$seconds"
    t1=$(date +%s.%N) c1=$(awk '{print $14 + $15}' "/proc/$pid/stat")
    local rss
    rss=$(awk '/^VmRSS:/ {print $2}' "/proc/$pid/status")
    kill "$pid"
    wait "$pid" 2>/dev/null
    python3 -c "import os; print('%.3f %s' % (100 * ($c1 - $c0) / os.sysconf('SC_CLK_TCK') / ($t1 - $t0), '$rss'))"
}

: >"$work/results"
for i in $(seq "$pairs"); do
    for mode in off on; do
        r=$(run $mode)
        echo "$mode $r" | tee -a "$work/results"
    done
done
python3 - "$work/results" <<'EOF'
import statistics, sys
rows = [line.split() for line in open(sys.argv[1])]
cpu = {m: [float(r[1]) for r in rows if r[0] == m] for m in ("off", "on")}
rss = {m: [int(r[2]) for r in rows if r[0] == m] for m in ("off", "on")}
for m in ("off", "on"):
    print("%s: idle CPU median %.3f%% of a core (%.3f to %.3f), RSS median %.1f MB" % (
        m, statistics.median(cpu[m]), min(cpu[m]), max(cpu[m]), statistics.median(rss[m]) / 1024))
print("RSS on/off %.3f, RSS on-off %.1f MB" % (statistics.median(rss["on"]) / statistics.median(rss["off"]),
                                                (statistics.median(rss["on"]) - statistics.median(rss["off"])) / 1024))
EOF
