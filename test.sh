#!/usr/bin/env bash
# Installs what is missing, builds everything and passes the tests. With the name of a preset it uses that one.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
preset=${1:-release}

scripts/install-packages.sh
scripts/build.sh "$preset"
ctest --preset "$preset" --progress
