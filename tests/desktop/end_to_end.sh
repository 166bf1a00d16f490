#!/usr/bin/env bash
# The real window on a virtual display, worked with a real key, talks to the simulated studio over a
# pseudo-terminal: a call arrives, the key takes it to air, the rows show both.
#
#   end_to_end.sh FOLDER-OF-PROGRAMS
set -euo pipefail
bin=$1
source "$(dirname "$0")/real_window.sh"

printf '%s\n' '1 call 2' '1 call 5' > show.txt
"$bin/lineweir-studio" --script show.txt --ring-patience 0 --link box --log studio.log > studio.txt &
printf '%s\n' launch 'serial Comm1 reply "M" "Line monitor ON"' 'click PortOn' \
  'click SaveSettingsMenu' | "$bin/lineweir-driver" --dir . > driver.txt

start_display

LINEWEIR_COM1=$work/box LINEWEIR_SCREENSHOT=$work/shown.png timeout "$((60 * slower))" "${under[@]}" "$bin/lineweir" &
console=$!
await_studio 'word Q09'
await_row '^3 .* R$'
window=$(await_window "Lineweir - ")
xdotool windowfocus --sync "$window" key 3
await_studio 'word N02'
await_row '^3 *On Air *0:00:[0-9][0-9] .* N$'
await_row '^6 *0:00:[0-9][0-9] .* R$'
await_row '^1 *$'
await_success test -s shown.png || fail "there is no picture"

choose_in_menu "$window" alt+o x
close_with_caller_on_air
wait "$console" || fail "the console has ended with an error"
