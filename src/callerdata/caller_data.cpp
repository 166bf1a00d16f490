#include "callerdata/caller_data.h"

#include "core/console.h"

namespace lineweir {

CallerDataEntry::CallerDataEntry(Console& console) : console_(console) {}

LogFieldFlags CallerDataEntry::all_fields_on() {
  LogFieldFlags flags;
  flags.fill(true);
  return flags;
}

void CallerDataEntry::show_for_line(int line) {
  console_.lines.CurrentDataLine = line;
  console_.Form4.caption = "Caller Data - Line " + std::to_string(line + 1);
  console_.Form4.show();
}

void CallerDataEntry::tell_data_cleared(int line) {
  const MainForm& form = console_.Lineweir;
  if (form.NetworkConnectionOption.checked) {
    console_.remote.serial_input().set_property(
        "CallerDataServer", {std::int64_t{line + 1}, std::int64_t{console_.program.GroupNumber}},
        std::string());
  } else if (form.WinsockMenu.checked) {
    ServerPacket packet = console_.server.packet(ClientCommand::CmdCallerData);
    packet.LineNo = field_byte(line);
    console_.server.send(packet);
  }
}

}  // namespace lineweir
