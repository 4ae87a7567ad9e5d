#!/usr/bin/env bash
# tidy.sh [FILE...]: runs clang-tidy on those sources, or on all that are not tests; fails on any finding.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
cmake --preset clang >/dev/null

if [ $# -eq 0 ]; then
    mapfile -t files < <(git ls-files 'Platform/*.cpp' 'VarnholtBaseLib/*.cpp' 'VarnholtLib/*.cpp' 'Tools/*.cpp' 'Desktop/*.cpp')
    set -- "${files[@]}"
fi
# A finding in a header is reported with each source that includes it, and shown once.
printf '%s\n' "$@" | xargs -P 2 -n 1 clang-tidy -p build/clang --quiet 2>/dev/null | awk '!seen[$0]++'
