#!/usr/bin/env bash
# A whole call in the real window, worked with real keys against the simulated studio: it rings, is
# answered, its caller typed in, taken to air and dropped; the sqlite3 program finds it in the log.
#
#   call_log_end_to_end.sh FOLDER-OF-PROGRAMS
set -euo pipefail
bin=$1
source "$(dirname "$0")/real_window.sh"

printf '%s\n' '1 call 2' > show.txt
"$bin/lineweir-studio" --script show.txt --ring-patience 0 --hold-patience 0 --link box \
  --log studio.log > studio.txt &
# A producer with a handset, whose log is calls.mdb.
printf '%s\n' launch 'answer file "calls.mdb"' 'click DatabasePathMenuItem' \
  'click MitelPhone1' 'click ScreenerMode' 'serial Comm1 reply "M" "Line monitor ON"' \
  'click PortOn' 'click SaveSettingsMenu' | "$bin/lineweir-driver" --dir . > driver.txt

start_display

LINEWEIR_COM1=$work/box timeout "$((60 * slower))" "${under[@]}" "$bin/lineweir" &
console=$!
# A caller has waited once the row's clock has gone on.
await_row '^3 .*0:00:0[1-9].* R$'
main=$(await_window "Lineweir - ")
press_until_logged "$main" a 'word P02'
await_studio 'item P02'
form=$(await_window "Caller Data - Line 3")
xdotool windowfocus --sync "$form"
# The telephone number comes first where a log is chosen.
xdotool type --delay 20 '555 0100'
xdotool key --delay 20 Return
xdotool type --delay 20 'Ann Smith'
xdotool key --delay 20 Return
xdotool type --delay 20 '5 Main Street'
xdotool key --delay 20 Return
xdotool type --delay 20 'Salem'
xdotool key --delay 20 Return Return Return Return f Return Return Return
await_no_window "Caller Data - Line 3"
pause_typing
# Ready; then as the host to the main hybrid, and off the air again.
press_until_logged "$main" e 'item S02'
await_row '^3 *Next .* S$'
choose_in_menu "$main" alt+c m t
await_window 'Lineweir - Talent' > /dev/null
xdotool windowfocus --sync "$main" key n
await_row '^3 *On Air *0:00:0[1-9].* N$'
xdotool windowfocus --sync "$main" key d
await_row '^3 *$'
choose_in_menu "$main" alt+o x
wait "$console" || fail "the console has ended with an error"

row=$(sqlite3 calls.mdb << 'SQL'
SELECT "Caller Name", "Street Address", City, PhoneNumber, trim(Gender),
  Time_On_Hold <> '', Time_On_Air <> '', Time_Placed_On_Air <> '', "Date" <> ''
FROM "Caller Records";
SQL
)
[[ $row == "Ann Smith|5 Main Street|Salem|555 0100|Female|1|1|1|1" ]] || fail "the log has: $row"
