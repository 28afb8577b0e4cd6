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

model='document|geometry|gamedata'
forbid "src/platform src/shell/services" "($model|views|compile|shell/ui|cli)/"
forbid "src/document src/geometry src/gamedata" "(views|compile|shell/ui|cli)/"
forbid "src/views src/compile" "(shell/ui|cli)/"
forbid "src/shell/ui" "cli/"
forbid "src/cli" "shell/ui/"

others=$(find src -mindepth 1 -type d ! -path 'src/shell' ! -path 'src/shell/ui' \
  ! -path 'src/platform' ! -path 'src/platform/win32')
system='windows|commctrl|commdlg|shellapi|shlobj|windowsx|winreg|mmsystem'
forbid "$others src/platform/*.h src/platform/*.cpp" "($system)\.h"
gl_free=$(find src -name '*.cpp' -o -name '*.h' | grep -vE '^src/(views/gl_|shell/ui/)')
forbid "$gl_free" "GL/"

exit $broken
