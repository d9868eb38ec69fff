#!/bin/sh
# Builds one benchmark target (configuring the build folder first if there is
# none) and runs it with the number of rounds given, else its own default.
# Usage: bench/run_bench.sh TARGET DEFAULT-ROUNDS [build-dir] [rounds]
set -eu
target=$1
default_rounds=$2
shift 2
here=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$here/build}
rounds=${2:-$default_rounds}
[ -d "$build" ] || cmake -S "$here" -B "$build" -G Ninja >/dev/null
cmake --build "$build" --target "$target" >/dev/null
exec "$build/bench/$target" "$rounds"
