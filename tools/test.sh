#!/usr/bin/env bash
# Builds the project and runs its tests through CTest; fails when any case fails.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/tools/build.sh"
ctest --test-dir "${BUILD_DIR:-$root/build}" --output-on-failure
