#!/usr/bin/env bash
# check.sh BUILD: checks the shared libraries of the build in BUILD, and static ones, as their users meet them:
# installed, moved, through CMake and through pkg-config, and as a subproject.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
build=$PWD/$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi

quietly() { "$@" >"$work/log" 2>&1 || { echo "FAILED: $*" >&2; cat "$work/log" >&2; exit 1; }; }
expect() { [ "$2" = "$3" ] || { echo "$1 is '$2' where '$3' was expected" >&2; exit 1; }; }

# Builds the consumer below $work/NAME with the given CMake options, and runs it.
consume_with_cmake() {
    local name=$1
    shift
    quietly cmake -S Tests/Package -B "$work/$name" -G Ninja "$@"
    quietly cmake --build "$work/$name"
    expect "The consumer of $name" "$("$work/$name/consumer")" 'The package works'
}

# Builds the consumer with the flags that pkg-config gives for the package below PREFIX, and runs it. The libraries of third
# parties are shared ones, also for a static package, so it is called without --static.
consume_with_pkg_config() {
    local prefix=$1 flags
    flags=$(PKG_CONFIG_PATH=$prefix/lib/pkgconfig pkg-config --cflags --libs varnholtlib)
    # shellcheck disable=SC2086
    quietly c++ Tests/Package/Consumer.cpp -o "$work/consumer" $flags
    expect "The consumer by pkg-config" "$(LD_LIBRARY_PATH=$prefix/lib "$work/consumer")" 'The package works'
}

has_runpath() { readelf -d "$@" | grep -cE 'RUNPATH|RPATH' || true; }

echo 'The installed package, moved after the installation'
quietly cmake --install "$build" --prefix "$work/first"
mv "$work/first" "$work/moved"
expect 'The moved program' "$("$work/moved/bin/varnholt" calc '@sum((1+2),3)')" 6
expect 'The SONAME' "$(readelf -d "$work/moved/lib/libVarnholtLib.so" | sed -n 's/.*soname: \[\(.*\)\]/\1/p')" libVarnholtLib.so.0.1
expect 'The list of private headers' "$(find "$work/moved/include" -name '*Private.h')" ''
consume_with_cmake installed -DCMAKE_PREFIX_PATH="$work/moved"
strip "$work/installed/consumer"
expect 'The version of the consumer' "$("$work/moved/bin/varnholt" version "$work/installed/consumer")" 1.2.65535.0
for example in desktop dialog evaluator settings; do
    quietly cmake -S "Examples/$example" -B "$work/$example" -G Ninja -DCMAKE_PREFIX_PATH="$work/moved"
    quietly cmake --build "$work/$example"
done
expect 'The evaluator' "$("$work/evaluator/evaluator" 12.5)" '2 * ($rain + 1.5) = 28'
export HOME=$work/home XDG_CONFIG_HOME= XDG_DATA_HOME=
mkdir "$HOME"
quietly "$work/settings/settings" 'Graz'
expect 'The form' "$(QT_QPA_PLATFORM=offscreen "$work/desktop/desktop" Graz 2>/dev/null)" 'Goodbye, Graz'
expect 'The dialog' "$("$work/dialog/dialog" | tr '\n' '|')" \
    'New: Seattle, table, mean|Restored: Bergen, daily, chart, sum|Favourite: Old Bergen|'
expect 'The settings' "$("$work/settings/settings")" 'Start 2, station Graz'
consume_with_pkg_config "$work/moved"

echo 'The installation for the whole system'
DESTDIR=$work/stage quietly cmake --install "$build" --prefix /usr
expect 'The number of files with a RUNPATH' "$(has_runpath "$work"/stage/usr/bin/* "$work"/stage/usr/lib/*.so)" 0

echo 'The tree as a static subproject'
consume_with_cmake subproject -DFROM_SOURCE="$PWD" -DBUILD_SHARED_LIBS=OFF
quietly cmake --install "$work/subproject" --prefix "$work/unasked"
expect 'What the subproject installs unasked' "$(find "$work/unasked" 2>/dev/null)" ''
expect 'The tests of the subproject' "$(ctest --test-dir "$work/subproject" -N | tail -1)" 'Total Tests: 0'

echo 'The installed static libraries, from the same build'
consume_with_cmake subproject -DVARNHOLT_INSTALL=ON -DVARNHOLT_BUILD_TOOLS=ON
quietly cmake --install "$work/subproject" --prefix "$work/static"
expect 'The static program' "$("$work/static/bin/varnholt" calc '@sum((1+2),3)')" 6
consume_with_cmake archives -DCMAKE_PREFIX_PATH="$work/static"
consume_with_pkg_config "$work/static"
