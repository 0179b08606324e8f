#!/usr/bin/env bash
# Installs the build tree afresh.
set -euo pipefail
rm -rf "$KELD_PREFIX"
"$CMAKE" --install "$KELD_BUILD" --prefix "$KELD_PREFIX"
