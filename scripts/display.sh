# Sourced by ./run: windows on the screen that is there, or on a virtual one.

window_width=1000
windows_pids=()

# display_answers: whether there is one, and not only its name in a variable.
display_answers() {
  [[ -n ${DISPLAY:-} || -n ${WAYLAND_DISPLAY:-} ]] &&
    grep -q '^good *Display' < <("$bin/lineweir" --diagnose 2> /dev/null)
}

# start_windows FOLDER...: a window for each folder, side by side.
start_windows() {
  local folder place=()
  for folder in "$@"; do
    [[ $# -eq 1 ]] || place=(-qwindowgeometry "+$((${#windows_pids[@]} * (window_width + 20)))+0")
    (cd "$folder" && exec "$bin/lineweir" "${place[@]}") &
    windows_pids+=("$!")
  done
}

# show_windows FOLDER...: until all are closed.
show_windows() {
  start_windows "$@"
  started+=("${windows_pids[@]}")
  wait "${windows_pids[@]}"
}

# film_windows DATA FOLDER...: half a minute on a virtual display.
film_windows() {
  local data=$1 picture=$1/lineweir.png film=$1/lineweir.webm display_pipe display size
  shift
  size=$(($# * (window_width + 20)))x760
  ensure_packages film
  # Qt wants a place for what lives as long as a session.
  export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$data/session}
  install -d -m 700 "$XDG_RUNTIME_DIR"
  exec {display_pipe}<> <(:)
  Xvfb -displayfd "$display_pipe" -screen 0 "${size}x24" -nolisten tcp 2> /dev/null &
  started+=("$!")
  read -r -t 10 display <&"$display_pipe" || fail "the virtual display Xvfb did not start"
  export DISPLAY=:$display
  unset WAYLAND_DISPLAY
  say "no display: the show runs for half a minute on a virtual one"
  rm -f "$picture" "$film"
  start_windows "$@"
  ffmpeg -loglevel error -f x11grab -draw_mouse 0 -framerate 8 -video_size "$size" -i "$DISPLAY" \
    -t 28 -c:v libvpx -b:v 800k -deadline realtime -y "$film" < /dev/null &
  local filming=$!
  sleep 20
  ffmpeg -loglevel error -f x11grab -draw_mouse 0 -video_size "$size" -i "$DISPLAY" -frames:v 1 \
    -y "$picture" < /dev/null || fail "no picture could be taken"
  say "the picture is $picture"
  wait "$filming" || fail "no film could be made"
  say "the film is $film"
  # Before the display, whose end they would complain about.
  kill "${windows_pids[@]}"
  wait "${windows_pids[@]}" || true
}
