#!/usr/bin/env bash
# scripts/fuzz.sh SECONDS [TARGET...]: runs the fuzz targets of build/fuzz on their seeds. A finding
# is left in build/fuzz/findings. New inputs go to build/fuzz/corpus, so that long runs build up.
set -u
cd "$(dirname "$0")/.." || exit 1
seconds=${1:-60}
shift
targets=("$@")
[ ${#targets[@]} = 0 ] && targets=($(ls fuzz/seeds))
mkdir -p build/fuzz/findings
for target in "${targets[@]}"; do
  mkdir -p "build/fuzz/corpus/$target"
  echo "$target: $seconds s"
  "build/fuzz/fuzz_$target" "build/fuzz/corpus/$target" "fuzz/seeds/$target" \
    -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 \
    -artifact_prefix=build/fuzz/findings/ >"build/fuzz/$target.log" 2>&1 || {
    tail -40 "build/fuzz/$target.log"
    exit 1
  }
done
