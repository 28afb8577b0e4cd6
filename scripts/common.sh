# Shared by run.sh and test.sh: saying what happens, installing what is missing, building, Wine.
# Sourced from the root of the tree.

say() { printf '\n== %s\n' "$*"; }

# step NAME COMMAND...: runs it and says how long it took; a failure names itself and ends the script.
step() {
  local name=$1 began=$SECONDS
  shift
  say "$name"
  "$@" || { printf '\nFAILED: %s\n' "$name" >&2; exit 1; }
  printf -- '-- %d s\n' $((SECONDS - began))
}

# begin_behind NAME COMMAND...: a step that goes on behind those that follow, which have the machine
# first: many of them keep one core busy only. end_behind waits for it; where it fails, so does the
# script.
begin_behind() {
  behind_name=$1 behind_began=$SECONDS
  shift
  say "$behind_name: begun, it goes on behind what follows"
  mkdir -p build
  setsid nice -n 19 "$@" >build/behind.log 2>&1 &
  behind_job=$!
  trap leave EXIT
}
end_behind() {
  say "$behind_name"
  wait "$behind_job"
  local result=$?
  behind_job=
  cat build/behind.log
  [ "$result" = 0 ] || { printf '\nFAILED: %s\n' "$behind_name" >&2; exit 1; }
  printf -- '-- %d s since it began\n' $((SECONDS - behind_began))
}

leave() {
  [ -n "${behind_job:-}" ] && kill -- -"$behind_job" 2>/dev/null
  stop_display
}

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

has_package() { dpkg-query -W -f '${Status}' "$1" 2>/dev/null | grep -q 'ok installed'; }

install_packages() {
  local missing=() package try
  for package in "$@"; do
    has_package "$package" || missing+=("$package")
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

# A 32-bit Wine wants the packages of i386 beside those of the machine, in the same versions. Where
# the sources of packages have no such pair, the machine stays as it was; a new build/ asks again.
install_wine32() {
  local added=
  have_wine32 && { echo "everything is here"; return 0; }
  [ -e build/no-wine32 ] && { echo "not to be had here"; return 0; }
  if ! dpkg --print-foreign-architectures | grep -qx i386; then
    as_root dpkg --add-architecture i386 || return 1
    added=1
  fi
  as_root apt-get update
  if apt-get install -s --no-install-recommends --no-remove "${WINE32[@]}" >/dev/null 2>&1; then
    install_packages "${WINE32[@]}"
    return
  fi
  [ -z "$added" ] || { as_root dpkg --remove-architecture i386 && as_root apt-get update; }
  mkdir -p build
  touch build/no-wine32
  echo "not to be had here"
}
WINE32=(wine32:i386 libgl1:i386 libgl1-mesa-dri:i386)  # cameras want their OpenGL
have_wine32() { has_package wine32:i386 && has_package libgl1:i386; }

# Formatters and checkers change their minds from version to version: the code is held against one.
is_held() {
  "$1" --version | grep -q 'version 14\.' && return 0
  echo "Held against $1 14 only: left alone"
  return 1
}

# configure PRESET ON|OFF: whether a warning stops the build.
configure() {
  mkdir -p build
  cmake --preset "$1" -DFERROWAND_WERROR="$2" >"build/$1.log" 2>&1 ||
    { cat "build/$1.log"; return 1; }
  sed -n 's/^-- \(Held against .*\)/\1/p' "build/$1.log"
}

# is_configured PRESET [ON|OFF]
is_configured() {
  [ -f "build/$1/build.ninja" ] && grep -q "^FERROWAND_WERROR:BOOL=${2:-}" "build/$1/CMakeCache.txt"
}

# build PRESET [TARGET...]: for those who work on the program, whom a warning stops.
build() {
  local preset=$1
  shift
  is_configured "$preset" ON || configure "$preset" ON || return 1
  cmake --build "build/$preset" ${1:+--target "$@"}
}

# build_to_run PRESET TARGET...: warnings are for those who work on the program.
build_to_run() {
  local preset=$1
  shift
  is_configured "$preset" || configure "$preset" OFF || return 1
  cmake --build "build/$preset" --target "$@" && return 0
  is_configured "$preset" ON && configure "$preset" OFF &&
    cmake --build "build/$preset" --target "$@"
}

# use_wine [NAME]: the settings in build/NAME, those of a person who runs the program by default.
use_wine() {
  export WINEPREFIX="$PWD/build/${1:-wine}" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
  # Elsewhere Wine makes no files whose names are of another language.
  [ "$(locale charmap 2>/dev/null)" = UTF-8 ] || export LC_ALL=C.UTF-8
  mkdir -p build
  # Settings that are older than the 32-bit Wine have nothing for it.
  have_wine32 && [ ! -e "$WINEPREFIX/drive_c/windows/syswow64/kernel32.dll" ] && rm -rf "$WINEPREFIX"
  if [ ! -f "$WINEPREFIX/system.reg" ]; then
    wineboot -i >/dev/null 2>&1
    timeout 60 wineserver -w  # what it leaves running knows nothing of a display that comes later
  fi
  # Debian's Wine does not find its own fonts: captions would show letters for their buttons.
  ln -sf /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
}

# Starts an X server of its own and sets DISPLAY; it ends with the script. The server finds itself a
# number that is free, and tells it when it can be spoken to.
start_display() {
  local number
  exec {number_pipe}< <(exec Xvfb -displayfd 1 -screen 0 "${1}x24" -nolisten tcp 2>/dev/null)
  DISPLAY_SERVER=$!
  trap leave EXIT
  read -r -t 30 number <&"$number_pipe" && export DISPLAY=":$number"
}

stop_display() {
  [ -n "${WINEPREFIX:-}" ] && wineserver -k 2>/dev/null
  [ -n "${DISPLAY_SERVER:-}" ] && kill "$DISPLAY_SERVER" 2>/dev/null
  return 0
}
