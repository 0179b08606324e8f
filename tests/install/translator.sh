#!/usr/bin/env bash
# Builds the example translators as projects of their own, installs them beside the host program,
# and has the host program use them.
set -euo pipefail
rm -rf "$KELD_WORK"
mkdir -p "$KELD_WORK"
cp -a "$KELD_PREFIX" "$KELD_WORK/an installation"
prefix=$KELD_WORK/an\ installation

for name in xyz stl; do
    script=$prefix/bin/keld_$name.sh
    program=$prefix/bin/keld_${name}_linux_x86_64
    build="$KELD_WORK/a build of $name"
    rm -f "$script" "$program"
    "$CMAKE" -G Ninja -S "$KELD_SOURCE/examples/${name}_translator" -B "$build" \
        -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_CXX_COMPILER="$CXX"
    "$CMAKE" --build "$build"
    "$CMAKE" --install "$build"
    [ -f "$script" ] && [ -x "$script" ]
    [ -f "$program" ] && [ -x "$program" ]
done

unset VORN_EXEC_DIR
printf '1 2 3\n4,5,6\n' >"$KELD_WORK/two points.xyz"
"$prefix/bin/keld" convert "$KELD_WORK/two points.xyz" "$KELD_WORK/written.xyz"
[ "$(grep -vc '^#' "$KELD_WORK/written.xyz")" = 2 ]

part=$KELD_SOURCE/examples/data/bracket.stl
"$prefix/bin/keld" convert -o ascii=true "$part" "$KELD_WORK/a written part.stl"
[ "$(grep -c '^  facet' "$KELD_WORK/a written part.stl")" = "$(grep -c '^  facet' "$part")" ]
