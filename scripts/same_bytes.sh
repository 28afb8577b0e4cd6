#!/usr/bin/env bash
# Every build writes the same bytes from the same map, in both formats.
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
