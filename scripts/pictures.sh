#!/usr/bin/env bash
# Draws the pictures of the documentation: charts with the program, windows by the walk through the desktop
# application, both below build/release.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mkdir -p Docs/pictures
build/release/bin/varnholt report Examples/data/seattle-weather.csv --latitude '47 DEG 36 MIN N' \
    --chart Docs/pictures/seattle-report.svg >/dev/null
build/release/bin/varnholt plot Examples/data/seattle-weather.csv --x date --y temp_max,temp_min --fit linear \
    --title 'Daily temperatures of Seattle (°C)' --out Docs/pictures/seattle-temperatures.svg

QT_QPA_PLATFORM=xcb xvfb-run -a -s '-screen 0 1280x1024x24' build/release/bin/DesktopTests --gtest_brief=1 \
    --gtest_filter='StationWalk.*'
while read -r shot picture; do
    cp "build/release/screenshots/$shot.png" "Docs/pictures/$picture.png"
done <<'PICTURES'
3-sorted station
6-chart station-chart
5-computed-column station-computed-column
9-report-dialog station-report-settings
10-report station-report
12-organize station-favourites
PICTURES
