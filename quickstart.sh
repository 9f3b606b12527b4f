#!/bin/sh
# From a clean clone to a converted scene: installs what is needed, builds, converts examples/still_life.ma.
# The last line is the path of the result. Works again when run twice.
set -e
cd "$(dirname "$0")"
echo "== packages"
tools/install_packages.sh build
echo "== build"
cmake --preset release -DORV_TESTS=OFF >/dev/null
cmake --build --preset release --target maya_importer maya2vistrel
echo "== convert examples/still_life.ma"
build/release/bin/maya2vistrel examples/still_life.ma
echo "$PWD/examples/still_life.ma.obx"
