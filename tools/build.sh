#!/usr/bin/env bash
# Installs what is missing, then configures and builds into $BUILD_DIR (default build/).
# TESSAROLINE_SANITIZE=1 builds with AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/tools/setup.sh"
build_dir=${BUILD_DIR:-$root/build}
sanitize=OFF
[ "${TESSAROLINE_SANITIZE:-0}" = 1 ] && sanitize=ON
werror=OFF
[ "${CI:-}" = true ] && werror=ON
cmake -S "$root" -B "$build_dir" -G Ninja -DTESSAROLINE_SANITIZE=$sanitize -DTESSAROLINE_WERROR=$werror >/dev/null
cmake --build "$build_dir"
