#!/usr/bin/env bash
# Tries includes that go against the direction of the layers, and some that go with it.
#
# tests/layers_test.sh BUILD-FOLDER COMPILER
#
# A forbidden header must be there for some layer, as one that isn't would be refused by all.
set -euo pipefail

build=$1
compiler=$2

# includes LAYER HEADER: whether a file of the layer can include the header.
includes() {
  local folders=()
  local folder
  while read -r folder; do
    [[ -n $folder ]] && folders+=(-I "$folder")
  done < "$build/layers/$1"
  [[ ${#folders[@]} -gt 0 ]] || { echo "the layer $1 sees no folder"; exit 1; }
  echo "#include \"$2\"" | "$compiler" -std=c++20 -fsyntax-only -x c++ "${folders[@]}" - 2> "$errors"
}

errors=$(mktemp)
trap 'rm -f "$errors"' EXIT
failed=0

# exists HEADER: whether any layer can include it. A build without the desktop has nothing of it.
exists() {
  local folder
  [[ $1 =~ ^(desktop/|Q) && ! -e $build/layers/lineweir_desktop ]] && return
  while read -r folder; do
    [[ -n $folder && -e $folder/$1 ]] && return
  done < <(sort -u "$build"/layers/*)
  return 1
}

tried=0
while read -r layer header; do
  tried=$((tried + 1))
  if ! exists "$header"; then
    echo "no layer has $header, which $layer must not include"
    failed=1
  fi
  if includes "$layer" "$header"; then
    echo "$layer can include $header, and must not"
    failed=1
  elif ! grep -q "$header: No such file" "$errors"; then
    echo "$layer refuses $header for another reason:"
    cat "$errors"
    failed=1
  fi
done << 'FORBIDDEN'
lineweir_base elements/label.h
lineweir_lines wire/server_packet_codec.h
lineweir_wire elements/form.h
lineweir_elements forms/main_form.h
lineweir_forms state/console_state.h
lineweir_forms platform/services.h
lineweir_state link/links.h
lineweir_state screen/row_display.h
lineweir_link serverlink/socket_link.h
lineweir_clocks screen/screen_layout.h
lineweir_screen callerdata/call_log.h
lineweir_screen callcontrol/modes.h
lineweir_callerdata serverlink/server_link.h
lineweir_callerdata callcontrol/phone_command.h
lineweir_callcontrol boxlink/serial_link.h
lineweir_callcontrol serverlink/command_frame.h
lineweir_boxlink callcontrol/modes.h
lineweir_boxlink serverlink/remote_session.h
lineweir_messages screen/row_display.h
lineweir_serverlink core/console.h
lineweir_core platform/sqlite/connection.h
lineweir_core desktop/main_window.h
lineweir_core QWidget
lineweir_core practice/practice_show.h
lineweir_practice desktop/main_window.h
lineweir_practice QWidget
lineweir_scripted core/console.h
lineweir_asio server/server.h
lineweir_server platform/asio/asio_loop.h
lineweir_server serverd/configuration.h
lineweir_server core/console.h
lineweir_server platform/sqlite_store/sqlite_store.h
lineweir_server platform/postgres_store/postgres_store.h
lineweir_postgres platform/postgres_store/store_session.h
lineweir_postgres platform/asio/asio_loop.h
lineweir_transfer platform/sqlite_store/store_rows.h
lineweir_sqlite_store platform/postgres_store/whole_database.h
lineweir_adminlink server/accounts.h
lineweir_admin_lib server/accounts.h
FORBIDDEN

while read -r layer header; do
  if ! includes "$layer" "$header"; then
    echo "$layer can't include $header, and must:"
    cat "$errors"
    failed=1
  fi
done << 'ALLOWED'
lineweir_lines base/text.h
lineweir_state forms/main_form.h
lineweir_serverlink boxlink/line_steps.h
lineweir_core serverlink/server_link.h
lineweir_practice core/console.h
lineweir_practice studio/boxed_exchange.h
ALLOWED

[[ $tried -ge 30 ]] || { echo "only $tried forbidden includes were tried"; failed=1; }
exit "$failed"
