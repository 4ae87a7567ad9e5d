#!/usr/bin/env bash
# demo.sh: installs what building needs and is missing, builds the program and runs its main commands on the sample data.
# demo.sh --desktop: opens the desktop application with the sample data; where there is no display, draws it on a virtual
# one and keeps a picture.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

if [ "${1-}" = --desktop ]; then
    scripts/install-packages.sh build desktop
    scripts/build.sh release -DVARNHOLT_BUILD_DESKTOP=ON varnholt-station
    station=build/release/bin/varnholt-station
    if [ -n "${DISPLAY-}${WAYLAND_DISPLAY-}" ]; then exec "$station" Examples/data/seattle-weather.csv; fi
    mkdir -p build/demo
    QT_QPA_PLATFORM=xcb xvfb-run -a -s '-screen 0 1280x1024x24' "$station" --picture build/demo/station.png \
        Examples/data/seattle-weather.csv
    echo "There is no display. A picture of the application is in build/demo/station.png"
    exit
fi

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
