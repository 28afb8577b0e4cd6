#!/usr/bin/env bash
# scripts/session.sh [STEPS]: works the program as a person does, with the X server's mouse and
# keys, through the steps of a file (tests/session/room.txt, which tells what each word means;
# tests/session/crash.txt is the film of a program that is killed in the middle of work).
# Files and pictures go to build/session. Wants build/win64 and build/native.
set -u
cd "$(dirname "$0")/.." || exit 1
. scripts/common.sh
steps=$(realpath "${1:-tests/session/room.txt}")
work=$PWD/build/session
rm -rf "$work"
mkdir -p "$work"

fail() { echo "line $line: $*" >&2; import -window root "$work/failed.png"; printf "%s\n" "${shown[@]}" >&2; exit 1; }

# --- what the program shows

probe() {
  echo >&"${PROBE[1]}"
  shown=()
  local text
  while read -r -t 10 text <&"${PROBE[0]}"; do
    text=${text%$'\r'}
    [ "$text" = end ] && return
    shown+=("$text")
  done
  fail "the program does not answer"
}

# within SECONDS COMMAND...: asks for what is shown until the command is content.
within() {
  local deadline=$((SECONDS + $1))
  shift
  while probe; ! "$@"; do
    [ $SECONDS -lt $deadline ] || return 1
    sleep 0.02
  done
}
until_() { within 20 "$@" || fail "never came: $*"; }
has_window() { printf '%s\n' "${shown[@]}" | grep -q '^window'; }
has_frame() { [ ${#shown[@]} -gt 0 ] && [ "${shown[0]}" = frame ]; }
tells() { printf '%s\n' "${shown[@]}" | grep -qF "$1"; }
has_no_window() { ! has_window; }
has_title() { printf '%s\n' "${shown[@]}" | grep -qxF "window $1"; }
has_no_title() { ! has_title "$1"; }

# Sets left, top, right, bottom, caption, and u, v, scale from the status bar of the first view
# whose name is $view.
find_view() {
  local i rest
  for i in "${!shown[@]}"; do
    [[ ${shown[i]} = view*"($view)"* ]] || continue
    read -r _ left top right bottom caption rest <<<"${shown[i]}"
    [[ ${shown[i + 3]} =~ ([0-9]+)%$ ]] || return 1
    percent=${BASH_REMATCH[1]}
    u= v=
    [[ ${shown[i + 1]} =~ ^text\ (-?[0-9]+)x(-?[0-9]+)$ ]] || return 0
    u=${BASH_REMATCH[1]} v=${BASH_REMATCH[2]}
    return 0
  done
  return 1
}

# --- the mouse

has_place() { find_view && [ -n "$u" ]; }
near() { [ $(($1 - $2)) -le 4 ] && [ $(($2 - $1)) -le 4 ]; }
is_at() { has_place && near "$u" "$1" && near "$v" "$2"; }

# As a hand does, not in one leap: the system tells a window nothing of the first place in it.
mouse_to() { xdotool mousemove $(($1 - 2)) "$2" sleep 0.03 mousemove "$1" "$2"; }

# The status bar may still tell of the last place; it has a second to tell of this one.
enter_view() {
  local before=$u,$v tries
  mouse_to $(((left + right) / 2)) $(((top + bottom) / 2))
  for tries in $(seq 50); do
    sleep 0.02
    probe
    find_view && [ "$u,$v" != "$before" ] && return
  done
  has_place || fail "no place in view $view"
}

# The status bar tells where in the world the cursor is: one look shows where to go from there. It
# may tell of a moment ago, when the view was another: who does not arrive looks again.
move_to() {
  local tries
  for tries in 1 2 3 4 5; do
    go_to "$1" "$2"
    within 2 is_at "$1" "$2" && return
  done
  fail "never came: is_at $1 $2"
}

go_to() {
  local x y
  probe
  find_view || fail "no view $view"
  read -r x y < <(xdotool getmouselocation --shell | sed -n 's/^[XY]=//p' | tr '\n' ' ')
  if [ -z "$u" ] || [ "$x" -lt "$left" ] || [ "$x" -ge "$right" ] || [ "$y" -lt "$top" ] ||
    [ "$y" -ge "$bottom" ]; then
    enter_view
    x=$(((left + right) / 2)) y=$(((top + bottom) / 2))
  fi
  mouse_to $((x + ($1 - u) * percent / 100)) $((y - ($2 - v) * percent / 100))
}

drag() {
  local held=${5:-}
  move_to "$1" "$2"
  [ -z "$held" ] || xdotool keydown "$held"
  xdotool mousedown 1
  move_to $((($1 + $3) / 2)) $((($2 + $4) / 2))
  move_to "$3" "$4"
  xdotool mouseup 1
  [ -z "$held" ] || xdotool keyup "$held"
}

find_camera() {
  local text
  for text in "${shown[@]}"; do
    [[ $text = camera* ]] && read -r _ left top right bottom caption _ <<<"$text" && return 0
  done
  return 1
}

# As far as the mouse goes in the camera while Shift and the left button are held.
look() {
  local n steps=10
  until_ find_camera
  mouse_to $(((left + right) / 2)) $(((top + bottom) / 2))
  xdotool keydown shift mousedown 1
  for ((n = 0; n < steps; ++n)); do
    xdotool mousemove_relative -- $(($1 / steps)) $(($2 / steps)) sleep 0.05
  done
  xdotool mouseup 1 keyup shift
}

# --- the keyboard

press() {
  local key
  for key in "$@"; do
    xdotool key "$key"
    sleep 0.1
  done
}

# The fields of the box that is open, one after the other.
answer() {
  local first=1 value
  until_ has_window
  sleep 0.2
  while [ $# -gt 0 ]; do
    value=$(xargs <<<"$1")
    shift
    [ -n "$first" ] || xdotool key Tab
    first=
    [ "$value" = - ] || xdotool type --delay 5 -- "$value"
  done
  xdotool key Return
  until_ has_no_window
}

windows_path() { printf 'Z:%s' "$1" | tr / '\\'; }

# --- files

# Saves, and keeps the text under that name.
saved_as() {
  rm -f "$file"
  xdotool key ctrl+s
  for _ in $(seq 100); do
    [ -f "$file" ] && break
    sleep 0.1
  done
  sleep 0.1
  cp "$file" "$work/$1"
}

info() {
  local path=$work/$1 told count
  shift
  told=$(build/native/ferrowand-cli info "$path" --wad-path data --qc data/ents.qc 2>"$work/info.log")
  while [ $# -gt 1 ]; do
    count=$(sed -nE "s/^${1//_/[ _]}: |^ +([0-9]+)  $1\$/\1/p" <<<"$told")
    [ "$count" = "$2" ] || fail "$path has $1: $count, not $2"
    shift 2
  done
}

# --- the program

start_program() {
  # One row short of the screen: a desktop that fills it is put beside it by newer versions of Wine.
  wine explorer /desktop=ferrowand,1280x999 build/win64/ferrowand.exe >/dev/null 2>&1 &
  until_ has_frame
  # The first click tells the X server who is to have the keys.
  xdotool mousemove 640 500 click 1
  sleep 0.3
}

# As the system sees it: the processes of this Wine whose program is the editor.
pids_of_program() {
  local pid
  for pid in $(pgrep -f 'ferrowand\.exe'); do
    grep -qzxF "WINEPREFIX=$WINEPREFIX" "/proc/$pid/environ" &&
      head -zn 1 "/proc/$pid/cmdline" | grep -qz 'ferrowand\.exe$' && echo "$pid"
  done 2>/dev/null
}
is_gone() { [ -z "$(pids_of_program)" ]; }

# Without a warning.
kill_program() {
  kill -9 $(pids_of_program)
  until_ is_gone
}

# until_file SECONDS PATTERN
until_file() {
  local deadline=$((SECONDS + $1))
  until compgen -G "$2" >/dev/null; do
    [ $SECONDS -lt $deadline ] || fail "never came: $2"
    sleep 0.2
  done
}

setting() {
  local hive
  for hive in /reg:32 /reg:64; do
    wine reg add 'HKLM\Software\ferrowand\0.9' /v "$1" /t REG_DWORD /d "$2" /f $hive >/dev/null 2>&1
  done
}

# --- the steps

do_step() {
  local word=$1
  shift
  local first=${1:-}
  case $word in
    view)
      view=$first
      probe
      find_view || true
      xdotool mousemove $((left + 100)) $((caption + 12)) click 1
      sleep 0.2
      ;;
    give) press "$@" ;;
    form | file)
      local keys=("${parts[0]}")
      read -ra keys <<<"${parts[0]}"
      press "${keys[@]:1}"
      if [ "$word" = form ]; then
        answer "${parts[@]:1}"
      else
        file=$work/$(xargs <<<"${parts[1]}")
        answer "$(windows_path "$file" | sed 's/\\/\\\\/g')"
      fi
      ;;
    drag) drag "$@" ;;
    point) move_to "$@" ;;
    click)
      move_to "$1" "$2"
      xdotool click 1
      ;;
    rightclick)
      move_to "$1" "$2"
      xdotool click 3
      ;;
    camera)
      until_ find_camera
      xdotool mousemove $((left + 100)) $((caption + 12)) click 1
      sleep 0.2
      ;;
    look) look "$1" "$2" ;;
    opened) until_ has_title "${text#opened }" ;;
    closed) until_ has_no_title "${text#closed }" ;;
    quit)
      press alt+F4
      until_ is_gone
      ;;
    key) xdotool key "$first" ;;
    insert)
      xdotool key Insert
      until_ has_window
      press "${@:2}"
      until_ has_no_window
      ;;
    map)
      press alt+w "$2"
      file=$work/$first
      ;;
    mouse) xdotool mousemove "$1" "$2" click 1 sleep 0.2 ;;
    pull)
      xdotool mousemove "$1" "$2" mousedown 1 sleep 0.1
      mouse_to $((($1 + $3) / 2)) $((($2 + $4) / 2))
      mouse_to "$3" "$4"
      sleep 0.2
      [ -z "${5:-}" ] || import -window root "$work/$5.png"
      xdotool mouseup 1 sleep 0.2
      ;;
    type) xdotool type --delay 5 -- "${text#type }" ;;
    wad)
      build/native/ferrowand-cli wad "$work/$first" | grep -F -- "$2" | grep -qF -- "$3" || fail "no such texture"
      ;;
    path) xdotool type --delay 5 -- "$(windows_path "$work/$first")" ;;
    put) cp "$(dirname "$steps")/../../$first" "$work/$2" ;;
    ctrlclick)
      move_to "$1" "$2"
      xdotool keydown ctrl click 1 keyup ctrl
      ;;
    holds)
      saved_as held.kept
      grep -qF -- "${text#holds }" "$work/held.kept" || fail "the file does not hold it: ${text#holds }"
      ;;
    undo)
      for ((n = 0; n < first; ++n)); do press ctrl+z; done
      ;;
    keep) saved_as "$first.kept" ;;
    same)
      saved_as now.kept
      cmp "$work/now.kept" "$work/$first.kept" || fail "not as it was at $first"
      ;;
    same_map) cmp "$work/$first" "$(dirname "$steps")/$first" || fail "another $first" ;;
    info) info "$@" ;;
    setting) setting "${first//_/ }" "$2" ;;
    start) start_program ;;
    kill) kill_program ;;
    crash)
      echo crash >&"${PROBE[1]}"
      until_ has_window
      ;;
    close)
      # Its button lies under the middle of the screen. Some Wines give no keys to a box while the
      # windows behind it answer no more, others place it a little otherwise.
      xdotool mousemove 640 560 click 1 sleep 0.5 key Return
      until_ is_gone
      ;;
    file_there) until_file 90 "$work/$first" ;;
    files) (cd "$work" && echo "-- here: $(ls -m --ignore='*.png')") ;;
    box) until_ has_window ;;
    says) until_ tells "${text#says }" ;;
    picture)
      sleep 0.3
      import -window root "$work/$first.png"
      ;;
    *) fail "what is $word?" ;;
  esac
}

step "Wine" use_wine wine-session
step "Virtual display" start_display 1280x1000
settings='HKLM\Software\ferrowand\0.9'
for hive in /reg:32 /reg:64; do
  wine reg delete "$settings" /f $hive >/dev/null 2>&1
done
setting "Show Tips" 0
say "$steps"
started=$SECONDS
coproc PROBE { wine build/win64/ferrowand_probe.exe ferrowand 2>/dev/null; }
line=0 count=0
start_program
while IFS= read -r text || [ -n "$text" ]; do
  line=$((line + 1))
  text=${text%%#*}
  [ -n "${text// /}" ] || continue
  IFS='|' read -ra parts <<<"$text"
  read -ra words <<<"$text"
  do_step "${words[@]}"
  count=$((count + 1))
done <"$steps"
say "$count steps in $((SECONDS - started)) seconds: all as expected"
