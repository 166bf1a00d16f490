#!/usr/bin/env bash
# A whole call by ear: what a screen reader would speak while a call rings, is answered and named,
# made ready, chosen as the next one, put on air, held and dropped, all by keyboard on the real
# window. spoken.log holds every word.
#
#   screen_reader_end_to_end.sh FOLDER-OF-PROGRAMS
set -euo pipefail
bin=$1
here=$(cd "$(dirname "$0")" && pwd)
# The accessibility bus belongs to a session of its own.
[[ -n ${LINEWEIR_OWN_SESSION:-} ]] ||
  LINEWEIR_OWN_SESSION=1 exec dbus-run-session -- "$here/$(basename "$0")" "$@"
source "$here/real_window.sh"

# heard PATTERN...: waits until the reader has spoken all of them, in whatever order, behind what it
# had spoken when last asked.
spoken=1
heard() {
  local at last=$spoken
  for pattern in "$@"; do
    for _ in {1..300}; do
      at=$(tail -n "+$spoken" spoken.log | grep -nEm 1 -- "$pattern" | cut -d : -f 1) || true
      [[ -z $at ]] || break
      pause 0.1
    done
    [[ -n $at ]] || unspoken "$pattern"
    last=$((spoken + at > last ? spoken + at : last))
  done
  spoken=$last
}

unspoken() {
  cat spoken.log >&2
  fail "the reader has not spoken: $1"
}

printf '%s\n' '2 call 2' > show.txt
"$bin/lineweir-studio" --script show.txt --ring-patience 0 --hold-patience 0 --link box \
  --log studio.log > studio.txt &
printf '%s\n' launch 'click MitelPhone1' 'click ScreenerMode' \
  'serial Comm1 reply "M" "Line monitor ON"' 'click PortOn' 'click SaveSettingsMenu' |
  "$bin/lineweir-driver" --dir . > driver.txt

start_display
start_window_manager
# The packages of the system belong to its own Python.
/usr/bin/python3 "$here/screen_reader.py" spoken.log &
await_line spoken.log listening || fail "the reader doesn't hear"

LINEWEIR_COM1=$work/box QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 timeout 300 "$bin/lineweir" &
console=$!

heard '^window +Lineweir - Producer'
heard '^alert +Line 3 is ringing$'

# The keyboard is the window manager's to give here. A caller who has just rung can't be answered
# yet, so a key is pressed until the equipment has heard of it.
# press KEY PATTERN
press() {
  for _ in {1..20}; do
    xdotool key "$1"
    for _ in {1..10}; do
      grep -q -- "$2" studio.log && return
      pause 0.1
    done
  done
  cat spoken.log >&2
  fail "the key $1 has never led to: $2"
}

# The answer key takes who has waited, once the row's clock has gone on.
await_row '^3 .*0:00:0[1-9].* R$'
press a 'word P02'
heard '^alert +Line 3 is at phone 1$' '^window +Caller Data - Line 3$' '^focus +Caller Name, text$'
xdotool type --delay 60 'Margaret'
xdotool key alt+s
heard '^window +Lineweir - Producer'
# Keys that come within a second behind a dialog, or behind one another, still count as typed there.
pause 1.5
press e 'word S02'
heard '^alert +Line 3, Margaret, is ready, next caller$'

for key in alt+c m t; do
  xdotool key "$key"
  pause 0.5
done
heard '^focus +Configuration, ' '^focus +Mode, '
await_window 'Lineweir - Talent' > /dev/null
press n 'word N02'
heard '^alert +Line 3, Margaret, is on air, main hybrid$'
press h 'word H02'
heard '^alert +Line 3, Margaret, is held$'
press 3 'word N02'
heard '^alert +Line 3, Margaret, is on air, main hybrid$'
press d 'word F02'
heard '^alert +Line 3 is idle$'
xdotool key Tab
heard '^focus +.*, (push )?button'

# The whole of it, for whoever wants to read what is heard.
cat spoken.log
