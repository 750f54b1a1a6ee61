#!/usr/bin/env bash
# Runs a built self-check in a folder of its own: the mirror of the suites' data that the build keeps
# in <build>/testdata is copied into a fresh temporary folder and the self-check starts in its
# SelfCheck/, where the relative data paths ("..\Edit\tests\testfiles\...") resolve. Nothing under the
# source tree, the build's mirror or the user's settings is written, and runs side by side don't meet. The folder is
# removed afterwards; TESSAROLINE_KEEP_RUN=1 keeps it (its path goes to stderr).
#   tools/run-selfcheck.sh <build folder> [suite ...]
# Suite names after the folder run only those suites.
set -euo pipefail
build_dir=$(cd "${1:?usage: run-selfcheck.sh <build folder> [suite ...]}" && pwd)
shift
exe="$build_dir/bin/SelfCheck"
mirror="$build_dir/testdata"
if [ ! -x "$exe" ] || [ ! -d "$mirror" ]; then
  echo "run-selfcheck: $build_dir holds no built self-check (bin/SelfCheck and testdata/)" >&2
  exit 2
fi
run=$(mktemp -d "${TMPDIR:-/tmp}/tessaroline-selfcheck.XXXXXX")
if [ "${TESSAROLINE_KEEP_RUN:-0}" = 1 ]; then
  echo "run-selfcheck: running in $run" >&2
else
  trap 'rm -rf "$run"' EXIT
fi
cp -R "$mirror/." "$run/"
# The log and the profile store belong to the run too, so that parallel runs don't share them and a
# run leaves the user's own settings alone.
export XDG_STATE_HOME="$run/state" XDG_CONFIG_HOME="$run/config"
cd "$run/SelfCheck"
set +e
"$exe" "$@"
rc=$?
set -e
exit $rc
