#!/bin/sh
# Twenty repositories with checks off, on, and on with "Yours" (thirty of the
# viewer's pull requests elsewhere): processes and GraphQL points per
# refresh, and wall time with a gh that takes 1 s to answer.
# Usage: bench/extras_refresh.sh [build-dir] [rounds]
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$here/build}
rounds=${2:-3}
[ -d "$build" ] || cmake -S "$here" -B "$build" -G Ninja >/dev/null
cmake --build "$build" --target extras_refresh_bench >/dev/null
exec "$build/bench/extras_refresh_bench" "$rounds"
