#!/usr/bin/env bash
# The real window, worked with real keys while it waits for a box that makes noise and never answers:
# another port is opened at once, "Off" stays off, and the program ends when it is told to.
#
#   port_end_to_end.sh FOLDER-OF-PROGRAMS
set -euo pipefail
bin=$1
source "$(dirname "$0")/real_window.sh"

message_shown() { find_window '^Lineweir$' > /dev/null; }
port_held() { ls -l "/proc/$console/fd" | grep -q -- "$(readlink "$1")\$"; }
links_made() { [[ -e noise && -e box ]]; }
has_ended() { ! kill -0 "$console" 2> /dev/null; }

# Switches the port on, and lets the wait begin for the rest of what the box has to say.
begin_wait() {
  choose_in_menu "$window" alt+p o
  await_success port_held noise || fail "the port was not opened"
  echo 'main 3' >&"$typing"
  # Nothing tells that it was read.
  pause 0.5
}

# What the switch console sends is noise to whoever waits for an interface box.
mkfifo typed && exec {typing}<> typed
"$bin/lineweir-desk" --link noise < typed > /dev/null &
"$bin/lineweir-studio" --link box --log studio.log > studio.txt &
start_display
await_success links_made || fail "there are no lines"

LINEWEIR_COM1=$work/noise LINEWEIR_COM2=$work/box "$bin/lineweir" &
console=$!
window=$(await_window 'Lineweir - ')

# What must not come can't be awaited: the waits would end in it after 5 seconds.
begin_wait
choose_in_menu "$window" alt+p 2
await_line studio.log 'word Q09' || fail "the box on the other port was not asked for its lines"
pause 6
message_shown && fail "a box that answers is reported dead"
port_held box || fail "the other port was closed"

choose_in_menu "$window" alt+p f
choose_in_menu "$window" alt+p 1
begin_wait
choose_in_menu "$window" alt+p f
pause 6
port_held noise && fail "the port is open again after Off"
message_shown && fail "Off was answered with a message"

begin_wait
choose_in_menu "$window" alt+o x
for _ in {1..20}; do
  has_ended && break
  pause 0.1
done
has_ended || fail "the program goes on without a window"
wait "$console" || fail "the console has ended with an error"
