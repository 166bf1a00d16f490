# Sourced by ./run: a studio on this machine with a real server, and callers and people who are
# simulated. All of it stands in the folder $data.

started=()
finish() {
  [[ ${#started[@]} -eq 0 ]] || kill "${started[@]}" 2> /dev/null || true
}
trap finish EXIT

admin() { "$bin/lineweir-admin" --socket "$data/studio/admin.sock" "$@"; }

# Where a second window of this machine comes from, so that the server can tell it from the first;
# nothing on a machine without it.
second_address() {
  grep -qs '^0\{31\}1 ' /proc/net/if_inet6 && echo ::1
}

# start_server LINES FIRST SECOND: the users whose windows are let in without a password. The people
# without a window have one, in a file that nobody else may read.
start_server() {
  ! admin lines 1 > /dev/null 2>&1 || fail "a show runs already; close its window first"
  local lines=$1 first=$2 second=$3 listen='"127.0.0.1:0"' second_seat='' word address user
  mkdir -p "$data/studio"
  if [[ ! -s $data/studio/password ]]; then
    (umask 077 && head -c 9 /dev/urandom | base64 > "$data/studio/password")
  fi
  if [[ -n $(second_address) ]]; then
    listen='["127.0.0.1:0", "[::1]:0"]'
    second_seat="[[fixed_seat]]
address = \"::1\"
user = \"$second\""
  fi
  cat > "$data/studio/server.toml" << EOF
# Written anew by ./run at each start.
listen = $listen
store = "sqlite:server.db"
admin_socket = "admin.sock"
shutdown_seconds = 0

[[fixed_seat]]
address = "127.0.0.1"
user = "$first"
$second_seat

[[group]]
number = 1
name = "Morning Show"
lines = $lines
calls_per_minute = 12.0
line_names = ["Hotline"]
EOF
  coproc server {
    exec "$bin/lineweir-server" --config "$data/studio/server.toml" 2> "$data/studio/server.log"
  }
  started+=("$server_PID")
  if ! read -r -t 20 word address <&"${server[0]}" || [[ $word != ready ]]; then
    fail "the server did not start; $data/studio/server.log says why"
  fi
  port=${address##*:}
  # The line names the first address; the log names both.
  second_port=$(sed -n 's/.*listens on \[::1\]:\([0-9]*\).*/\1/p' "$data/studio/server.log")
  for user in host screener; do
    admin user list | grep -q "^$user " ||
      admin user add "$user" --template "$user" --password-stdin < "$data/studio/password"
  done
}

# start_person WORK: a seat without a window, and somebody who works at it.
start_person() {
  "$bin/lineweir-seat" --host 127.0.0.1 --port "$port" --user "$1" --as "$1" \
    < "$data/studio/password" > "$data/studio/$1.log" 2>&1 &
  started+=("$!")
}

# The show has begun a while ago when the window opens.
let_callers_ring() {
  local line
  for line in 1 2 4 5 7; do admin call 1 "$line" > /dev/null 2>&1 || true; done
}

# A time of day so many minutes from now, as the plan's form takes it.
in_minutes() { date -d "$1 minutes" +%H%M00; }

# prepare_window FOLDER USER MODE ADDRESS PORT LINES: the settings of a window that connects by itself,
# with a plan of the hour, a call log and growing text. The plan is made anew each time, as the hour
# is another one; what else its user has changed stays.
prepare_window() {
  local folder=$1 user=$2 mode=$3 address=$4 port_of_window=$5 lines=$6 is_new=
  [[ -s $folder/Writ.inf ]] || is_new=yes
  mkdir -p "$folder"
  {
    printf '%s\n' launch
    [[ -z $is_new ]] ||
      printf '%s\n' 'resize 15000 11000' 'click EventClockMenu' 'click TimeClockMenuItem' \
        'click TextGrowToggle' 'answer file "calls.mdb"' 'click DatabasePathMenuItem'
    # Without a handset a screener could answer nobody; the first is the simulated screener's.
    [[ -z $is_new || $user != screener ]] || printf '%s\n' 'click MitelPhone2'
    [[ -z $is_new ]] || printf '%s\n' "click $mode"
    [[ -z $is_new || $lines == 10 ]] || printf '%s\n' 'click Line20Mode'
    # A new plan, as nothing can be typed into the full boxes of the last time's.
    printf '%s\n' 'click ShowData' 'answer file "NoName.txt"' 'click Form2.New' \
      "type Form2.StartTime \"$(in_minutes -6)\"" "type Form2.Text1 \"$(in_minutes 54)\"" \
      "type Form2.Grid1 \"$(in_minutes 4)\\t$(in_minutes 24)\\t$(in_minutes 39)\""
    printf '%s\n' 'cell Form2.Grid1 1 2' 'type Form2.Grid1 "News\tGuest\tCalls"' 'click Form2.Exit'
    printf '%s\n' "set UserName \"$user\"" \
      "set Winsock1.RemoteHost \"$address\"" "set Winsock1.RemotePort $port_of_window" \
      'socket open' 'click SaveSettingsMenu'
  } | "$bin/lineweir-driver" --dir "$folder" > "$folder/preparation.txt"
}

# start_box LINES STUDIO-OPTION...: the simulated interface box on a pseudo-terminal.
start_box() {
  local lines=$1 word device
  shift
  # The studio's first line is its device.
  coproc studio {
    cd "$data"
    exec "$bin/lineweir-studio" --auto --lines "$lines" "$@" --log "$data/studio.log" 2>&1
  }
  started+=("$studio_PID")
  if ! read -r -t 10 word device <&"${studio[0]}" || [[ $word != device ]]; then
    fail "the simulated studio did not start: ${word:-} ${device:-}"
  fi
  export LINEWEIR_COM1=$device
  [[ -s $data/Writ.inf ]] && return
  # A first start has no settings, so that its port is closed; these open it.
  printf '%s\n' launch 'serial Comm1 reply "M" "Line monitor ON"' 'resize 15000 11000' \
    'click PortOn' 'click EventClockMenu' 'click TimeClockMenuItem' 'click TextGrowToggle' \
    'click SaveSettingsMenu' |
    "$bin/lineweir-driver" --dir "$data" > /dev/null
}
