#!/usr/bin/env bash
# scripts/check_floors.sh: no room reaches upwards, and the system's headers stay where they belong.
# Prints every line that breaks a rule; exits with 1 if there is one. Before it looks at the tree it
# plants one break a rule in a tree of its own and demands that each is found.
set -u
cd "$(dirname "$0")/.." || exit 1

# A line a room: its folder below src, then the rooms that it may include besides itself. A folder
# within a room belongs to it unless it has a line of its own.
core='platform platform/win32 base geometry gamedata document operations views views/gl compile'
system="$core shell/resources shell/system"
ROOMS="
platform
platform/posix  platform
platform/win32  platform
base            platform
geometry        platform base
gamedata        platform base geometry
document        platform base geometry gamedata
operations      platform base geometry gamedata document
views           platform base geometry gamedata document operations
views/gl        platform base geometry gamedata document operations views
compile         platform base geometry gamedata document operations
shell/resources
shell/system    $core shell/resources
shell/direct3d  $system
shell/dialogs   $system
shell/documents $system shell/dialogs
shell/frame     $system shell/dialogs shell/documents
shell/windows   $system shell/direct3d shell/dialogs shell/documents shell/frame
shell/commands  $system shell/direct3d shell/dialogs shell/documents shell/frame shell/windows
shell/app       $system shell/direct3d shell/dialogs shell/documents shell/frame shell/windows shell/commands
cli             platform base geometry gamedata document operations views compile
"
# Rooms that may include headers of a system: anything in <> that ends in .h. The language's own
# headers have no such end.
SYSTEM_ROOMS='platform/posix platform/win32'
for room in system direct3d dialogs documents frame windows commands app; do
  SYSTEM_ROOMS+=" shell/$room"
done
# Who may include <GL/...> too.
GL_FOLDER=views/gl

# findings TREE: a line for each break in TREE/src.
findings() {
  (cd "$1/src" && find . -type f \( -name '*.cpp' -o -name '*.h' \) -printf '%P\n' | sort |
    xargs -r grep -nHE '^[[:space:]]*#[[:space:]]*(include|import)' /dev/null) |
    awk -v rooms="$ROOMS" -v system_rooms="$SYSTEM_ROOMS" -v gl="$GL_FOLDER/" '
      BEGIN {
        lines = split(rooms, line, "\n")
        for (i = 1; i <= lines; ++i) {
          words = split(line[i], word, " ")
          if (words == 0) continue
          known[word[1]] = 1
          for (w = 1; w <= words; ++w) allowed[word[1], word[w]] = 1
        }
        count = split(system_rooms, word, " ")
        for (i = 1; i <= count; ++i) has_system[word[i]] = 1
      }
      # The longest room that holds the file; nothing where none does.
      function room_of(path, at) {
        for (at = path; sub(/\/[^\/]*$/, "", at);) if (at in known) return at
        return ""
      }
      {
        colon = index($0, ":")
        path = substr($0, 1, colon - 1)
        room = room_of(path)
        if (room == "") { print "src/" $0 "  (a folder that is no room)"; next }
        text = $0
        sub(/^[^#]*#[[:space:]]*[a-z]+[[:space:]]*/, "", text)
        mark = substr(text, 1, 1)
        header = substr(text, 2)
        sub(/[">].*$/, "", header)
        if (mark == "<") {
          if (header ~ /^GL\// && index(path, gl) == 1) next
          if (header ~ /\.[hH]$/ && !(room in has_system)) print "src/" $0 "  (a header of the system)"
        } else if (mark != "\"" || room_of(header) == "") {
          print "src/" $0 "  (not named from a room)"
        } else if (header ~ /\.\.?\//) {
          print "src/" $0 "  (relative)"
        } else if (!((room, room_of(header)) in allowed)) {
          print "src/" $0 "  (" room " may not include " room_of(header) ")"
        }
      }'
}

PLANTED=$(mktemp -d)
trap 'rm -rf "$PLANTED"' EXIT
planted=0

# plant FOLDER INCLUDE: a file with that one line.
plant() {
  planted=$((planted + 1))
  mkdir -p "$PLANTED/src/$1"
  printf '%s\n' "$2" >"$PLANTED/src/$1/planted$planted.h"
}

# Every upward include that there could be, from the room itself and from a folder within it.
rooms=$(awk 'NF {print $1}' <<<"$ROOMS")
while read -r room allowed; do
  [ -n "$room" ] || continue
  for other in $rooms; do
    case " $room $allowed " in *" $other "*) continue ;; esac
    plant "$room" "#include \"$other/x.h\""
    plant "$room/within" "# include \"$other/within/x.h\""
  done
  plant "$room" "#include \"../base/report.h\""
  plant "$room" "#include \"report.h\""
  plant "$room" "#include \"$room/../base/report.h\""
  plant "$room" "#include ROOM_HEADER"
  case " $SYSTEM_ROOMS " in
    *" $room "*) ;;
    *)
      for header in windows.h Windows.h commctrl.h d3d9.h unistd.h sys/stat.h GL/gl.h; do
        [ "$room/$header" = "$GL_FOLDER/GL/gl.h" ] || plant "$room" "#include <$header>"
      done
      ;;
  esac
done <<<"$ROOMS"
plant basement '#include "base/report.h"'

found=$(findings "$PLANTED")
missed=0
for ((n = 1; n <= planted; ++n)); do
  grep -qF "/planted$n.h:" <<<"$found" || { missed=1; grep -r . "$PLANTED" --include="planted$n.h"; }
done
[ $missed = 0 ] || { echo "These planted breaks were not found" >&2; exit 1; }

found=$(findings .)
[ -z "$found" ] || { printf '%s\n' "$found"; exit 1; }
echo "no include climbs ($planted planted breaks found)"
