#!/usr/bin/env bash
# build.sh PRESET [-DNAME=VALUE...] [TARGET...]: configures and builds below build/PRESET; prints the output only
# if that fails.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=$1
shift
options=()
while [[ ${1-} == -D* ]]; do
    options+=("$1")
    shift
done

log=$(mktemp)
trap 'rm -f "$log"' EXIT
echo "Building below build/$preset ..."
if ! { cmake --preset "$preset" "${options[@]}" && cmake --build "build/$preset" ${@:+--target "$@"}; } >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
