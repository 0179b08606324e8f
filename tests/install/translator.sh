#!/usr/bin/env bash
# Builds the example translator as a project of its own, installs it beside the host program, and
# has the host program use it.
set -euo pipefail
rm -rf "$KELD_WORK"
mkdir -p "$KELD_WORK"
cp -a "$KELD_PREFIX" "$KELD_WORK/an installation"
prefix=$KELD_WORK/an\ installation
script=$prefix/bin/keld_xyz.sh
program=$prefix/bin/keld_xyz_linux_x86_64
rm -f "$script" "$program"

"$CMAKE" -G Ninja -S "$KELD_SOURCE/examples/xyz_translator" -B "$KELD_WORK/a build" \
    -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_CXX_COMPILER="$CXX"
"$CMAKE" --build "$KELD_WORK/a build"
"$CMAKE" --install "$KELD_WORK/a build"
[ -f "$script" ] && [ -x "$script" ]
[ -f "$program" ] && [ -x "$program" ]

printf '1 2 3\n4,5,6\n' >"$KELD_WORK/two points.xyz"
unset VORN_EXEC_DIR
"$prefix/bin/keld" convert "$KELD_WORK/two points.xyz" "$KELD_WORK/written.xyz"
[ "$(grep -vc '^#' "$KELD_WORK/written.xyz")" = 2 ]
