#!/usr/bin/env bash
# The window of a caller's data and the question at the end, under a real window manager: it opens off
# the keys, Ctrl+Enter saves and makes the caller ready, it stays where it is dragged, and a console
# with a caller on air asks before it closes.
#
#   caller_window_end_to_end.sh FOLDER-OF-PROGRAMS
set -euo pipefail
bin=$1
source "$(dirname "$0")/real_window.sh"

# place_of WINDOW: prints left, top, right and bottom edge of what is inside its frame.
place_of() {
  local X Y WIDTH HEIGHT WINDOW SCREEN
  eval "$(xdotool getwindowgeometry --shell "$1")"
  echo $((X)) $((Y)) $((X + WIDTH)) $((Y + HEIGHT))
}

# apart WINDOW WINDOW: whether neither covers the other.
apart() {
  read -r left top right bottom <<< "$(place_of "$1")"
  read -r left2 top2 right2 bottom2 <<< "$(place_of "$2")"
  ((right <= left2 || right2 <= left || bottom <= top2 || bottom2 <= top))
}

stands_at() { [[ $(place_of "$1") == "$2" ]]; }

# ticks_on ROW: whether the row on air shows another time by now.
ticks_on() { [[ $(grep '^3 *On Air' "$LINEWEIR_LINES") != "$1" ]]; }

printf '%s\n' '1 call 2' '1 call 4' > show.txt
"$bin/lineweir-studio" --script show.txt --ring-patience 0 --hold-patience 0 --link box \
  --log studio.log > studio.txt &
printf '%s\n' launch 'click PortOn' 'click MitelPhone1' 'click ScreenerMode' \
  'click SaveSettingsMenu' | "$bin/lineweir-driver" --dir . > driver.txt

start_display
start_window_manager
LINEWEIR_COM1=$work/box timeout "$((150 * slower))" "${under[@]}" "$bin/lineweir" &
console=$!
# A window manager that is busy with a window that has just been moved may give the keyboard away once
# more, so the key is pressed until the window has gone.
# close_by_escape WINDOW NAME-PATTERN
close_by_escape() {
  for _ in {1..10}; do
    xdotool windowfocus --sync "$1" key Escape 2> /dev/null || true
    for _ in {1..10}; do
      [[ -z $(search_windows --name "$2") ]] && return
      pause 0.1
    done
  done
  fail "Esc doesn't close '$2'"
}

await_row '^3 .* R$'
await_row '^5 .* R$'
main=$(await_window '^Lineweir - ')

# There is room beside the main window when it stands at the left.
xdotool windowmove --sync "$main" 10 40

# The first caller is answered, typed in and made ready with the keyboard alone.
press_until_logged "$main" a 'word P02'
entry=$(await_window '^Caller Data - Line 3$')
await_row '^3 .* P$'
apart "$entry" "$main" || fail "the window covers the main one: $(place_of "$entry"), $(place_of "$main")"
xdotool type --window "$entry" --delay 30 'Ann'
xdotool key ctrl+Return
await_no_window '^Caller Data'
await_studio 'word S02'
await_row '^3 .* S$'
[[ $(grep -c 'word S02' studio.log) == 1 ]] || fail "the caller was made ready twice"
! grep -q 'word S04' studio.log || fail "another caller was made ready"

# Where it is dragged it opens again. For a second behind Ctrl+Enter no key acts on a line.
pause 1.2
xdotool windowfocus --sync "$main" key alt+5
entry=$(await_window '^Caller Data - Line 5$')
pause 0.5
xdotool windowmove "$entry" 30 40
pause 0.5
place=$(place_of "$entry")
close_by_escape "$entry" '^Caller Data'
xdotool windowfocus --sync "$main" key alt+3
entry=$(await_window '^Caller Data - Line 3$')
await_success stands_at "$entry" "$place" || fail "it was dragged to $place and stands at $(place_of "$entry")"
close_by_escape "$entry" '^Caller Data'

# As the host puts that caller on air, the window's close is a question, which stops nothing.
pause_typing
choose_in_menu "$main" alt+c m t
await_line "$LINEWEIR_LINES" '^3 *Next' || fail "line 3 is not next"
press_until_logged "$main" n 'word N02'
await_row '^3 *On Air'
xdotool windowfocus --sync "$main" key alt+F4
box=$(await_window '^Close Lineweir.$')
time=$(grep '^3 *On Air' "$LINEWEIR_LINES")
await_success ticks_on "$time" || fail "the rows stand still behind the question"
# Typed by habit, the key that drops a caller acts on nothing, and Enter keeps the window open.
xdotool key d Return
await_no_window '^Close Lineweir'
kill -0 "$console" || fail "Enter has closed the console"
! grep -q 'word F02' studio.log || fail "a key in the question dropped the caller"
pause_typing
choose_in_menu "$main" alt+o x
close_with_caller_on_air
wait "$console" || fail "the console ended with an error"
! grep -q 'word F02' studio.log || fail "closing has dropped the caller"
