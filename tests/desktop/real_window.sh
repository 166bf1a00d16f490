# Sourced by the tests of the real window, with the folder of the programs as $bin: a folder of their
# own to work in, a virtual display, and waiting. All ends with the test.

work=$(mktemp -d)
export XDG_RUNTIME_DIR=$work
trap 'kill $(jobs -p) 2> /dev/null || true; rm -rf "$work"' EXIT
cd "$work"

# fail WHAT: ends the test, with what is known.
fail() {
  echo "$(basename "$0" .sh): $*" >&2
  head -n 100 studio.log desk*.log disk.txt lines.txt >&2 2> /dev/null || true
  exit 1
}

# What the window is run under, such as valgrind, and how many times slower all is then.
read -r -d "" -a under <<< "${WINDOW_UNDER:-}" || true
slower=${WINDOW_SLOWER:-1}

mkfifo idle && exec {idle_end}<> idle
idle=/dev/fd/$idle_end

# pause SECONDS
pause() { read -r -t "$1" < "$idle" || true; }

# tenths SECONDS: as many numbers as tenths of a second are to be waited for at most.
tenths() { seq $(($1 * 10 * slower)); }

# await_line FILE PATTERN: waits until a line of the file fits; false after 30 seconds.
await_line() {
  for _ in $(tenths 30); do
    grep -q -- "$2" "$1" 2> /dev/null && return
    pause 0.1
  done
  return 1
}

# await_studio PATTERN: waits until the simulated studio has logged it.
await_studio() { await_line studio.log "$1" || fail "the studio has not logged: $1"; }

# The rows as the window shows them, as src/desktop/line_report_file.h tells: "3  On Air  0:00:02  N".
export LINEWEIR_LINES=$work/lines.txt

# await_row PATTERN: waits until a row fits.
await_row() { await_line "$LINEWEIR_LINES" "$1" || fail "no row has come to: $1"; }

# await_success COMMAND...: until it succeeds; false after 20 seconds.
await_success() {
  for _ in $(tenths 20); do
    "$@" && return
    pause 0.1
  done
  return 1
}

# Behind typed words a key is the rest of them until the fingers have paused; no event tells that.
pause_typing() { pause "$(printf '%d.%d' $((6 * slower / 10)) $((6 * slower % 10)))"; }

# choose_in_menu WINDOW KEY...: opens a menu of the window by the first key and goes on by the others,
# each when what the one before opens or closes is there.
choose_in_menu() {
  local window=$1 shown
  shift
  # A window manager that is told the same focus twice may give it away again later.
  [[ $(xdotool getwindowfocus) == "$window" ]] || xdotool windowfocus --sync "$window"
  for key in "$@"; do
    shown=$(shown_windows)
    xdotool key "$key"
    await_success windows_differ_from "$shown" || fail "the key $key has done nothing to the menus"
  done
}

shown_windows() { search_windows --class lineweir | sort; }
windows_differ_from() { [[ $(shown_windows) != "$1" ]]; }

# press_until_logged WINDOW KEY TEXT: the key acts on a caller who has waited for a while, which may
# not have gone by yet in the console's eyes; so it is pressed again until studio.log has the text.
press_until_logged() {
  for _ in {1..10}; do
    xdotool windowfocus --sync "$1" key "$2"
    for _ in {1..30}; do
      grep -q -- "$3" studio.log && return
      pause 0.1
    done
  done
  fail "the key $2 never led to: $3"
}

start_display() {
  local number
  exec {display_pipe}<> <(:)
  # Two that start at the same moment may take the same number.
  exec {display_lock}> "${TMPDIR:-/tmp}/lineweir-display.lock"
  flock "$display_lock"
  Xvfb -displayfd "$display_pipe" -screen 0 1280x1024x24 -nolisten tcp \
    2> /dev/null {display_lock}>&- &
  read -r -t 20 number <&"$display_pipe" || fail "no virtual display"
  exec {display_lock}>&-
  export DISPLAY=:$number
}

# Windows get frames, and the focus as a user gives it.
start_window_manager() {
  openbox --sm-disable --startup "sh -c 'echo ready > $work/manager.txt'" > /dev/null 2>&1 &
  await_line "$work/manager.txt" ready || fail "no window manager"
}

# search_windows HOW...: prints the ids of the shown windows that fit. A search ends with an error when
# any window goes away meanwhile, and is then made again.
search_windows() {
  local found
  while found=$(xdotool search --onlyvisible "$@" 2>&1) || true; [[ $found == *'X Error'* ]]; do
    pause 0.02
  done
  grep -xE '[0-9]+' <<< "$found" || true
}

# find_window TITLE: prints the id of the newest shown window whose title fits; false if there is
# none.
find_window() { search_windows --name "$1" | tail -n 1 | grep .; }

# await_window TITLE: the same, after at most 20 seconds.
await_window() {
  for _ in $(tenths 20); do
    find_window "$1" && return
    pause 0.1
  done
  fail "no window '$1'"
}

# await_no_window TITLE: until no such window is shown, at most 20 seconds.
await_no_window() {
  for _ in $(tenths 20); do
    find_window "$1" > /dev/null || return 0
    pause 0.1
  done
  fail "the window '$1' is still there"
}

# Answers the question that comes when a console is closed with a caller on air. Keys that come right
# behind it count for nothing.
close_with_caller_on_air() {
  local box
  box=$(await_window '^Close Lineweir.$')
  pause_typing
  xdotool windowfocus --sync "$box" key alt+c
}
