#!/usr/bin/env bash
# Builds and runs a host with nothing but the compiler and pkg-config.
set -euo pipefail
rm -rf "$KELD_WORK"
mkdir -p "$KELD_WORK"
export PKG_CONFIG_PATH="$KELD_PREFIX/$KELD_LIBDIR/pkgconfig"
[ "$(pkg-config --modversion keld-transl)" = 23.0.0 ]
[ "$(pkg-config --modversion keld-common)" = 23.0.0 ]
# The answer has its blanks escaped for a shell to read.
eval "\"\$CXX\" -std=c++17 \"\$KELD_SOURCE/tests/install/host/main.cpp\" -o \"\$KELD_WORK/host\" \
    $(pkg-config --cflags --libs keld-transl)"
answer=$(LD_LIBRARY_PATH="$KELD_PREFIX/$KELD_LIBDIR" "$KELD_WORK/host")
[ "$answer" = 164 ] || { echo "The host printed '$answer', not 164."; exit 1; }
