#!/usr/bin/env bash
# The disk of the call log runs full during a show in the real window: the show goes on, the user is
# told, and the call that waited is in the log as soon as there is room again.
#
#   full_disk_end_to_end.sh FOLDER-OF-PROGRAMS
#
# The disk is a small one in memory, which only this process and its children see.
set -euo pipefail
bin=$1
if [[ -z ${LINEWEIR_OWN_MOUNTS:-} ]]; then
  export LINEWEIR_OWN_MOUNTS=1
  for way in '--mount' '--mount --map-root-user'; do
    # shellcheck disable=SC2086  # Words of options.
    unshare $way true 2> /dev/null && exec unshare $way "$0" "$@"
  done
  echo 'full disk end to end: no mounts of its own are allowed here'
  exit 77
fi
source "$(dirname "$0")/real_window.sh"

told() { find_window '^Lineweir$' > /dev/null; }
calls() { sqlite3 -readonly disk/calls.mdb "SELECT $1 FROM \"Caller Records\""; }
logged() { [[ $(calls 'count(*)') == "$1" ]]; }

mkdir disk
mount -t tmpfs -o size=512k lineweir disk
# The console ends before its disk does.
trap 'kill $(jobs -p) 2> /dev/null || true; wait; umount disk; rm -rf "$work"' EXIT

printf '%s\n' '1 call 2' '2 call 4' > show.txt
"$bin/lineweir-studio" --script show.txt --ring-patience 0 --hold-patience 0 --link box \
  --log studio.log > studio.txt &
printf '%s\n' launch 'answer file "disk/calls.mdb"' 'click DatabasePathMenuItem' \
  'click MitelPhone1' 'click ScreenerMode' 'serial Comm1 reply "M" "Line monitor ON"' \
  'click PortOn' 'click SaveSettingsMenu' | "$bin/lineweir-driver" --dir . > driver.txt

start_display
LINEWEIR_COM1=$work/box "$bin/lineweir" &
console=$!
# A caller has waited once the row's clock has gone on.
await_row '^3 .*0:00:0[1-9].* R$'
main=$(await_window 'Lineweir - ')
press_until_logged "$main" a 'item P02'
form=$(await_window 'Caller Data - Line 3')
xdotool windowfocus --sync "$form"
# The telephone number comes first where a log is chosen.
xdotool key --delay 20 Tab
xdotool type --delay 20 'Ann Smith'
xdotool key --delay 20 Return Return Return Return Return Return Return Return Return Return
await_no_window 'Caller Data - Line 3'

dd if=/dev/zero of=disk/filler bs=4k 2> disk.txt && fail 'the disk never runs full'
pause_typing
press_until_logged "$main" d 'item F02'
await_success told || fail 'nobody is told of the full disk'
logged 0 || fail 'a full disk has taken a call'
press_until_logged "$main" a 'word P04'

[[ -z ${LINEWEIR_PICTURE:-} ]] || scrot "$LINEWEIR_PICTURE"
rm disk/filler
await_success logged 1 || fail 'the call that waited has not come into the log'
[[ $(calls '"Caller Name"') == 'Ann Smith' ]] || fail "the log has: $(calls '*')"
kill -0 "$console" || fail 'the console has ended'
