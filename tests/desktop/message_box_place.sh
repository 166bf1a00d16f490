#!/usr/bin/env bash
# Under a window manager the message box opens at its offset from the main window, from the first
# time on and after the window was moved; also when the first message comes from a box that doesn't
# answer at the start.
#
#   message_box_place.sh FOLDER-OF-PROGRAMS
set -euo pipefail
bin=$1
source "$(dirname "$0")/real_window.sh"

# place WINDOW: sets X and Y to where its content stands.
place() {
  eval "$(xdotool getwindowgeometry --shell "$1" | grep -E '^(X|Y)=')"
}

# check_box WHEN: the box is 2000 and 1000 twips from the main window; both have the same frame.
check_box() {
  local box offset
  box=$(await_window '^Lineweir$')
  for _ in {1..100}; do
    place "$main"
    local main_x=$X main_y=$Y
    place "$box"
    offset="$((X - main_x)) $((Y - main_y))"
    [[ $offset == '133 67' ]] && return
    pause 0.05
  done
  fail "$1 it stands at $offset from the main window"
}

# No line has the number 11, so that its key gives a message.
provoke_message() {
  xdotool windowfocus --sync "$main" key --clearmodifiers shift+1
}

# A stored port that isn't there gives one at the start, before the main window is shown.
printf '%s\n' launch 'serial Comm1 reply "M" "Line monitor ON"' 'click PortOn' \
  'click SaveSettingsMenu' | "$bin/lineweir-driver" --dir . > driver.txt

start_display
start_window_manager

LINEWEIR_COM1=$work/none LINEWEIR_COM2=$work/none LINEWEIR_COM3=$work/none \
  LINEWEIR_COM4=$work/none timeout 120 "$bin/lineweir" &
console=$!
main=$(await_window 'Lineweir - ')
check_box 'at the start'
box=$(find_window '^Lineweir$')
xdotool windowfocus --sync "$box" key Return

xdotool windowmove --sync "$main" 300 200
provoke_message
check_box 'after a move'
kill "$console" && wait "$console" || true

# What the switch console sends is noise to whoever waits for an interface box.
mkfifo typed && exec {typing}<> typed
"$bin/lineweir-desk" --link noise < typed > /dev/null &
for _ in {1..100}; do
  [[ -e noise ]] && break
  pause 0.1
done
LINEWEIR_COM1=$work/noise timeout 120 "$bin/lineweir" &
console=$!
main=$(await_window 'Lineweir - ')
check_box 'with a box that does not answer'
box=$(find_window '^Lineweir$')
xdotool windowfocus --sync "$box" key Return
provoke_message
check_box 'later in that run'
kill "$console" && wait "$console" || true

# A message that came while the start waited for its server stands in front of the main window.
rm -f Writ.inf
printf '%s\n' launch 'answer file "gone.lwl"' 'click DatabasePathMenuItem' 'socket open' \
  'set Winsock1.RemotePort 1' 'click SaveSettingsMenu' | "$bin/lineweir-driver" --dir . > driver.txt
rm -f gone.lwl*
timeout 120 "$bin/lineweir" &
console=$!
main=$(await_window 'Lineweir - ')
check_box 'after a start without a server'
box=$(find_window '^Lineweir$')
place "$box"
ok_x=158 ok_y=97
xdotool mousemove $((X + ok_x)) $((Y + ok_y))
# A click on a box that isn't painted yet is nobody's.
for _ in {1..10}; do
  xdotool click 1
  for _ in {1..20}; do
    find_window '^Lineweir$' > /dev/null || break 2
    pause 0.05
  done
done
await_no_window '^Lineweir$'
kill "$console" && wait "$console" || true
