#!/usr/bin/env bash
# Compiles every public header by itself, as C++17.
set -euo pipefail
"$CMAKE" --build "$KELD_BUILD" --target all_verify_interface_header_sets

# One compilation for each header that is installed, none of them with a later standard.
commands=$(ninja -C "$KELD_BUILD" -t commands all_verify_interface_header_sets |
    grep -F '_verify_interface_header_sets.dir/' | grep -F ' -c ')
if grep -E -e '-std=(c|gnu)\+\+(2|1[^7])' <<<"$commands"; then
    echo "These compile with another standard than C++17."
    exit 1
fi
installed=$(find "$KELD_PREFIX/include" -name '*.h' | wc -l)
compiled=$(wc -l <<<"$commands")
[ "$compiled" = "$installed" ] ||
    { echo "$compiled headers were compiled, $installed are installed."; exit 1; }
