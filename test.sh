#!/usr/bin/env bash
# ./test.sh: installs what is missing, builds every program, runs every test.
set -u
cd "$(dirname "$0")" || exit 1
. scripts/common.sh
export FERROWAND_CORPUS=${FERROWAND_CORPUS:-$(realpath -m ../shared/corpus)}
[ -d "$FERROWAND_CORPUS" ] || unset FERROWAND_CORPUS

step "Packages" install_packages cmake ninja-build g++ clang clang-format clang-tidy \
  libclang-rt-14-dev googletest libgtest-dev libbenchmark-dev g++-mingw-w64-i686-posix \
  g++-mingw-w64-x86-64-posix wine wine64 fonts-wine fonts-liberation xvfb xdotool imagemagick x11-utils

step "Floors" scripts/check_floors.sh
format() { git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run --Werror; }
step "Format" format

step "Build native, with sanitizers" build native
native_tests() { ctest --test-dir build/native --output-on-failure -j 2; }
step "Native tests" native_tests
step "Static checks" scripts/tidy.sh

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
  local tests
  for tests in ferrowand_tests ferrowand_ui_tests; do
    (cd "build/$1" && wine "$tests.exe" --gtest_brief=1) || return 1
  done
}
step "Tests under Wine, 64-bit" windows_tests win64
if have_wine32; then
  step "Tests under Wine, 32-bit" windows_tests win32
else
  say "No 32-bit Wine here: the 32-bit program was built and linked, but not run"
fi
step "A level, built with mouse and keys" scripts/session.sh
step "The same map from every build" scripts/same_bytes.sh

step "Build fuzz targets" build fuzz
step "Fuzz for some seconds each" scripts/fuzz.sh 4

say "All tests passed"
