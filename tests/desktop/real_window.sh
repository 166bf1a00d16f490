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

start_display() {
  local number
  exec {display_pipe}<> <(:)
  Xvfb -displayfd "$display_pipe" -screen 0 1280x1024x24 -nolisten tcp 2> /dev/null &
  read -r -t 20 number <&"$display_pipe" || fail "no virtual display"
  export DISPLAY=:$number
}

# A window manager, as on a user's screen.
start_window_manager() {
  local manager=
  for _ in {1..300}; do
    if [[ -z $manager ]] || ! kill -0 "$manager" 2> /dev/null; then
      openbox --sm-disable 2> /dev/null &
      manager=$!
    fi
    xprop -root _NET_SUPPORTING_WM_CHECK 2> /dev/null | grep -q 0x && return
    pause 0.1
  done
  fail "no window manager"
}
