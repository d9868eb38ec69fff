#!/bin/sh
# Times a refresh of ten repositories: the real effect runner and the real gh
# against the fake GitHub server, beside the same ten gh scripts run directly,
# so the difference is Velmar's own time.
# Usage: bench/refresh_ten.sh [build-dir] [rounds]
exec "$(dirname "$0")/run_bench.sh" refresh_bench 9 "$@"
