#!/usr/bin/env bash
# Real keys under a real window manager: what is typed for one window never acts in another. A call is
# on air while its host searches the log, imports calls and answers boxes; it stays on air until the
# host drops it on the main window.
#
#   keyboard_end_to_end.sh FOLDER-OF-PROGRAMS
set -euo pipefail
bin=$1
source "$(dirname "$0")/real_window.sh"

# await_keyboard TITLE: waits until that window has the keyboard.
await_keyboard() {
  local active=
  for _ in {1..300}; do
    active=$(xdotool getactivewindow getwindowname 2> /dev/null || true)
    [[ $active == $1 ]] && return
    pause 0.1
  done
  fail "the keyboard is in \"$active\" and not in \"$1\""
}

# Keys alone, as the focus is the window manager's here, and they are queued behind one another.
open_options() {
  xdotool key alt+o
  pause 0.5
}

on_air() {
  ! grep -q 'word [FHL]02' studio.log || fail "$1: the call on air was touched"
}

printf '%s\n' '1 call 2' > show.txt
"$bin/lineweir-studio" --script show.txt --ring-patience 0 --hold-patience 0 --link box \
  --log studio.log > studio.txt &
mkfifo typed && exec {typing}<> typed
"$bin/lineweir-desk" --link desk < typed > /dev/null &
desk=$!
printf '%s\n' launch 'answer file "calls.mdb"' 'click DatabasePathMenuItem' \
  'serial Comm1 reply "M" "Line monitor ON"' 'click PortOn' 'click RemoteOn' \
  'click SaveSettingsMenu' | "$bin/lineweir-driver" --dir . > driver.txt
printf '%s\n' '"Caller Name","City"' 'Ann,Salem' > calls.csv

start_display
start_window_manager

LINEWEIR_COM1=$work/box LINEWEIR_COM2=$work/desk timeout "$((150 * slower))" "${under[@]}" "$bin/lineweir" &
console=$!
await_row '^3 .* R$'
await_keyboard 'Lineweir - *'
# No key has the focus yet.
xdotool key space Return
xdotool key 3
await_row '^3 *On Air'
! grep -q 'word N00' studio.log || fail "Space at the start put line 1 on air"

# The log's search, while a message comes by itself.
open_options
xdotool key b
await_keyboard 'Call Log'
xdotool type --delay 60 'drop'
kill "$desk" && wait "$desk" || true
await_window '^Lineweir$' > /dev/null
xdotool type --delay 60 'hold 3 '
await_keyboard 'Call Log'
on_air "a message during the search"
pause_typing
xdotool key Escape
await_no_window '^Lineweir$'
await_keyboard 'Call Log'

# An import, with its message behind it.
xdotool key alt+i
await_keyboard 'Import calls from a CSV file'
xdotool type --delay 30 "$work/calls.csv"
xdotool key Return
await_keyboard 'Import Calls'
pause_typing
xdotool key Return
await_keyboard 'Lineweir'
xdotool key Return
await_keyboard 'Call Log'
xdotool type --delay 30 'drop'
on_air "letters behind the import's message"
[[ $(sqlite3 calls.mdb 'SELECT count(*) FROM "Caller Records"') == 1 ]] || fail "nothing was imported"

# The viewer closes with the rest of a word still to come.
xdotool key alt+s
xdotool type --delay 20 'drop'
xdotool key Escape
xdotool type --delay 20 'hold 3 '
await_keyboard 'Lineweir - *'
on_air "the rest of a word whose window has closed"

# Back on the main window its keys act.
pause_typing
xdotool key d
await_studio 'item F02'

open_options
xdotool key x
wait "$console" || fail "the console has ended with an error"
