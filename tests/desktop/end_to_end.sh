#!/usr/bin/env bash
# The real window on a virtual display, worked with a real key, talks to the simulated studio over a
# pseudo-terminal: a call arrives, the key takes it to air, the rows show both.
#
#   end_to_end.sh FOLDER-OF-PROGRAMS
set -euo pipefail
bin=$1

work=$(mktemp -d)
export XDG_RUNTIME_DIR=$work
trap 'kill $(jobs -p) 2> /dev/null || true; rm -rf "$work"' EXIT
cd "$work"

fail() {
  echo "end to end: $*" >&2
  cat studio.log table.txt >&2 2> /dev/null || true
  exit 1
}

# await TEXT: waits until the studio has logged the text.
await() {
  for _ in {1..200}; do
    grep -q -- "$1" studio.log 2> /dev/null && return
    read -r -t 0.1 < "$idle" || true
  done
  fail "the studio has not logged: $1"
}
mkfifo idle && exec {idle_end}<> idle
idle=/dev/fd/$idle_end

printf '%s\n' '1 call 2' '1 call 5' > show.txt
"$bin/lineweir-studio" --script show.txt --ring-patience 0 --link box --log studio.log > studio.txt &
printf '%s\n' launch 'serial Comm1 reply "M" "Line monitor ON"' 'click PortOn' \
  'click SaveSettingsMenu' | "$bin/lineweir-driver" --dir . > driver.txt

exec {display_pipe}<> <(:)
Xvfb -displayfd "$display_pipe" -screen 0 1280x1024x24 -nolisten tcp 2> /dev/null &
read -r -t 20 number <&"$display_pipe" || fail "no virtual display"
export DISPLAY=:$number

LINEWEIR_COM1=$work/box LINEWEIR_SCREENSHOT=$work/end.png LINEWEIR_SCREENSHOT_AFTER=8 \
  LINEWEIR_SCREENSHOT_ENDS=1 timeout 60 "$bin/lineweir" > table.txt &
console=$!
await 'word Q09'
await 'item R02'
window=$(timeout 20 xdotool search --sync --onlyvisible --name "Lineweir - " | tail -n 1)
xdotool windowfocus --sync "$window" key 3
await 'word N02'
await 'item N02'
wait "$console" || fail "the console has ended with an error"

grep -Eq '^3 +On Air +0:00:[0-9]{2} .* N$' table.txt || fail "row 3 is not on air"
grep -Eq '^6 +0:00:[0-9]{2} .* R$' table.txt || fail "row 6 does not ring"
grep -Eq '^1$|^1 +$' table.txt || fail "row 1 is not idle"
[[ -s end.png ]] || fail "there is no picture"
