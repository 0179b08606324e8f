#!/usr/bin/env bash
# Builds the example assembly as a project of its own, has it send its gearbox to its second process
# and back, and has the host program import the same from its translator.
set -euo pipefail
rm -rf "$KELD_WORK"
mkdir -p "$KELD_WORK"
cp -a "$KELD_PREFIX" "$KELD_WORK/an installation"
prefix=$KELD_WORK/an\ installation
rm -f "$prefix/bin/keld_gearbox.sh" "$prefix/bin/keld_gearbox_linux_x86_64"

"$CMAKE" -G Ninja -S "$KELD_SOURCE/examples/assembly" -B "$KELD_WORK/a build" \
    -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_CXX_COMPILER="$CXX"
"$CMAKE" --build "$KELD_WORK/a build"
"$CMAKE" --install "$KELD_WORK/a build"

segments() {
    find /dev/shm -name '*assembly_*' | wc -l
}
before=$(segments)
answer=$("$KELD_WORK/a build/assembly")
echo "$answer"
grep -qx '  1: Gearbox (assembly, 1000 units a metre, labels "" "" "")' <<<"$answer"
grep -qx '      7: Bearing (instance of 6)' <<<"$answer"
grep -qx '    13: Screw 1/4-20 (part, 39.3700787 units a metre, labels "" "" "")' <<<"$answer"
grep -qx '  comment, type 7: "Check the oil level after 100 hours.", on 1' <<<"$answer"
grep -qx '  1: "0.05 A", "flatness of the top face" at 60 40 55, .*' <<<"$answer"
[ "$(tail -n 1 <<<"$answer")" = "== What came back is the same." ]
[ "$(segments)" = "$before" ] || { echo "A segment is left."; exit 1; }

# A second process that cannot read the model fails, and says why.
if words=$("$KELD_WORK/a build/assembly" mirror "no such segment" 100 back 2>&1); then
    echo "A segment that is not there was read."
    exit 1
fi
grep -q '^assembly: reading the model: .' <<<"$words"

unset VORN_EXEC_DIR
"$prefix/bin/keld" import -q --report "$KELD_WORK/report" \
    "$KELD_SOURCE/examples/data/sample.gearbox" | tee "$KELD_WORK/import.txt"
grep -qx '        Bearing (instance of part)' "$KELD_WORK/import.txt"
grep -q '<li>PMIs: <b>1</b> failed$' "$KELD_WORK/report/report.html"
