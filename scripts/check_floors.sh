#!/usr/bin/env bash
# No room reaches upwards, and the system's headers stay where they belong. Prints every line that
# breaks the rule; exits with 1 if there is one.
set -u
cd "$(dirname "$0")/.." || exit 1
broken=0

# forbid FOLDERS PATTERN: no #include of PATTERN in the folders.
forbid() {
  local found
  found=$(grep -rnE "^\s*#\s*include\s*[<\"]($2)" $1 2>/dev/null) || return 0
  printf '%s\n' "$found"
  broken=1
}

forbid "src/platform src/base" "(document|operations|geometry|gamedata|views|compile|shell|cli)/"
forbid "src/document src/operations src/geometry src/gamedata" "(views|compile|shell|cli)/"
forbid "src/views" "(shell|cli)/"
forbid "src/shell" "cli/"
forbid "src/cli" "shell/"

others=$(find src -mindepth 1 -type d ! -path 'src/shell*' \
  ! -path 'src/platform' ! -path 'src/platform/win32')
system='windows|commctrl|commdlg|shellapi|shlobj|windowsx|winreg|mmsystem'
forbid "$others src/platform/*.h src/platform/*.cpp" "($system)\.h"
gl_free=$(find src -name '*.cpp' -o -name '*.h' | grep -vE '^src/(views/gl_|shell/)')
forbid "$gl_free" "GL/"

exit $broken
