#!/bin/sh
# Times typing in the settings screen's add field over 500 suggestions, from
# the key press to the filtered list drawn, offscreen.
# Usage: bench/add_field_typing.sh [build-dir] [rounds]
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$here/build}
rounds=${2:-10}
[ -d "$build" ] || cmake -S "$here" -B "$build" -G Ninja >/dev/null
cmake --build "$build" --target add_field_bench >/dev/null
exec "$build/bench/add_field_bench" "$rounds"
