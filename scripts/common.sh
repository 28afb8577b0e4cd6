# Shared by run.sh and test.sh: saying what happens, installing what is missing, building, Wine.
# Sourced from the root of the tree.

say() { printf '\n== %s\n' "$*"; }

# step NAME COMMAND...: runs it; a failure names itself and ends the script.
step() {
  local name=$1
  shift
  say "$name"
  "$@" || { printf '\nFAILED: %s\n' "$name" >&2; exit 1; }
}

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

install_packages() {
  local missing=() package try
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
      missing+=("$package")
  done
  [ ${#missing[@]} = 0 ] && { echo "everything is here"; return 0; }
  echo "installing: ${missing[*]}"
  for try in 1 2 3; do
    [ "$try" = 1 ] || { as_root apt-get update; sleep $((try * 2)); }
    as_root env DEBIAN_FRONTEND=noninteractive \
      apt-get install -y --no-install-recommends "${missing[@]}" && return 0
  done
  return 1
}

# build PRESET [TARGET...]
build() {
  local preset=$1
  shift
  if [ ! -f "build/$preset/build.ninja" ]; then
    mkdir -p build
    cmake --preset "$preset" >"build/$preset.log" 2>&1 || { cat "build/$preset.log"; return 1; }
  fi
  cmake --build "build/$preset" ${1:+--target "$@"}
}

# A 32-bit Wine is not installable everywhere; the 64-bit one always is.
have_wine32() {
  dpkg-query -W -f '${Status}' wine32:i386 2>/dev/null | grep -q 'ok installed'
}

# use_wine [NAME]: the settings in build/NAME, those of a person who runs the program by default.
use_wine() {
  export WINEPREFIX="$PWD/build/${1:-wine}" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
  mkdir -p build
  if [ ! -f "$WINEPREFIX/system.reg" ]; then
    wineboot -i >/dev/null 2>&1
    timeout 60 wineserver -w  # what it leaves running knows nothing of a display that comes later
  fi
  # Debian's Wine does not find its own fonts: captions would show letters for their buttons.
  ln -sf /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
}

# Starts an X server of its own and sets DISPLAY; it ends with the script.
start_display() {
  local size=$1 number=20
  while [ -e "/tmp/.X$number-lock" ] || [ -e "/tmp/.X11-unix/X$number" ]; do number=$((number + 1)); done
  Xvfb ":$number" -screen 0 "${size}x24" -nolisten tcp >/dev/null 2>&1 &
  DISPLAY_SERVER=$!
  export DISPLAY=":$number"
  trap 'stop_display' EXIT
  for _ in $(seq 50); do
    xdpyinfo >/dev/null 2>&1 && return 0
    sleep 0.1
  done
  return 1
}

stop_display() {
  [ -n "${WINEPREFIX:-}" ] && wineserver -k 2>/dev/null
  [ -n "${DISPLAY_SERVER:-}" ] && kill "$DISPLAY_SERVER" 2>/dev/null
  return 0
}
