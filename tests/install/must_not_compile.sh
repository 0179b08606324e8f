#!/usr/bin/env bash
# A source that compiles must not do so any more with KELD_MUST_NOT_COMPILE, for the reason that its
# first line gives as a regular expression.
set -euo pipefail
source=$KELD_SOURCE/tests/install/must_not_compile/$1
compile=("$CXX" -std=c++17 -fsyntax-only -isystem "$KELD_PREFIX/include" "$source")
reason=$(sed -n '1s,^// refused: ,,p' "$source")
[ -n "$reason" ] || { echo "The first line gives no reason."; exit 1; }

LC_ALL=C "${compile[@]}" || { echo "It does not compile without the fault either."; exit 1; }
if messages=$(LC_ALL=C "${compile[@]}" -DKELD_MUST_NOT_COMPILE 2>&1); then
    echo "It compiles."
    exit 1
fi
echo "$messages"
grep -qE "error: .*$reason" <<<"$messages"
