#!/usr/bin/env bash
# Installs what is missing, builds, and opens the editor on the files given, or on the sample site
# shipped in samples/site when none are given.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/tools/build.sh"
build_dir=${BUILD_DIR:-$root/build}
program=$build_dir/bin/tessaroline
if [ ! -x "$program" ]; then
  echo "edit: $program was not built (is GTK 3 installed? tools/setup.sh installs it)" >&2
  exit 1
fi
if [ $# -eq 0 ]; then
  set -- "$root/samples/site/index.html" "$root/samples/site/css/style.css" \
         "$root/samples/site/js/menu.js" "$root/samples/site/contact.php"
fi
exec "$program" "$@"
