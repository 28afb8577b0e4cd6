#!/usr/bin/env bash
# Runs the static checks of .clang-tidy over the core; a file that passed is checked again only when
# it, a header or the list of checks changed.
set -u
cd "$(dirname "$0")/.." || exit 1
passed=build/tidy
mkdir -p "$passed"
shared=$({ find src -name '*.h' | sort | xargs cat; cat .clang-tidy; } | sha256sum | cut -c1-16)

check() {
  local stamp
  stamp="$2/$(cat "$1" | sha256sum | cut -c1-16)-$3"
  [ -e "$stamp" ] && return 0
  clang-tidy -p build/native --quiet "$1" 2>/dev/null && touch "$stamp"
}
export -f check
find src/base src/geometry src/gamedata src/document src/operations src/views src/cli -name '*.cpp' |
  sort | xargs -P 2 -I FILE bash -c 'check FILE '"$passed $shared"
