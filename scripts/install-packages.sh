#!/usr/bin/env bash
# Installs the packages of packages.txt that this machine lacks; asks nothing and is silent when none is missing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mapfile -t wanted < <(grep -vE '^[[:space:]]*(#|$)' packages.txt)
missing=()
for package in "${wanted[@]}"; do
    state=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$state" = installed ] || missing+=("$package")
done
[ "${#missing[@]}" -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "These packages are missing, and neither root nor sudo is at hand: ${missing[*]}" >&2; exit 1; }
    as_root=(sudo)
fi
echo "Installing with apt-get: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
