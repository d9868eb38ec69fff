#!/usr/bin/env bash
# Times `velmar --headless` against `jq -c .` over the same generated script:
# both read every line as JSON and write JSON back, so jq is the yardstick for
# "the driver costs about what parsing and printing the script costs".
#
# Usage: bench/headless_vs_jq.sh [path/to/velmar] [runs]
#   defaults: build/app/velmar, 5 runs. Prints each median and the ratio.
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
velmar="${1:-$here/../build/app/velmar}"
runs="${2:-5}"
lines="${VELMAR_BENCH_LINES:-100000}"

command -v jq >/dev/null || { echo "jq is not installed" >&2; exit 1; }
[ -x "$velmar" ] || { echo "no velmar binary at $velmar" >&2; exit 1; }

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
script="$work/script.jsonl"
python3 "$here/gen_headless_script.py" "$lines" > "$script"
echo "script: $(wc -l < "$script") lines, $(du -h "$script" | cut -f1)"

# "wall cpu" seconds of one run of "$@" with the script on standard input;
# cpu is user plus system time, steadier than wall time on a shared machine.
time_once() {
    /usr/bin/time -f "%e %U %S" -o "$work/time" "$@" < "$script" > /dev/null
    awk '{ printf "%.2f %.2f\n", $1, $2 + $3 }' "$work/time"
}

median() { sort -n | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }

# Prints "wall-median cpu-median"; the single runs go to standard error.
measure() {
    local label="$1"; shift
    "$@" < "$script" > /dev/null  # warm the page cache and the binary
    for _ in $(seq "$runs"); do time_once "$@"; done > "$work/runs"
    local wall cpu
    wall=$(cut -d' ' -f1 "$work/runs" | median)
    cpu=$(cut -d' ' -f2 "$work/runs" | median)
    echo "$label: wall $(cut -d' ' -f1 "$work/runs" | tr '\n' ' ')s; cpu $(cut -d' ' -f2 "$work/runs" | tr '\n' ' ')s" >&2
    echo "$wall $cpu"
}

v=$(measure "velmar --headless" "$velmar" --headless)
j=$(measure "jq -c ." jq -c .)
read -r vw vc <<< "$v"
read -r jw jc <<< "$j"
echo "median wall: velmar ${vw}s, jq ${jw}s, velmar/jq = $(echo "scale=2; $vw / $jw" | bc)"
echo "median cpu:  velmar ${vc}s, jq ${jc}s, velmar/jq = $(echo "scale=2; $vc / $jc" | bc)"
