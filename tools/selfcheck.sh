#!/usr/bin/env bash
# Builds the project and runs the self-check from SelfCheck/, where its relative data paths resolve.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/tools/build.sh"
cd "$root/SelfCheck"
exec "${BUILD_DIR:-$root/build}/bin/SelfCheck"
