#!/usr/bin/env bash
# Studios spread over four servers with one PostgreSQL database, on this machine: a line of figures
# for each server, as server_load prints them, and what the database used beside them.
#
#   spread_load.sh FOLDER-OF-PROGRAMS [SEATS [GROUPS [CHANGES [SECONDS]]]]
#
# SEATS and GROUPS are of each server; CHANGES is how many a second in each group.
set -euo pipefail

programs=$1
seats=${2:-1000}
groups=${3:-50}
changes=${4:-4}
seconds=${5:-10}
servers=4

postgres=$(dirname "$(find /usr/lib/postgresql -name initdb | sort -V | tail -1)")
work=$(mktemp -d)
as=()
if [[ $EUID -eq 0 ]]; then
  as=(runuser -u nobody --)
  chown nobody "$work"
fi
finish() {
  "${as[@]}" "$postgres/pg_ctl" -D "$work/data" -m immediate stop > /dev/null 2>&1 || true
  rm -rf "$work"
}
trap finish EXIT

"${as[@]}" "$postgres/initdb" -D "$work/data" -E UTF8 --locale=C --auth=trust -U lineweir > /dev/null
"${as[@]}" "$postgres/pg_ctl" -D "$work/data" -l "$work/log" -w start \
  -o "-c listen_addresses= -c unix_socket_directories='$work'" > /dev/null
"${as[@]}" "$postgres/createdb" -h "$work" -U lineweir lineweir
store="postgresql://lineweir@/lineweir?host=$work"

# Of the database's processes that have ended: each server has its own.
database_seconds() {
  local postmaster
  postmaster=$(head -1 "$work/data/postmaster.pid")
  awk -v a_second="$(getconf CLK_TCK)" '{ print int(($14 + $15 + $16 + $17) / a_second) }' \
    "/proc/$postmaster/stat"
}

printf '%-8s %6s %7s %8s %9s %9s %9s %10s %10s\n' '' seats groups frames/s 'screens s' 'p50 ms' \
  'p99 ms' processor memory
before=$(database_seconds)
loads=()
for ((i = 0; i < servers; ++i)); do
  "$programs/server_load" "$programs/lineweir-server" "$programs/lineweir-admin" "$seats" "$groups" \
    "$changes" "$seconds" plain "$store" $((i * groups + 1)) &
  loads+=("$!")
  # The first one makes the user.
  if ((i == 0)); then sleep 2; fi
done
for load in "${loads[@]}"; do wait "$load"; done
echo "database: $(($(database_seconds) - before)) s of a processor"
