#!/bin/sh
# Times a refresh of ten repositories: the real effect runner and the real gh
# against the fake GitHub server, beside the same ten gh scripts run directly,
# so the difference is Velmar's own time.
# Usage: bench/refresh_ten.sh [build-dir] [rounds]
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$here/build}
rounds=${2:-9}
[ -d "$build" ] || cmake -S "$here" -B "$build" -G Ninja >/dev/null
cmake --build "$build" --target refresh_bench >/dev/null
exec "$build/bench/refresh_bench" "$rounds"
