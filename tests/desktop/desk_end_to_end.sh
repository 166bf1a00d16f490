#!/usr/bin/env bash
# The real window with two serial lines at once: the simulated studio on the first, the simulated
# switch console on the second. The desk's keys take a call to air, dial and drop it, its lamps show
# the calls; pulled out and plugged in again, it is back when its port is chosen with real keys.
#
#   desk_end_to_end.sh FOLDER-OF-PROGRAMS
set -euo pipefail
bin=$1
source "$(dirname "$0")/real_window.sh"

# await FILE TEXT: waits until a line of the file ends with the text.
await() {
  await_line "$1" " $2\$" || fail "$1 has no line: $2"
}

# start_desk LOG: a desk that is typed on through the pipe `typed`.
start_desk() {
  "$bin/lineweir-desk" --link desk --log "$1" < typed > /dev/null &
  desk=$!
}

printf '%s\n' '1 call 2' '1 call 5' > show.txt
"$bin/lineweir-studio" --script show.txt --ring-patience 0 --link box --log studio.log > studio.txt &
mkfifo typed && exec {typing}<> typed
start_desk desk.log
printf '%s\n' launch 'serial Comm1 reply "M" "Line monitor ON"' 'click PortOn' 'click RemoteOn' \
  'click SaveSettingsMenu' | "$bin/lineweir-driver" --dir . > driver.txt

start_display

LINEWEIR_COM1=$work/box LINEWEIR_COM2=$work/desk timeout "$((100 * slower))" "${under[@]}" "$bin/lineweir" &
console=$!
await studio.log 'item R02'
await desk.log 'lamp main 3 ring'
await desk.log 'lamp conf 6 ring'
echo 'main 3' >&"$typing"
await studio.log 'word N02'
await desk.log 'lamp main 3 AIR'
await desk.log 'lamp conf 3 on'
echo 'dial 5' >&"$typing"
await studio.log 'word T05'
await_window '^Dial$' > /dev/null
echo 'drop1' >&"$typing"
await studio.log 'word F02'
await desk.log 'lamp main 3'

kill "$desk" && wait "$desk" || true
await_window '^Lineweir$' > /dev/null
start_desk desk-again.log
window=$(await_window 'Lineweir - ')
choose_in_menu "$window" alt+r 2
await desk-again.log 'lamp main 6 ring'
echo 'main 6' >&"$typing"
await studio.log 'word N05'
await desk-again.log 'lamp main 6 AIR'

choose_in_menu "$window" alt+o x
close_with_caller_on_air
wait "$console" || fail "the console has ended with an error"
