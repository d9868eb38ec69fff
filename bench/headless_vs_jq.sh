#!/usr/bin/env bash
# Times `velmar --headless` against `jq -c .` over the same generated script:
# both read every line as JSON and write JSON back, so jq is the yardstick for
# "the driver costs about what parsing and printing the script costs".
#
# The two programs run in turns (velmar, jq, velmar, jq, ...), so a machine
# that speeds up or slows down during the measurement weighs on both alike;
# each pair gives one ratio, and the median and the spread of those are shown.
#
# Usage: bench/headless_vs_jq.sh [path/to/velmar] [pairs]
#   defaults: build/app/velmar, 7 pairs. VELMAR_BENCH_LINES sets the script
#   length (100000 lines by default).
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
velmar="${1:-$here/../build/app/velmar}"
pairs="${2:-7}"
lines="${VELMAR_BENCH_LINES:-100000}"

command -v jq >/dev/null || { echo "jq is not installed" >&2; exit 1; }
[ -x "$velmar" ] || { echo "no velmar binary at $velmar" >&2; exit 1; }

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
script="$work/script.jsonl"
python3 "$here/gen_headless_script.py" "$lines" > "$script"
script_kb=$(( $(wc -c < "$script") / 1024 ))
echo "script: $(wc -l < "$script") lines, ${script_kb} KB"

# "wall cpu peak-KB" of one run of "$@" with the script on standard input;
# cpu is user plus system time, steadier than wall time on a shared machine.
time_once() {
    /usr/bin/time -f "%e %U %S %M" -o "$work/time" "$@" < "$script" > /dev/null
    awk '{ printf "%.2f %.2f %d\n", $1, $2 + $3, $4 }' "$work/time"
}

# Warm the page cache and both binaries before anything is timed.
"$velmar" --headless < "$script" > /dev/null
jq -c . < "$script" > /dev/null

: > "$work/velmar"
: > "$work/jq"
for _ in $(seq "$pairs"); do
    time_once "$velmar" --headless >> "$work/velmar"
    time_once jq -c . >> "$work/jq"
done

median() { sort -g | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }
column() { cut -d' ' -f"$2" "$work/$1"; }
# The ratio velmar/jq of column $1 in each pair, one per line.
ratios() { paste -d' ' <(column velmar "$1") <(column jq "$1") | awk '{ printf "%.3f\n", ($2 > 0) ? $1 / $2 : 0 }'; }
spread() { sort -g | awk 'NR == 1 { lo = $1 } { hi = $1 } END { printf "%s to %s", lo, hi }'; }

for program in velmar jq; do
    echo "$program: wall $(column $program 1 | tr '\n' ' ')s; cpu $(column $program 2 | tr '\n' ' ')s;" \
         "peak $(column $program 3 | sort -n | tail -1) KB"
done
echo "$pairs interleaved pairs, velmar/jq per pair:"
echo "  cpu:  median $(ratios 2 | median), spread $(ratios 2 | spread)"
echo "  wall: median $(ratios 1 | median), spread $(ratios 1 | spread)"
echo "  median cpu: velmar $(column velmar 2 | median)s, jq $(column jq 2 | median)s"
echo "peak memory: velmar $(column velmar 3 | sort -n | tail -1) KB, jq $(column jq 3 | sort -n | tail -1) KB," \
     "script ${script_kb} KB"
