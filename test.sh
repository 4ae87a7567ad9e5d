#!/usr/bin/env bash
# test.sh [PRESET]: installs what is missing, builds everything of the preset (release) and runs its tests.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
preset=${1:-release}
sections=(build test desktop optional)
[ "$preset" = release ] || sections+=(check)

scripts/install-packages.sh "${sections[@]}"
scripts/build.sh "$preset" -DVARNHOLT_BUILD_TESTS=ON -DVARNHOLT_BUILD_DESKTOP=ON
ctest --test-dir "build/$preset" --output-on-failure --parallel 2 --progress
