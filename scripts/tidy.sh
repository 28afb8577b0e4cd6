#!/usr/bin/env bash
# Runs the static checks of .clang-tidy over the program: the portable code as the native compiler
# sees it, the code for Windows as MinGW's does. A file that passed is checked again only when it, a
# header that it reaches or what is checked changed.
set -u
cd "$(dirname "$0")/.." || exit 1
. scripts/common.sh
is_held clang-tidy || exit 0
work=build/tidy
mkdir -p "$work/passed"

# The commands alone, nothing is built; without precompiled headers, which only their compiler reads.
commands() {
  cmake --preset "$1" -B "$work/$1" -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON >"$work/$1.log" 2>&1 ||
    { cat "$work/$1.log"; return 1; }
}

# The analyzer stays out of the standard library and gives up on a function earlier than by itself:
# half the time.
limits="max-nodes=50000,c++-stdlib-inlining=false"
options="--quiet --extra-arg=-Xclang --extra-arg=-analyzer-config --extra-arg=-Xclang"
options+=" --extra-arg=$limits"
# Clang finds the headers of the system by its target, those of the other compiler's library not.
windows_options() {
  printf ' --extra-arg=--target=x86_64-w64-mingw32'
  x86_64-w64-mingw32-g++-posix -x c++ -E -v /dev/null 2>&1 |
    sed -n 's#^ \(/.*/include/c++.*\)# --extra-arg=-isystem\1#p' | tr -d '\n'
}

# A line for each source: the source and all headers of ours that it reaches.
reach() {
  grep -rE '^ *# *include *"' src --include='*.cpp' --include='*.h' | awk '
    { split($0, part, /:[^"]*"|"/); includes[part[1]] = includes[part[1]] " src/" part[2] }
    function visit(file, headers, count, i) {
      if (file in seen) return
      seen[file] = 1
      line = line " " file
      count = split(includes[file], headers, " ")
      for (i = 1; i <= count; ++i) visit(headers[i])
    }
    END {
      for (file in includes) {
        if (file !~ /\.cpp$/) continue
        split("", seen)
        line = ""
        visit(file)
        print line
      }
    }' | sort
}

check() {
  local stamp commands=release extra=
  stamp=passed/$({ echo "$rules"; cat "$@"; } | sha256sum | cut -c1-32)
  [ -e "$work/$stamp" ] && return 0
  case $1 in src/shell/* | src/platform/win32/*) commands=win64 extra=$windows ;; esac
  clang-tidy -p "$work/$commands" $options $extra "$1" 2>/dev/null && touch "$work/$stamp"
}

commands release && commands win64 || exit 1
windows=$(windows_options)
rules="$(clang-tidy --version) $options $windows $(cat .clang-tidy)"
export -f check
export work options windows rules
reach | xargs -P "$(nproc)" -L 1 bash -c 'check "$@"' check
