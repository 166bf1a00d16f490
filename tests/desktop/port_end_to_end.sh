#!/usr/bin/env bash
# The real window, worked with real keys while it waits for a box that makes noise and never answers:
# another port is opened at once, "Off" stays off, and the program ends when it is told to.
#
#   port_end_to_end.sh FOLDER-OF-PROGRAMS
set -euo pipefail
bin=$1
source "$(dirname "$0")/real_window.sh"

fail() {
  echo "port end to end: $*" >&2
  head -n 100 studio.log >&2 2> /dev/null || true
  exit 1
}

# press KEY...: in the main window, each when the one before has been taken.
press() {
  local key
  xdotool windowfocus --sync "$window"
  for key in "$@"; do
    xdotool key "$key"
    pause 0.7
  done
}

message_shown() { find_window '^Lineweir$' > /dev/null; }
port_held() { ls -l "/proc/$console/fd" | grep -q -- "$(readlink "$1")\$"; }
links_made() { [[ -e noise && -e box ]]; }
has_ended() { ! kill -0 "$console" 2> /dev/null; }

# Switches the port on, and lets the wait begin for the rest of what the box has to say.
begin_wait() {
  press alt+p o
  await_success port_held noise || fail "the port was not opened"
  echo 'main 3' >&"$typing"
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

begin_wait
press alt+p 2
await_line studio.log 'word Q09' || fail "the box on the other port was not asked for its lines"
pause 6
message_shown && fail "a box that answers is reported dead"
port_held box || fail "the other port was closed"

press alt+p f alt+p 1
begin_wait
press alt+p f
pause 6
port_held noise && fail "the port is open again after Off"
message_shown && fail "Off was answered with a message"

begin_wait
press alt+o x
pause 2
has_ended || fail "the program goes on without a window"
wait "$console" || fail "the console has ended with an error"
