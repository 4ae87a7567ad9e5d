#!/usr/bin/env bash
# Draws the pictures of the documentation with the program below build/release.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mkdir -p Docs/pictures
build/release/bin/varnholt report Examples/data/seattle-weather.csv --latitude '47 DEG 36 MIN N' \
    --chart Docs/pictures/seattle-report.svg >/dev/null
build/release/bin/varnholt plot Examples/data/seattle-weather.csv --x date --y temp_max,temp_min --fit linear \
    --title 'Daily temperatures of Seattle (°C)' --out Docs/pictures/seattle-temperatures.svg
