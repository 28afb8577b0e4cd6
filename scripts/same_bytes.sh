#!/usr/bin/env bash
# Every build writes the same bytes: of the same map in both formats, and after the same commands.
set -u
cd "$(dirname "$0")/.." || exit 1
. scripts/common.sh
use_wine
work=build/same-bytes
rm -rf "$work"
mkdir -p "$work"
maps=(data/maps/*.xmp tests/data/*.map)
[ -n "${FERROWAND_CORPUS:-}" ] && maps+=("$FERROWAND_CORPUS/e1m1.map" "$FERROWAND_CORPUS/e2m1.map")

# Status 1 only says that something was reported, such as a WAD that is not here.
convert() { "$@" >/dev/null 2>&1; [ $? -le 1 ]; }

builds=(native release win64)
have_wine32 && builds+=(win32)
for map in "${maps[@]}"; do
  for format in map xmp; do
    for preset in "${builds[@]}"; do
      run=("build/$preset/ferrowand-cli")
      [[ $preset = win* ]] && run=(wine "build/$preset/ferrowand-cli.exe")
      convert "${run[@]}" convert "$map" "$work/$preset.$format" || {
        echo "$preset could not convert $map"
        exit 1
      }
      cmp "$work/native.$format" "$work/$preset.$format" || exit 1
    done
  done
done
echo "${#maps[@]} maps, both formats: ${builds[*]} agree"

# use_commands PRESET: the random user of the tests works on the sample map and tells its text.
use_commands() {
  local run=(./ferrowand_tests)
  [[ $1 = win* ]] && run=(wine ferrowand_tests.exe)
  (cd "build/$1" && FERROWAND_RANDOM_TEXT="$OLDPWD/$work/$1.random" \
    "${run[@]}" --gtest_brief=1 --gtest_filter='RandomCommandsTest.*Letter' >/dev/null 2>&1)
}
builds=(native win64)
have_wine32 && builds+=(win32)
for preset in "${builds[@]}"; do
  use_commands "$preset" || { echo "the random user failed in $preset"; exit 1; }
  [ -s "$work/$preset.random" ] || { echo "the random user of $preset told nothing"; exit 1; }
  cmp "$work/native.random" "$work/$preset.random" || exit 1
done
echo "$(grep -c '^{' "$work/native.random") blocks after random commands: ${builds[*]} agree"
