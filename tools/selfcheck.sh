#!/usr/bin/env bash
# Builds the project (a no-op when tools/test.sh or an earlier run built it) and runs the self-check in
# a fresh copy of the suites' data (tools/run-selfcheck.sh), so that the checkout is never written.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/tools/build.sh"
exec "$root/tools/run-selfcheck.sh" "${BUILD_DIR:-$root/build}"
