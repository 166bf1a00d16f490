#!/usr/bin/env bash
# The real window on a virtual display, worked with a real key, talks to the simulated studio over a
# pseudo-terminal: a call arrives, the key takes it to air, the rows show both.
#
#   end_to_end.sh FOLDER-OF-PROGRAMS
set -euo pipefail
bin=$1
source "$(dirname "$0")/real_window.sh"

fail() {
  echo "end to end: $*" >&2
  cat studio.log table.txt >&2 2> /dev/null || true
  exit 1
}

# await TEXT: waits until the studio has logged the text.
await() {
  await_line studio.log "$1" || fail "the studio has not logged: $1"
}
printf '%s\n' '1 call 2' '1 call 5' > show.txt
"$bin/lineweir-studio" --script show.txt --ring-patience 0 --link box --log studio.log > studio.txt &
printf '%s\n' launch 'serial Comm1 reply "M" "Line monitor ON"' 'click PortOn' \
  'click SaveSettingsMenu' | "$bin/lineweir-driver" --dir . > driver.txt

start_display

LINEWEIR_COM1=$work/box LINEWEIR_SCREENSHOT=$work/end.png LINEWEIR_SCREENSHOT_AFTER=8 \
  LINEWEIR_SCREENSHOT_ENDS=1 timeout 60 "$bin/lineweir" > table.txt &
console=$!
await 'word Q09'
await 'item R02'
window=$(await_window "Lineweir - ")
xdotool windowfocus --sync "$window" key 3
await 'word N02'
await 'item N02'
wait "$console" || fail "the console has ended with an error"

grep -Eq '^3 +On Air +0:00:[0-9]{2} .* N$' table.txt || fail "row 3 is not on air"
grep -Eq '^6 +0:00:[0-9]{2} .* R$' table.txt || fail "row 6 does not ring"
grep -Eq '^1$|^1 +$' table.txt || fail "row 1 is not idle"
[[ -s end.png ]] || fail "there is no picture"
