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

# Seconds, as a decimal, of one run of "$@" with the script on standard input.
time_once() {
    local start end
    start=$(date +%s%N)
    "$@" < "$script" > /dev/null
    end=$(date +%s%N)
    echo "scale=3; ($end - $start) / 1000000000" | bc
}

median() { sort -n | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }

measure() {
    local label="$1"; shift
    local times=()
    "$@" < "$script" > /dev/null  # warm the page cache and the binary
    for _ in $(seq "$runs"); do times+=("$(time_once "$@")"); done
    local m
    m=$(printf '%s\n' "${times[@]}" | median)
    echo "$label: runs ${times[*]} s, median $m s" >&2
    echo "$m"
}

v=$(measure "velmar --headless" "$velmar" --headless)
j=$(measure "jq -c ." jq -c .)
echo "velmar median ${v}s, jq median ${j}s, velmar/jq = $(echo "scale=2; $v / $j" | bc)"
