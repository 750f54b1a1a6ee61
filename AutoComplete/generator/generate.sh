#!/bin/sh
# Regenerates the completion data in AutoComplete/AC from public lists of names and signatures.
# Needs node with npm and php-cli (with the extensions whose functions should be listed); neither
# is a build dependency. The npm packages go into a scratch folder, never into the repository.
#
#   sh AutoComplete/generator/generate.sh [scratch folder, default /tmp/acgen]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
scratch=${1:-/tmp/acgen}
mkdir -p "$scratch"
cd "$scratch"
[ -f package.json ] || npm init -y >/dev/null
npm install --no-save --no-audit --no-fund html-tag-names@2 html-element-attributes@3 \
    html-enumerated-attributes@1 html-event-attributes@2 mdn-data@2 css-tree@3 globals@17 \
    @webref/idl@3 >/dev/null
php "$here/phpdump.php" > "$scratch/php.json"
node "$here/generate.mjs" "$scratch/node_modules" "$scratch/php.json" "$here/../AC"
