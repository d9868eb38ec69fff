#!/bin/sh
# Times typing in the settings screen's add field over 500 suggestions, from
# the key press to the filtered list drawn, offscreen.
# Usage: bench/add_field_typing.sh [build-dir] [rounds]
exec "$(dirname "$0")/run_bench.sh" add_field_bench 10 "$@"
