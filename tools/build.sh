#!/usr/bin/env bash
# Installs what is missing, then builds into $BUILD_DIR (default build/). A folder built before keeps
# its configuration, so that tools/test.sh and tools/selfcheck.sh share one build and the second only
# runs; options are passed on only when asked for: TESSAROLINE_SANITIZE=1 (or 0) switches
# AddressSanitizer and UndefinedBehaviorSanitizer, CI=true treats warnings as errors.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/tools/setup.sh"
build_dir=${BUILD_DIR:-$root/build}
options=()
if [ -n "${TESSAROLINE_SANITIZE:-}" ]; then
  sanitize=OFF
  [ "$TESSAROLINE_SANITIZE" = 1 ] && sanitize=ON
  options+=(-DTESSAROLINE_SANITIZE=$sanitize)
fi
[ "${CI:-}" = true ] && options+=(-DTESSAROLINE_WERROR=ON)
if [ ! -f "$build_dir/CMakeCache.txt" ]; then
  command -v ccache >/dev/null 2>&1 && options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  cmake -S "$root" -B "$build_dir" -G Ninja "${options[@]}" >/dev/null
elif [ ${#options[@]} -gt 0 ]; then
  # Same values as cached leave every unit as built.
  cmake -S "$root" -B "$build_dir" "${options[@]}" >/dev/null
fi
cmake --build "$build_dir"
