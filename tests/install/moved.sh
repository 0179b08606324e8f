#!/usr/bin/env bash
# Moves an installation and uses it at its new place.
set -euo pipefail
rm -rf "$KELD_WORK"
mkdir -p "$KELD_WORK"
"$CMAKE" --install "$KELD_BUILD" --prefix "$KELD_WORK/before" >/dev/null
mv "$KELD_WORK/before" "$KELD_WORK/after"

if grep -rlF -e "$KELD_WORK/before" -e "$KELD_BUILD" -e "$KELD_SOURCE" "$KELD_WORK/after/bin" \
    "$KELD_WORK/after/$KELD_LIBDIR/cmake" "$KELD_WORK/after/$KELD_LIBDIR/pkgconfig" \
    --include='*.cmake' --include='*.pc' --include='*.sh'; then
    echo "These files name the place that the installation was made at."
    exit 1
fi
after=$KELD_WORK/after
KELD_WORK="$KELD_WORK/host" bash "$KELD_SOURCE/tests/install/host_with_cmake.sh" "$after"
"$after/bin/keld" --help >/dev/null
libraries=$(ldd "$after/bin/keld" | grep -F libkeld-)
echo "$libraries"
[ "$(grep -cF "$after/" <<<"$libraries")" = 2 ]
