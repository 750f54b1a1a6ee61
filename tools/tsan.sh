#!/usr/bin/env bash
# The suites that run threads (the system watcher, the shell items, the platform's threads, events, file
# services and folder notifier) built with ThreadSanitizer into $BUILD_DIR (default build-tsan/) and run.
# Only those components and what they stand on are compiled. Fails when a case fails or the sanitizer
# reports anything.
#   tools/tsan.sh [suite ...]    (default: the thread suites below; JOBS: parallel compiles, default 2)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build_dir=${BUILD_DIR:-$root/build-tsan}
suites=("$@")
if [ ${#suites[@]} -eq 0 ]; then
  suites=(CPlatformWatchTest CPlatformCodePagesTest CPlatformFileTest CPlatformFaultTest CPlatformMessagesTest
          CSystemWatcherTest CWatcherLoadTest CSHItemTest CShellManagerTest)
fi

if [ ! -f "$build_dir/CMakeCache.txt" ]; then
  options=(-DTESSAROLINE_TSAN=ON "-DTESSAROLINE_SELFCHECK_ONLY=Platform;LFSTool" -DTESSAROLINE_BENCHMARKS=OFF)
  command -v ccache >/dev/null 2>&1 && options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  [ "${CI:-}" = true ] && options+=(-DTESSAROLINE_WERROR=ON)
  cmake -S "$root" -B "$build_dir" -G Ninja "${options[@]}" >/dev/null
fi
cmake --build "$build_dir" --parallel "${JOBS:-2}" --target SelfCheck SelfCheckData

# halt_on_error: the first report ends the run with the exit code below, which the self-check never
# gives by itself.
export TSAN_OPTIONS=${TSAN_OPTIONS:-halt_on_error=1:exitcode=66:second_deadlock_stack=1}
log="$build_dir/selfcheck-tsan.log"
set +e
# The sanitizer's memory layout does not meet every randomised one; without randomisation it always does.
if setarch "$(uname -m)" -R true 2>/dev/null; then
  setarch "$(uname -m)" -R "$root/tools/run-selfcheck.sh" "$build_dir" "${suites[@]}" >"$log" 2>&1
else
  "$root/tools/run-selfcheck.sh" "$build_dir" "${suites[@]}" >"$log" 2>&1
fi
rc=$?
set -e
tail -n 30 "$log"
if [ $rc -ne 0 ] || grep -q "ThreadSanitizer" "$log"; then
  echo "ThreadSanitizer run ended with exit code $rc or a report (see $log)" >&2
  exit 1
fi
if ! grep -E '^[0-9]+ passed, [0-9]+ failed$' "$log" | tail -n 1 | grep -Eq '^[1-9][0-9]* passed, 0 failed$'; then
  echo "ThreadSanitizer run reported failures" >&2
  exit 1
fi
