#!/usr/bin/env bash
# How long the programs take to build from nothing, as the first ./run builds them, without the
# compiler's cache: cold_build.sh [TARGET], of one target alone to try it. Prints "took SECONDS".
set -euo pipefail
cd "$(dirname "$0")/.."

export CCACHE_DISABLE=1
source scripts/setup.sh
folder=build/cold
rm -rf "$folder"
trap 'rm -rf "$folder" "$folder.log"' EXIT
begun=$EPOCHREALTIME
(configure release "$folder" -DLINEWEIR_TESTS=OFF -DLINEWEIR_BENCH=OFF &&
  build_targets "$folder" "${1:-all}") > "$folder.log" 2>&1 ||
  { grep -iE 'error' "$folder.log" | head -1 >&2 && exit 1; }
awk -v begun="$begun" -v ended="$EPOCHREALTIME" 'BEGIN { printf "took %.1f\n", ended - begun }'
