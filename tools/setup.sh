#!/usr/bin/env bash
# Installs the Debian packages that the build, the self-check and the benchmarks need.
# Only missing packages are installed; a machine that has them all is left alone.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config
  libcppunit-dev       # suites and the self-check runner
  libicu-dev           # case mapping, character classes, code pages
  libglib2.0-dev       # profile store (GKeyFile)
  libbenchmark-dev     # benchmark target
  libpcre2-dev         # regular expressions (16-bit library)
  libxml2-dev libxslt1-dev  # XML documents, XPath and style sheets
  zlib1g-dev           # CRC-32 of the clipboard
  libcairo2-dev libpango1.0-dev fontconfig fonts-liberation  # drawing surface and fonts
  libgdk-pixbuf-2.0-dev  # image strips and icons
  shared-mime-info     # content types and their descriptions for shell items (GIO)
  libgtk-3-dev         # the editor's window backend
  xvfb xauth xdotool   # the editor driven under a virtual display
)
# clang with its runtime builds the fuzz entry points; optional for everything else.
optional=(clang libclang-rt-14-dev)
# ripgrep is a second peer of the search benchmark, which runs without it too.
peers=(ripgrep)

missing=()
for p in "${packages[@]}" ${TESSAROLINE_WITH_FUZZ:+"${optional[@]}"} ${TESSAROLINE_WITH_PEERS:+"${peers[@]}"}; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "setup: installing ${missing[*]}"
if [ "$(id -u)" -eq 0 ]; then
  apt_get=(apt-get)
elif command -v sudo >/dev/null 2>&1 && sudo -n true 2>/dev/null; then
  apt_get=(sudo apt-get)
else
  echo "setup: these Debian packages are missing: ${missing[*]}" >&2
  echo "setup: run this script as root (or with password-less sudo), or install them with:" >&2
  echo "    sudo apt-get install -y ${missing[*]}" >&2
  exit 1
fi
export DEBIAN_FRONTEND=noninteractive
"${apt_get[@]}" update -qq || true
"${apt_get[@]}" install -y -qq --no-install-recommends "${missing[@]}"
