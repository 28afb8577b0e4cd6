#!/usr/bin/env bash
# ./test.sh: installs what is missing, builds every program, runs every test.
set -u
cd "$(dirname "$0")" || exit 1
. scripts/common.sh
export FERROWAND_CORPUS=${FERROWAND_CORPUS:-$(realpath -m ../shared/corpus)}
[ -d "$FERROWAND_CORPUS" ] || unset FERROWAND_CORPUS

step "Packages" install_packages cmake ninja-build g++ clang clang-format clang-tidy \
  libclang-rt-dev googletest libbenchmark-dev libosmesa6-dev libglu1-mesa-dev g++-mingw-w64-i686-posix \
  g++-mingw-w64-x86-64-posix wine wine64 fonts-wine fonts-liberation xvfb xdotool imagemagick
step "32-bit Wine" install_wine32

step "Floors" scripts/check_floors.sh
format() {
  is_held clang-format || return 0
  find src tests bench fuzz data -name '*.cpp' -o -name '*.h' | xargs -P "$(nproc)" -n 40 clang-format --dry-run --Werror
}
step "Format" format

# run_tests FOLDER COMMAND...: runs a program of tests in the folder and counts what it tells.
passed=0 failed=0
run_tests() {
  local log=build/tests.log status
  (cd "$1" && shift && "$@" --gtest_brief=1 2>&1) | tee "$log"
  status=${PIPESTATUS[0]}
  ((passed += $(told PASSED), failed += $(told FAILED)))
  [ "$status" = 0 ] || { [ "$failed" -gt 0 ] || failed=1; counts; }  # it may have died untold
  return "$status"
}
told() {
  awk -v what="$1" -F '[][ ]+' '$2 == what && $3 ~ /^[0-9]+$/ { n = $3 } END { print n + 0 }' "$log"
}
counts() { printf '\n%d passed, %d failed\n' "$passed" "$failed"; }

begin_behind "Static checks" scripts/tidy.sh
step "Build native, with sanitizers" build native
step "Native tests" run_tests build/native ./ferrowand_tests

step "Build release, with benchmarks" build release ferrowand-cli ferrowand_bench
programs=(ferrowand ferrowand-cli)
have_wine32 && programs=(all)
step "Build win32" build win32 "${programs[@]}"
step "Build win64" build win64

step "Wine" use_wine
step "Virtual display" start_display 1280x1000
# Without a window manager Wine waits seconds for an answer to each window that it wants managed.
wine_alone() {
  wine reg add 'HKCU\Software\Wine\AppDefaults\ferrowand_ui_tests.exe\X11 Driver' \
    /v Managed /d N /f >/dev/null 2>&1
}
step "Wine without a window manager" wine_alone
windows_tests() {
  run_tests "build/$1" wine ferrowand_tests.exe && run_tests "build/$1" wine ferrowand_ui_tests.exe
}
step "Tests under Wine, 64-bit" windows_tests win64
if have_wine32; then
  step "Tests under Wine, 32-bit" windows_tests win32
else
  say "No 32-bit Wine here: the 32-bit program was built and linked, but not run"
fi
# with_letters DPI COMMAND...: in a system whose letters are of that size.
with_letters() {
  local key='HKCU\Control Panel\Desktop' result
  wine reg add "$key" /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null 2>&1
  wineserver -k -w
  "${@:2}"
  result=$?
  wine reg delete "$key" /v LogPixels /f >/dev/null 2>&1
  wineserver -k -w
  return $result
}
large_windows() {
  run_tests build/win64 wine ferrowand_ui_tests.exe --gtest_filter='*Tidy*:*AreDrawn*:*ShowPicture*'
}
step "Windows with letters of twice the size" with_letters 192 large_windows
step "A level, built with mouse and keys" scripts/session.sh
step "What is seen is what is reached" scripts/session.sh tests/session/reach.txt
step "What the tools tell is so" scripts/session.sh tests/session/truth.txt
step "Flying, and a key that is bound anew" scripts/session.sh tests/session/fly.txt
step "A button, a door, and what they are" scripts/session.sh tests/session/entities.txt
step "Textures of a door and a column" scripts/session.sh tests/session/textures.txt
step "The same map from every build" scripts/same_bytes.sh

step "Build fuzz targets" build fuzz
step "Fuzz for some seconds each" scripts/fuzz.sh 4
end_behind

say "All tests passed in $((SECONDS / 60)) min $((SECONDS % 60)) s"
counts
