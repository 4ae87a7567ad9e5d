#!/usr/bin/env bash
# install-packages.sh SECTION...: makes sure that what those sections of packages.txt name is present, whether or
# not it came from a Debian package. Installs what is missing with apt-get, as root or through sudo. Where that is
# impossible it names what is missing, and fails unless all of it is optional. Silent if nothing is missing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# The packages of one section of packages.txt.
packages_of() {
    awk -v "section=[$1]" '/^#/ { if ($2 ~ /^\[/) inside = $2 == section; next } inside && NF { print }' packages.txt
}

has_header() { [ -e "/usr/include/$1" ] || echo "#include <$1>" | c++ -E -x c++ -; }

# Succeeds if what the package is wanted for is present.
is_present() {
    case $1 in
        build-essential) command -v c++ && command -v make ;;
        clang) command -v clang++ ;;
        fonts-dejavu-core) ls /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf ;;
        gnuplot-nox) command -v gnuplot ;;
        libbenchmark-dev) has_header benchmark/benchmark.h ;;
        libboost-dev) has_header boost/version.hpp ;;
        libcairo2-dev) has_header cairo/cairo.h ;;
        libclang-rt-14-dev) ls "$(clang++ -print-runtime-dir)"/libclang_rt.fuzzer-*.a ;;
        libcli11-dev) has_header CLI/CLI.hpp ;;
        libcurl4-openssl-dev) has_header curl/curl.h ;;
        libgmock-dev) has_header gmock/gmock.h ;;
        libgsl-dev) has_header gsl/gsl_math.h ;;
        libgtest-dev) has_header gtest/gtest.h ;;
        libicu-dev) has_header unicode/uchar.h ;;
        libmuparser-dev) has_header muParser.h ;;
        libpango1.0-dev) has_header pango-1.0/pango/pango.h || pkg-config --exists pangocairo ;;
        libspdlog-dev) has_header spdlog/spdlog.h ;;
        libsqlite3-dev) has_header sqlite3.h ;;
        libxml2-dev) has_header libxml2/libxml/tree.h ;;
        libzip-dev) has_header zip.h ;;
        locales) [ -e /usr/share/i18n/locales/de_DE ] ;;
        nginx-light) PATH=$PATH:/usr/sbin command -v nginx ;;
        ninja-build) command -v ninja ;;
        qt6-base-dev) ls /usr/lib/*/cmake/Qt6Core ;;
        tinyproxy-bin) command -v tinyproxy ;;
        xvfb) command -v Xvfb ;;
        zlib1g-dev) has_header zlib.h ;;
        *) command -v "$1" ;;
    esac >/dev/null 2>&1
}

missing=()
needed=()
for section in "$@"; do
    for package in $(packages_of "$section"); do
        is_present "$package" && continue
        missing+=("$package")
        [ "$section" = optional ] || needed+=("$package")
    done
done
[ "${#missing[@]}" -gt 0 ] || exit 0

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
if ! command -v apt-get >/dev/null || { [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; }; then
    if [ "${#needed[@]}" -eq 0 ]; then
        echo "Continuing without the optional packages ${missing[*]}" >&2
        exit 0
    fi
    echo "Missing, by the names of their Debian packages: ${needed[*]}" >&2
    echo "To install them takes apt-get, and root or sudo." >&2
    exit 1
fi
echo "Installing with apt-get: ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
