#!/bin/sh
# Installs the Debian packages of the given purposes (build, test, fuzz, lint, bench): install_packages.sh build test
# Does nothing for packages that are there already. Needs root where something is missing.
set -e
here=$(dirname "$0")
wanted=
for purpose in "$@"; do
    wanted="$wanted $(sed -n "s/^$purpose  *//p" "$here/packages.txt")"
done
missing=
for package in $wanted; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing="$missing $package"
done
[ -z "$missing" ] && exit 0
echo "installing:$missing"
export DEBIAN_FRONTEND=noninteractive
apt-get update -qq
apt-get install -y -qq --no-install-recommends $missing >/dev/null
