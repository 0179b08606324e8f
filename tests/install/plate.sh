#!/usr/bin/env bash
# Builds the example plate as a project of its own and has it send its geometry to its second
# process, with nothing of the build tree.
set -euo pipefail
rm -rf "$KELD_WORK"
"$CMAKE" -G Ninja -S "$KELD_SOURCE/examples/plate" -B "$KELD_WORK/a build" \
    -DCMAKE_PREFIX_PATH="$KELD_PREFIX" -DCMAKE_CXX_COMPILER="$CXX"
"$CMAKE" --build "$KELD_WORK/a build"

segments() {
    find /dev/shm -name '*plate_*' | wc -l
}
before=$(segments)
answer=$("$KELD_WORK/a build/plate")
echo "$answer"
[ "$(grep -c '^surfaces: 22$' <<<"$answer")" = 2 ]
[ "$(grep -c '^curves in space: 33$' <<<"$answer")" = 2 ]
[ "$(grep -c '^curves on surfaces: 1$' <<<"$answer")" = 2 ]
[ "$(grep -c '  12: torus radii 10 2 at (48 28 8) ' <<<"$answer")" = 2 ]
[ "$(tail -n 1 <<<"$answer")" = "== The two are the same." ]
[ "$(segments)" = "$before" ] || { echo "A segment is left."; exit 1; }

# A second process that cannot read the model fails, and says why.
if words=$("$KELD_WORK/a build/plate" read "no such segment" 100 2>&1); then
    echo "A segment that is not there was read."
    exit 1
fi
grep -q '^plate: reading the model: .' <<<"$words"
