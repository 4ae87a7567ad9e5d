#!/usr/bin/env bash
# Installs what is missing, builds the release and runs the main job on the sample data.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

scripts/install-packages.sh
scripts/build.sh release varnholt

echo '$ varnholt calc "($temp_max + $temp_min) / 2" --csv Examples/data/seattle-weather.csv --summary'
build/release/bin/varnholt calc '($temp_max + $temp_min) / 2' --csv Examples/data/seattle-weather.csv --summary
