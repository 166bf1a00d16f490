# Sourced by ./run: windows on the screen that is there, or on a virtual one.

# show_windows FOLDER...: a window for each folder, until all are closed.
show_windows() {
  local folder shown=()
  for folder in "$@"; do
    (cd "$folder" && exec "$bin/lineweir") &
    shown+=("$!")
  done
  started+=("${shown[@]}")
  wait "${shown[@]}"
}

# film_windows DATA FOLDER...: half a minute on a virtual display.
film_windows() {
  local data=$1 picture=$1/lineweir.png film=$1/lineweir.webm display_pipe display
  shift
  ensure_packages film
  # Qt wants a place for what lives as long as a session.
  export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$data/session}
  install -d -m 700 "$XDG_RUNTIME_DIR"
  exec {display_pipe}<> <(:)
  Xvfb -displayfd "$display_pipe" -screen 0 1280x960x24 -nolisten tcp 2> /dev/null &
  started+=("$!")
  read -r -t 10 display <&"$display_pipe" || fail "the virtual display Xvfb did not start"
  export DISPLAY=:$display
  say "no display: the show runs for half a minute on a virtual one"
  rm -f "$picture" "$film"
  ffmpeg -loglevel error -f x11grab -framerate 8 -video_size 1280x960 -i "$DISPLAY" -t 30 \
    -c:v libvpx -b:v 800k -deadline realtime -y "$film" < /dev/null &
  started+=("$!")
  show_windows "$@" &
  started+=("$!")
  sleep 25
  ffmpeg -loglevel error -f x11grab -video_size 1280x960 -i "$DISPLAY" -frames:v 1 -y "$picture" \
    < /dev/null
  say "the picture is $picture"
  sleep 6
  [[ -s $film ]] && say "the film is $film"
}
