#!/usr/bin/env bash
# Both libraries carry the release's major number, and are found under the usual three names.
set -euo pipefail
for library in libkeld-common libkeld-transl; do
    path=$KELD_PREFIX/$KELD_LIBDIR/$library.so
    readelf -d "$path" | grep -F "Library soname: [$library.so.23]"
    [ "$(readlink -f "$path")" = "$(readlink -f "$KELD_PREFIX")/$KELD_LIBDIR/$library.so.23.0.0" ]
    [ "$(readlink -f "$path.23")" = "$(readlink -f "$path")" ]
done
