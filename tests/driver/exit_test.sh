#!/bin/sh
# exit_test.sh STATUS WORDS COMMAND...: the command ends with that status and says these words.
wanted=$1 words=$2
shift 2
told=$("$@" 2>&1)
status=$?
if [ "$status" != "$wanted" ]; then
  echo "ended with $status in place of $wanted"
elif ! printf '%s' "$told" | grep -qF -e "$words"; then
  echo "didn't say: $words"
else
  exit 0
fi
printf '%s\n' "$told"
exit 1
