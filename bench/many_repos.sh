#!/bin/sh
# A long watch list: 1,000 and 10,000 repositories through the core alone and
# through the panel, each in a process of its own (time per phase, per answer,
# peak resident memory).
# Usage: bench/many_repos.sh [build-dir] [counts...]
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$here/build}
[ $# -gt 0 ] && shift
counts=${*:-1000 10000}
cmake --build "$build" --target many_repos >/dev/null
for mode in core panel; do
  for n in $counts; do
    "$build/bench/many_repos" "$mode" "$n"
  done
done
