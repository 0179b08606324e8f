#!/usr/bin/env bash
# The README's host and the translator guide's translator, copied out of the text, do what the text
# says: the host starts the translator, which makes one point.
set -euo pipefail
rm -rf "$KELD_WORK"
mkdir -p "$KELD_WORK/translator" "$KELD_WORK/host"

# code_of <file> <language>: the first block of code in that language.
code_of() {
    awk -v fence="\`\`\`$2" '$0 == "```" && inside { exit } inside { print } $0 == fence { inside = 1 }' "$1"
}

code_of "$KELD_SOURCE/docs/translator-guide.md" cpp >"$KELD_WORK/translator/main.cpp"
code_of "$KELD_SOURCE/docs/translator-guide.md" cmake >"$KELD_WORK/translator/CMakeLists.txt"
prefix=$KELD_WORK/installed
"$CMAKE" -G Ninja -S "$KELD_WORK/translator" -B "$KELD_WORK/translator/build" \
    -DCMAKE_PREFIX_PATH="$KELD_PREFIX" -DCMAKE_INSTALL_PREFIX="$prefix" \
    -DCMAKE_CXX_COMPILER="$CXX"
"$CMAKE" --build "$KELD_WORK/translator/build"
"$CMAKE" --install "$KELD_WORK/translator/build"

code_of "$KELD_SOURCE/README.md" cpp |
    sed "s,/opt/keld/bin/keld_xyz.sh,$prefix/bin/keld_abc.sh," >"$KELD_WORK/host/main.cpp"
export PKG_CONFIG_PATH="$KELD_PREFIX/$KELD_LIBDIR/pkgconfig"
eval "\"\$CXX\" -std=c++17 \"\$KELD_WORK/host/main.cpp\" -o \"\$KELD_WORK/host/host\" \
    $(pkg-config --cflags --libs keld-transl)"

touch "$KELD_WORK/a file"
answer=$(LD_LIBRARY_PATH="$KELD_PREFIX/$KELD_LIBDIR" "$KELD_WORK/host/host" "$KELD_WORK/a file")
echo "$answer"
grep -qxF "1: 1 2 3" <<<"$answer"
grep -qxF "Completed!" <<<"$answer"
