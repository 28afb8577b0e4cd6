#!/usr/bin/env bash
# ./run.sh [MAP]: installs what is missing, builds the editor, opens it on MAP or on the sample map.
# Without a display it opens on a virtual one, waits until the map is drawn, writes
# build/ferrowand.png and ends.
set -u
map=${1:-}
if [ -n "$map" ]; then
  [ -f "$map" ] || { echo "There is no file $map" >&2; exit 1; }
  map=$(realpath "$map")
fi
cd "$(dirname "$0")" || exit 1
. scripts/common.sh

# The tests are configured with the program: their library is wanted before anything is built.
step "Packages" install_packages cmake ninja-build g++ googletest g++-mingw-w64-i686-posix \
  g++-mingw-w64-x86-64-posix wine wine64 fonts-wine fonts-liberation xvfb imagemagick

preset=win64
have_wine32 && preset=win32
step "Build ($preset)" build_to_run "$preset" ferrowand ferrowand_data
program="$PWD/build/$preset/ferrowand.exe"
[ -n "$map" ] || map="$PWD/build/$preset/maps/sample.xmp"
picture="$PWD/build/ferrowand.png"
step "Wine" use_wine

windows_path() { printf 'Z:%s' "$1" | tr / '\\'; }

# Maps name their WADs relative to where they lie.
cd "$(dirname "$map")" || exit 1

if [ -n "${DISPLAY:-}" ] && [ -z "${FERROWAND_VIRTUAL_DISPLAY:-}" ]; then
  say "Opening $map"
  exec wine "$program" "$(windows_path "$map")"
fi

# Before anything of Wine runs, which would keep to the display that it met first.
step "Virtual display" start_display 1280x1000

# Nobody is there to answer the questions of a first start.
settings='HKLM\Software\ferrowand\0.9'
for view in /reg:32 /reg:64; do
  wine reg add "$settings" /v "Show Tips" /t REG_DWORD /d 0 /f $view >/dev/null 2>&1
done

say "Opening $map"
rm -f "$picture"
wine explorer /desktop=ferrowand,1280x1000 "$program" "$(windows_path "$map")" >/dev/null 2>&1 &

# Drawn: the picture has the colours of a map in it and stands still.
last=
for _ in $(seq 60); do
  sleep 0.5
  import -window root "$picture" 2>/dev/null || continue
  now=$(identify -format '%k %#' "$picture")
  if [ "$now" = "$last" ] && [ "${now%% *}" -gt 20 ]; then
    say "The map is drawn: build/ferrowand.png"
    exit 0
  fi
  last=$now
done
echo "FAILED: the map was not drawn within 30 seconds; build/ferrowand.png shows what is there" >&2
exit 1
