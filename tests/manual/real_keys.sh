#!/usr/bin/env bash
# The manual's main job with real keys under a real window manager: a screener answers, types, makes
# ready and reads the manual meanwhile; then a host takes the caller, locks, unlocks and drops.
#
#   real_keys.sh FOLDER-OF-PROGRAMS
set -euo pipefail
bin=$1
source "$(dirname "$0")/../desktop/real_window.sh"

# words WORD: how often the console has sent it.
words() { grep -c "word $1\$" studio.log || true; }

# Where a message stands in front, of a key that was pressed once more, the first Esc is for that.
# close_manual: Esc until its window has gone.
close_manual() {
  for _ in {1..5}; do
    xdotool key Escape
    for _ in {1..10}; do
      [[ -z $(search_windows --name '^Lineweir - Manual$') ]] && return
      pause 0.1
    done
  done
  fail "Esc doesn't close the manual"
}

sent_twice() { [[ $(words "$1") == 2 ]]; }

printf '%s\n' '1 call 2' '1 call 4' > show.txt
"$bin/lineweir-studio" --script show.txt --ring-patience 0 --hold-patience 0 --link box \
  --log studio.log > studio.txt &
printf '%s\n' launch 'click PortOn' 'click MitelPhone1' 'click ScreenerMode' \
  'click SaveSettingsMenu' | "$bin/lineweir-driver" --dir . > driver.txt

start_display
start_window_manager
LINEWEIR_COM1=$work/box timeout 150 "$bin/lineweir" &
console=$!
await_row '^3 .* R$'
await_row '^5 .* R$'
main=$(await_window '^Lineweir - Producer')

# Answer, ask and type, mark ready.
press_until_logged "$main" a 'word P02'
await_window '^Caller Data - Line 3$' > /dev/null
await_row '^3 .* P$'
xdotool type --delay 30 'Ann'
xdotool key ctrl+Return
await_no_window '^Caller Data'
await_row '^3 *Next'
pause 1.2

# The manual: what is typed there acts nowhere else, and Esc gives the keyboard back.
xdotool windowfocus --sync "$main" key F1
manual=$(await_window '^Lineweir - Manual$')
xdotool windowfocus --sync "$manual"
xdotool type --delay 30 'drop hold 5'
pause_typing
close_manual
! grep -qE 'word ([FHP]04|F02)' studio.log || fail "words typed in the manual have acted"
pause_typing

# Answer by the digit, put on hold.
press_until_logged "$main" 5 'word P04'
await_row '^5 .* P$'
press_until_logged "$main" h 'word H04'
await_row '^5 *Held'

# The host: next, lock, unlock, drop.
choose_in_menu "$main" alt+c m t
await_success find_window '^Lineweir - Talent' > /dev/null || fail "the mode has not changed"
pause_typing
press_until_logged "$main" n 'word N02'
await_row '^3 *On Air'
press_until_logged "$main" 3 'word L02'
await_row '^3 *Locked'
xdotool windowfocus --sync "$main" key d
pause_typing
[[ $(words F02) == 0 ]] || fail "a locked caller was dropped"
xdotool key Escape
pause_typing
xdotool windowfocus --sync "$main" key 3
await_success sent_twice N02 || fail "the caller was not unlocked"
await_row '^3 *On Air'
press_until_logged "$main" d 'word F02'

choose_in_menu "$main" alt+o x
wait "$console" || fail "the console has ended with an error"
