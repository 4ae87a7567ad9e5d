#!/usr/bin/env bash
# build.sh PRESET [TARGET...]: configures and builds below build/PRESET; prints the output of a failure alone.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=$1
shift

log=$(mktemp)
trap 'rm -f "$log"' EXIT
echo "Building below build/$preset ..."
if ! { cmake --preset "$preset" && cmake --build --preset "$preset" ${@:+--target "$@"}; } >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
