#!/usr/bin/env bash
# How long ./run takes until its window is painted, and ./test until its first test would begin, when
# all is built. On a display. Prints "run SECONDS" and "test SECONDS".
set -euo pipefail
cd "$(dirname "$0")/.."

XDG_DATA_HOME=$(mktemp -d)
export XDG_DATA_HOME LINEWEIR_REPORT_PAINT=1
started=
finish() {
  [[ -z $started ]] || kill "$started" 2> /dev/null || true
  started=
}
trap 'finish; rm -rf "$XDG_DATA_HOME"' EXIT

took() { awk -v what="$1" -v begun="$2" -v ended="$EPOCHREALTIME" 'BEGIN { print what, ended - begun }'; }

show_until_painted() {
  local begun=$EPOCHREALTIME line='' said=''
  exec {show}< <(exec ./run 2>&1)
  started=$!
  until [[ $line == painted ]]; do
    said=$line
    read -r line <&"$show" || { echo "./run ended: $said" >&2 && exit 1; }
  done
  took run "$begun"
  finish
  # Its server and people end behind it, and the next show finds none.
  while read -r line <&"$show"; do :; done
  exec {show}<&-
}

list_tests() {
  local begun=$EPOCHREALTIME
  ./test -N > "$XDG_DATA_HOME/tests" 2>&1 || { tail -5 "$XDG_DATA_HOME/tests" >&2 && exit 1; }
  took test "$begun"
}

# The first time builds what is missing.
show_until_painted > /dev/null
show_until_painted
[[ -f build/test/build.ninja ]] || { echo "./test was never run here" >&2 && exit 1; }
list_tests > /dev/null
list_tests
