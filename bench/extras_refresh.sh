#!/bin/sh
# Twenty repositories with checks off, on, and on with "Yours" (thirty of the
# viewer's pull requests elsewhere): processes and GraphQL points per
# refresh, and wall time with a gh that takes 1 s to answer.
# Usage: bench/extras_refresh.sh [build-dir] [rounds]
exec "$(dirname "$0")/run_bench.sh" extras_refresh_bench 3 "$@"
