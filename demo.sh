#!/usr/bin/env bash
# Installs what building needs and is missing, builds the program and runs its main commands on the sample data.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

scripts/install-packages.sh build
scripts/build.sh release -DVARNHOLT_BUILD_TESTS=OFF -DVARNHOLT_BUILD_BENCHMARKS=OFF -DVARNHOLT_BUILD_DESKTOP=OFF varnholt

echo '$ varnholt calc "($temp_max + $temp_min) / 2" --csv Examples/data/seattle-weather.csv --summary'
build/release/bin/varnholt calc '($temp_max + $temp_min) / 2' --csv Examples/data/seattle-weather.csv --summary

out=build/demo
echo
echo '$ varnholt report Examples/data/seattle-weather.csv --latitude "47 DEG 36 MIN N" --sunshine 69.8,... --out '"$out --chart $out/report.svg"
build/release/bin/varnholt report Examples/data/seattle-weather.csv --latitude '47 DEG 36 MIN N' \
    --sunshine 69.8,108.8,178.4,207.3,253.7,268.4,312.0,281.4,221.7,142.6,72.7,52.9 --out "$out" \
    --chart "$out/report.svg"
echo
echo "The tables are in $out: $(cd "$out" && echo *.csv)"
echo "The charts of the station are in $out/report.svg"
