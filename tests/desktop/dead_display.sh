#!/usr/bin/env bash
# Without a display, and with one that is named and doesn't answer, the console says so and ends.
#
#   dead_display.sh FOLDER-OF-PROGRAMS
set -euo pipefail
bin=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# ends_with SENTENCE [VARIABLE=VALUE]
ends_with() {
  local sentence=$1 status=0
  shift
  env --unset=DISPLAY --unset=WAYLAND_DISPLAY --unset=QT_QPA_PLATFORM "$@" timeout 20 \
    "$bin/lineweir" > said.txt 2>&1 || status=$?
  if [[ $status -ne 1 ]] || ! grep -qF -- "$sentence" said.txt; then
    echo "dead_display: with '$*' the console ended with $status and said: $(< said.txt)" >&2
    exit 1
  fi
}

ends_with 'there is no display, neither DISPLAY nor WAYLAND_DISPLAY is set'
ends_with "the display that DISPLAY or WAYLAND_DISPLAY names doesn't answer" DISPLAY=:987
ends_with "the display that DISPLAY or WAYLAND_DISPLAY names doesn't answer" WAYLAND_DISPLAY=none
