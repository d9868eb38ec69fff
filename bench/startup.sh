#!/usr/bin/env bash
# Measures the windowed application offscreen and prints medians:
#   first frame  wall time from process start until the first frame has been
#                rendered, captured and the process has quit (VELMAR_SNAPSHOT
#                with delay 0: the capture renders the first frame), 7 runs
#   resident     VmRSS after 10 s with 20 repos x 40 PRs fed through
#                VELMAR_DEBUG_SEND, 3 runs; RESIDENT_REPOS="0 1 5 20" measures
#                each of those counts in turn
#   idle CPU     user+system time over 60 idle seconds (timers running) with
#                the same rows drawn, as a share of one core, 3 runs (set
#                IDLE_SECONDS to shorten)
# Usage: bench/startup.sh <path to velmar>
set -euo pipefail
velmar=${1:?usage: startup.sh <velmar>}
idle=${IDLE_SECONDS:-60}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
home=$work/home
mkdir -p "$home/.config/velmar" "$work/bin"
printf 'auto\t0\nview\tlist\nonboarded\t1\nappearance\tdark\n' >"$home/.config/velmar/settings.tsv"
printf '#!/bin/sh\nexit 0\n' >"$work/bin/gh"
chmod +x "$work/bin/gh"
export PATH="$work/bin:$PATH" QT_QPA_PLATFORM=offscreen VELMAR_HOME="$home"
unset VELMAR_SNAPSHOT VELMAR_DEBUG_SEND VELMAR_APPEARANCE

median() { sort -n | awk '{a[NR]=$1} END {print a[int((NR+1)/2)]}'; }

# feed N: N repositories of 40 pull requests each, as the core would receive them.
feed() {
python3 - "$home" "$1" <<'PY'
import base64, json, sys
home = sys.argv[1]
slugs = ["bench-owner/repo-%02d" % i for i in range(int(sys.argv[2]))]
msgs = [{"msg": "home_resolved", "home": home},
        {"msg": "file_read", "file": "repos", "contents": "".join(s + "\t\n" for s in slugs)},
        {"msg": "path_resolved", "path": "/usr/bin:/bin"}]
for slug in slugs:
    rows = [slug]
    for n in range(1, 41):
        # Kept short: one environment variable holds at most 128 KiB.
        body = "[Preview](https://r%s-pr-%d.up.railway.app)" % (slug[-2:], n)
        rows.append("\t".join([str(n), "Change number %d" % n, "someone",
                               "feature/%d" % n, "false",
                               "https://github.com/%s/pull/%d" % (slug, n),
                               base64.b64encode(body.encode()).decode()]))
    msgs.append({"msg": "prs_fetched", "output": "\n".join(rows) + "\n", "ok": True})
text = json.dumps(msgs)
assert len(text) < 131072, len(text)
print(text)
PY
}
feed 20 >"$work/feed.json"

echo "first frame (ms, 7 runs):"
for _ in 1 2 3 4 5 6 7; do
    start=$(date +%s%N)
    VELMAR_SNAPSHOT="$work/first.png" VELMAR_SNAPSHOT_DELAY=0 "$velmar" 2>/dev/null
    echo $(( ($(date +%s%N) - start) / 1000000 ))
done | tee "$work/first" | tr '\n' ' '
echo "-> median $(median <"$work/first") ms"

for repos in ${RESIDENT_REPOS:-20}; do
    feed "$repos" >"$work/feed-$repos.json"
    echo "resident after 10 s with ${repos}x40 PRs (MB, 3 runs):"
    for _ in 1 2 3; do
        VELMAR_DEBUG_SEND="$(cat "$work/feed-$repos.json")" VELMAR_DEBUG_SEND_DELAY=1 "$velmar" 2>/dev/null &
        pid=$!
        sleep 10
        awk '/VmRSS/ {printf "%.1f\n", $2 / 1024}' "/proc/$pid/status"
        kill "$pid"; wait "$pid" 2>/dev/null || true
    done | tee "$work/rss" | tr '\n' ' '
    echo "-> median $(median <"$work/rss") MB"
done

echo "idle CPU over $idle s with the 20x40 PRs drawn, nothing loading (% of one core, 3 runs):"
ticks=$(getconf CLK_TCK)
for _ in 1 2 3; do
    VELMAR_DEBUG_SEND="$(cat "$work/feed.json")" VELMAR_DEBUG_SEND_DELAY=1 "$velmar" 2>/dev/null &
    pid=$!
    sleep 8
    a=$(awk '{print $14 + $15}' "/proc/$pid/stat")
    sleep "$idle"
    b=$(awk '{print $14 + $15}' "/proc/$pid/stat")
    kill "$pid"; wait "$pid" 2>/dev/null || true
    awk -v d=$((b - a)) -v t="$ticks" -v s="$idle" 'BEGIN {printf "%.3f\n", 100 * d / t / s}'
done | tee "$work/cpu" | tr '\n' ' '
echo "-> median $(median <"$work/cpu") %"
