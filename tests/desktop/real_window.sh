# Sourced by the tests of the real window, with the folder of the programs as $bin: a folder of their
# own to work in, a virtual display, and waiting. All ends with the test.

work=$(mktemp -d)
export XDG_RUNTIME_DIR=$work
trap 'kill $(jobs -p) 2> /dev/null || true; rm -rf "$work"' EXIT
cd "$work"

mkfifo idle && exec {idle_end}<> idle
idle=/dev/fd/$idle_end

# pause SECONDS
pause() { read -r -t "$1" < "$idle" || true; }

# await_line FILE PATTERN: waits until a line of the file fits; false after 30 seconds.
await_line() {
  for _ in {1..300}; do
    grep -q -- "$2" "$1" 2> /dev/null && return
    pause 0.1
  done
  return 1
}

# await_success COMMAND...: until it succeeds; false after 20 seconds.
await_success() {
  for _ in {1..200}; do
    "$@" && return
    pause 0.1
  done
  return 1
}

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
  Xvfb -displayfd "$display_pipe" -screen 0 1280x1024x24 -nolisten tcp 2> /dev/null &
  read -r -t 20 number <&"$display_pipe" || fail "no virtual display"
  export DISPLAY=:$number
}

# Windows get frames, and the focus as a user gives it.
start_window_manager() {
  openbox --sm-disable --startup "sh -c 'echo ready > $work/manager.txt'" > /dev/null 2>&1 &
  await_line "$work/manager.txt" ready || fail "no window manager"
}

# find_window TITLE: prints the id of the newest shown window whose title fits; false if there is
# none. A search ends with an error when any window goes away meanwhile, and is then made again.
find_window() {
  local found
  while found=$(xdotool search --onlyvisible --name "$1" 2>&1) || true; [[ $found == *'X Error'* ]]; do
    pause 0.02
  done
  grep -xE '[0-9]+' <<< "$found" | tail -n 1
}

# await_window TITLE: the same, after at most 20 seconds.
await_window() {
  for _ in {1..400}; do
    find_window "$1" && return
    pause 0.05
  done
  fail "no window '$1'"
}

# await_no_window TITLE: until no such window is shown, at most 20 seconds.
await_no_window() {
  for _ in {1..400}; do
    find_window "$1" > /dev/null || return 0
    pause 0.05
  done
  fail "the window '$1' is still there"
}
