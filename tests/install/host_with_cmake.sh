#!/usr/bin/env bash
# Builds and runs a host that finds the package with CMake.
set -euo pipefail
prefix=${1:-$KELD_PREFIX}
rm -rf "$KELD_WORK"
"$CMAKE" -G Ninja -S "$KELD_SOURCE/tests/install/host" -B "$KELD_WORK/a build" \
    -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$CXX"
"$CMAKE" --build "$KELD_WORK/a build"
answer=$("$KELD_WORK/a build/host")
[ "$answer" = 164 ] || { echo "The host printed '$answer', not 164."; exit 1; }
grep -q "keld-transl_DIR:PATH=$prefix/" "$KELD_WORK/a build/CMakeCache.txt"
