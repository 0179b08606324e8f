#!/usr/bin/env bash
# Compares what a library exports with its list, symbols_<name>.txt; `update` writes the list.
#
# usage: symbols.sh common|transl        as a test
#        symbols.sh update BUILD-FOLDER  writes both lists
set -euo pipefail
export LC_ALL=C
here=$(cd "$(dirname "$0")" && pwd)

# What a library defines for others, demangled, without what depends on how the compiler optimises:
# inline functions that were left over, and tables of classes that have nothing but such.
strong_symbols() {
    nm --dynamic --defined-only --format=posix "$1" | awk '$2 !~ /^[Wuw]$/ { print $1 }' | c++filt |
        grep -v '^vtable for ' | sort -u
}

if [ "$1" = update ]; then
    for name in common transl; do
        strong_symbols "$2/lib/libkeld-$name.so" >"$here/symbols_$name.txt"
    done
    exit
fi

library=$KELD_PREFIX/$KELD_LIBDIR/libkeld-$1.so
if ! diff -u "$here/symbols_$1.txt" <(strong_symbols "$library"); then
    echo "The exported symbols differ from the list. When that is what you want:"
    echo "tests/install/symbols.sh update build/dev"
    exit 1
fi
if nm --dynamic --defined-only --demangle "$library" | cut -d ' ' -f 3- |
    grep -E '(^|for |to )(std::|__gnu_cxx::)|Proxy'; then
    echo "These are no part of the interface."
    exit 1
fi
