#!/usr/bin/env bash
# A whole call in the real window, worked with real keys against the simulated studio: it rings, is
# answered, its caller typed in, taken to air and dropped; the sqlite3 program finds it in the log.
#
#   call_log_end_to_end.sh FOLDER-OF-PROGRAMS
set -euo pipefail
bin=$1
source "$(dirname "$0")/real_window.sh"

fail() {
  echo "call log end to end: $*" >&2
  cat studio.log table.txt >&2 2> /dev/null || true
  exit 1
}

# await TEXT: waits until the studio has logged the text.
await() {
  await_line studio.log "$1" || fail "the studio has not logged: $1"
}

printf '%s\n' '1 call 2' > show.txt
"$bin/lineweir-studio" --script show.txt --ring-patience 0 --hold-patience 0 --link box \
  --log studio.log > studio.txt &
# A producer with a handset, whose log is calls.mdb.
printf '%s\n' launch 'answer file "calls.mdb"' 'click DatabasePathMenuItem' \
  'click MitelPhone1' 'click ScreenerMode' 'serial Comm1 reply "M" "Line monitor ON"' \
  'click PortOn' 'click SaveSettingsMenu' | "$bin/lineweir-driver" --dir . > driver.txt

start_display

LINEWEIR_COM1=$work/box LINEWEIR_SCREENSHOT=$work/end.png LINEWEIR_SCREENSHOT_AFTER=20 \
  LINEWEIR_SCREENSHOT_ENDS=1 timeout 60 "$bin/lineweir" > table.txt &
console=$!
await 'item R02'
# A caller has waited once the row's clock has gone on.
pause 2
main=$(await_window "Lineweir - ")
press_until_logged "$main" a 'word P02'
await 'item P02'
form=$(await_window "Caller Data - Line 3")
xdotool windowfocus --sync "$form"
xdotool type --delay 20 'Ann Smith'
xdotool key --delay 20 Return
xdotool type --delay 20 '5 Main Street'
xdotool key --delay 20 Return
xdotool type --delay 20 'Salem'
xdotool key --delay 20 Return Return Return
xdotool type --delay 20 '555 0100'
xdotool key --delay 20 Return Return f Return Return Return
await_no_window "Caller Data - Line 3"
# A key so close behind typed words would be taken for the rest of them.
pause 0.5
# Ready; then as the host to the main hybrid, and off the air again.
press_until_logged "$main" e 'item S02'
pause 2
xdotool windowfocus --sync "$main" key --delay 300 alt+c m t
pause 0.5
xdotool windowfocus --sync "$main" key n
await 'item N02'
pause 1
xdotool windowfocus --sync "$main" key d
await 'item F02'
wait "$console" || fail "the console has ended with an error"

row=$(sqlite3 calls.mdb << 'SQL'
SELECT "Caller Name", "Street Address", City, PhoneNumber, trim(Gender),
  Time_On_Hold <> '', Time_On_Air <> '', Time_Placed_On_Air <> '', "Date" <> ''
FROM "Caller Records";
SQL
)
[[ $row == "Ann Smith|5 Main Street|Salem|555 0100|Female|1|1|1|1" ]] || fail "the log has: $row"
grep -Eq '^3 *$' table.txt || fail "row 3 is not idle again"
