#!/usr/bin/env bash
# A real console with a caller on air, and practice started from its menu by keys alone: a show is
# begun, its first caller put on air, the show ended, and its page closed. Nothing of the real console
# has changed meanwhile: not its log, its settings, its plan, nor what goes over its line.
#
#   practice_end_to_end.sh FOLDER-OF-PROGRAMS
set -euo pipefail
bin=$1
source "$(dirname "$0")/real_window.sh"

# What the real console has, without what practice has.
real_files() {
  find . -maxdepth 1 -type f \( -name 'Writ.inf' -o -name 'calls.mdb*' -o -iname '*.txt' \
    -o -name '*.journal' -o -name '*.lwb' -o -name 'lineweir.ini' -o -name 'Drafts*' \) \
    ! -name lines.txt ! -name manager.txt ! -name studio.txt ! -name driver.txt ! -name show.txt |
    sort | xargs sha256sum
}

printf '%s\n' '1 call 2' > show.txt
"$bin/lineweir-studio" --script show.txt --ring-patience 0 --hold-patience 0 --link box \
  --log studio.log > studio.txt &
printf '%s\n' launch 'answer file "calls.mdb"' 'click DatabasePathMenuItem' \
  'serial Comm1 reply "M" "Line monitor ON"' 'click PortOn' 'click GreyScreenOption' \
  'click SaveSettingsMenu' | "$bin/lineweir-driver" --dir . > driver.txt

start_display
start_window_manager

LINEWEIR_COM1=$work/box timeout "$((150 * slower))" "${under[@]}" "$bin/lineweir" &
console=$!
await_row '^3 .* R$'
real=$(await_window '^Lineweir - ')
xdotool windowfocus --sync "$real" key 3
await_row '^3 *On Air'
before=$(real_files)
words=$(wc -l < studio.log)

choose_in_menu "$real" alt+c c
level=$(await_window '^PRACTICE - Practice Show$')
main=$(await_window '^PRACTICE - Lineweir - ')
[[ -f Practice/Writ.inf && -f Practice/Calls.mdb && -f Practice/MESSAGES.LWB ]] ||
  fail "the practice folder isn't whole"
pause_typing
xdotool windowfocus --sync "$level" key Return
await_no_window '^PRACTICE - Practice Show$'

# Its first caller is there after three seconds, on line 1.
pause 5
xdotool windowfocus --sync "$main" key 1
pause 3
xdotool windowfocus --sync "$main" key alt+w
page=$(await_window '^PRACTICE - Your Show$')
# Who has dialled a wrong number is answered, and doesn't count as a caller on air.
await_line Practice/Results.csv '^Easy,[^,]*,[0-9]*,[0-9]*,1,[01],' || fail "the show isn't kept: $(cat Practice/Results.csv)"
pause_typing
xdotool windowfocus --sync "$page" key Escape
await_no_window '^PRACTICE - Your Show$'

# No second one beside it.
choose_in_menu "$real" alt+c c
second=$(await_window '^PRACTICE$')
xdotool windowfocus --sync "$second" key Return
await_no_window '^PRACTICE$'

pause_typing
choose_in_menu "$main" alt+o x
await_no_window '^PRACTICE'

[[ $(real_files) == "$before" ]] || fail "practice has changed: $(diff <(echo "$before") <(real_files))"
[[ $(wc -l < studio.log) == "$words" ]] || fail "practice has sent something over the real line"
await_row '^3 *On Air'
[[ $(sqlite3 calls.mdb 'select count(*) from "Caller Records"' 2> /dev/null) == 0 ]] ||
  fail "practice has logged into the real log"

choose_in_menu "$real" alt+o x
close_with_caller_on_air
wait "$console" || fail "the console has ended with an error"
