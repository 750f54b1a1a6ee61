#!/usr/bin/env bash
# Drives the editor program under a virtual display: opens a file named on the command line, types
# text with accented letters through the input method, undoes the last word, saves with Ctrl+S and
# checks the bytes on disk; then a further change is closed without saving (after the question is
# first cancelled), a file is opened and a new document saved through the file choosers, and the
# program quits. An Alt+drag column selection is checked in a run of its own before. The window's
# pictures are kept under pictures/ of the build.
# Usage: editor-gui-test.sh PROGRAM BUILD_DIR
set -euo pipefail
program=$1
build=$(cd "$2" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
work=$build/gui-test
rm -rf "$work"
mkdir -p "$work/config" "$work/state" "$build/pictures"
cp "$here/testfiles/page.html" "$work/page.html"
printf 'abcdef\nghijkl\nmnopqr\nstuvwx\n' > "$work/columns.txt"

export XDG_CONFIG_HOME=$work/config XDG_STATE_HOME=$work/state
export TESSAROLINE_PICTURE=$work/window.png
export GTK_IM_MODULE=gtk-im-context-simple NO_AT_BRIDGE=1 GSETTINGS_BACKEND=memory

cat > "$work/drive.sh" <<'DRIVE'
set -euo pipefail
work=$1
program=$2
# A first run: an Alt+drag over four lines selects a column (the pointer positions are those
# of the default theme's menu bar and tabs on the 1024x768 screen), Delete takes it out of each.
TESSAROLINE_PICTURE=$work/columns.png "$program" "$work/columns.txt" 2>"$work/stderr.txt" &
cpid=$!
trap 'kill $cpid 2>/dev/null || true' EXIT
cwin=$(timeout 20 xdotool search --sync --onlyvisible --name 'columns.txt' | head -1)
xdotool windowfocus --sync "$cwin"
sleep 0.3
xdotool mousemove --window "$cwin" 60 75 keydown alt mousedown 1 mousemove --window "$cwin" 80 90 sleep 0.1 \
  mousemove --window "$cwin" 86 110 sleep 0.2 mouseup 1 keyup alt
sleep 0.2
xdotool key --delay 60 Delete ctrl+s
for _ in $(seq 30); do
  grep -q abf "$work/columns.txt" && break
  sleep 0.1
done
cp "$work/columns.png" "$work/columns-deleted.png"
kill $cpid
wait $cpid 2>/dev/null || true
"$program" "$work/page.html" 2>>"$work/stderr.txt" &
pid=$!
trap 'kill $pid 2>/dev/null || true' EXIT
win=$(timeout 20 xdotool search --sync --onlyvisible --name 'page.html' | head -1)
xdotool windowfocus --sync "$win"
sleep 0.5
# The first line gets typed text: letters, an accented one, a space and a word that is undone.
xdotool key --delay 60 End
xdotool type --delay 60 ' Zoë café'
xdotool key --delay 60 ctrl+Left ctrl+shift+Right Delete
xdotool key --delay 60 ctrl+z
xdotool key --delay 60 Down Home
xdotool type --delay 60 'ñ'
xdotool key --delay 60 ctrl+s
for _ in $(seq 50); do
  grep -q 'ñ' "$work/page.html" 2>/dev/null && break
  sleep 0.1
done
sleep 0.3
cp "$work/window.png" "$work/saved.png"
# A change, then Close: the question is cancelled, the document stays; asked again, it is closed
# without saving, and the window is left with no document.
xdotool type --delay 60 'unsaved'
xdotool key --delay 60 ctrl+w
sleep 0.5
xdotool key --delay 60 Escape
sleep 0.3
xdotool search --name '^\*page.html - Tessaroline$' >/dev/null || { echo "the document was closed on Cancel" >&2; exit 1; }
xdotool key --delay 60 ctrl+w
sleep 0.5
xdotool key --delay 60 alt+w
xdotool search --sync --name '^Tessaroline$' >/dev/null
# Without a window manager the focus doesn't come back from a closed dialog by itself.
xdotool windowfocus --sync "$win"
sleep 0.3
# Open through the file chooser; then a new document saved through it (Ctrl+S asks for a name).
xdotool key --delay 60 ctrl+o
dialog=$(timeout 10 xdotool search --sync --onlyvisible --name '^Open$' | head -1)
xdotool windowfocus --sync "$dialog"
sleep 0.3
xdotool key --delay 60 ctrl+l
sleep 0.3
xdotool type --delay 30 "$work/columns.txt"
sleep 0.5
xdotool key --delay 60 Return
timeout 10 xdotool search --sync --name '^columns.txt - Tessaroline$' >/dev/null
xdotool windowfocus --sync "$win"
sleep 0.3
xdotool key --delay 60 ctrl+n
xdotool type --delay 60 'new'
xdotool key --delay 60 ctrl+s
dialog=$(timeout 10 xdotool search --sync --onlyvisible --name '^Save As$' | head -1)
xdotool windowfocus --sync "$dialog"
sleep 0.3
xdotool key --delay 60 ctrl+a
xdotool type --delay 30 "$work/new.txt"
sleep 0.5
xdotool key --delay 60 Return
timeout 10 xdotool search --sync --name '^new.txt - Tessaroline$' >/dev/null
xdotool windowfocus --sync "$win"
# A key right after the focus came back may be lost: Ctrl+Q is tried again then.
for _ in 1 2 3; do
  xdotool key --delay 60 ctrl+q
  for _ in $(seq 10); do
    kill -0 $pid 2>/dev/null || exit 0
    sleep 0.1
  done
done
echo "the program did not quit" >&2
exit 1
DRIVE

start=$(date +%s.%N)
status=0
xvfb-run -a -s "-screen 0 1024x768x24" bash "$work/drive.sh" "$work" "$program" || status=$?
end=$(date +%s.%N)

expected=$(printf '<!DOCTYPE html> Zoë café\nñ<html>\n<body>\n<p>Hello</p>\n</body>\n</html>\n' | od -An -tx1)
actual=$(od -An -tx1 "$work/page.html")
cp "$work/saved.png" "$build/pictures/editor-gui.png" 2>/dev/null || true
cp "$work/columns-deleted.png" "$build/pictures/editor-gui-columns.png" 2>/dev/null || true
printf 'gui test took %.1f s\n' "$(echo "$end - $start" | bc)"
[ "$status" -eq 0 ] || { echo "driving the program failed ($status)" >&2; exit 1; }
if [ "$expected" != "$actual" ]; then
  echo "saved bytes differ from the expected ones; the file holds:" >&2
  cat "$work/page.html" >&2
  exit 1
fi
columns=$(tr '\n' ' ' < "$work/columns.txt")
[ "$columns" = "abf ghl mnr stx " ] || { echo "column delete left: $columns" >&2; exit 1; }
[ "$(cat "$work/new.txt")" = new ] || { echo "the new document was not saved as new.txt" >&2; exit 1; }
[ -s "$build/pictures/editor-gui.png" ] || { echo "no picture of the window was written" >&2; exit 1; }
if grep -q -E 'CRITICAL|WARNING|ERROR' "$work/stderr.txt"; then
  echo "the program complained:" >&2
  cat "$work/stderr.txt" >&2
  exit 1
fi
echo "saved bytes as expected; picture: $build/pictures/editor-gui.png"
