#include "callerdata/caller_data_sender.h"

#include "callerdata/entry_fields.h"
#include "core/console.h"
#include "core/text.h"
#include "serverlink/packet_text.h"

namespace lineweir {

std::string CallerDataSender::sender_name() const {
  const auto name = trimmed(console_.caller_data.OperatorName);
  return std::string(TextWrit_NullRemove(name.empty() ? console_.program.ClientId : name));
}

std::string CallerDataSender::caller_data_text(int line) {
  CallerRecord& record = console_.lines.CallerData(line);
  CallerDetails data = caller_data_of(sender_name(), record);
  for (std::size_t i = 0; i < data.fields.size(); ++i) {
    data.fields[i] = std::string(TextWrit_NullRemove(data.fields[i]));
    const CallerField field = entry_fields[i].field;
    const bool fixed = caller_fields[static_cast<std::size_t>(field)].width != 0;
    if (fixed) record.set(field, data.fields[i]);
  }
  return encode_caller_data(data);
}

void CallerDataSender::send(int line, const std::string& text) {
  const MainForm& form = console_.Lineweir;
  if (form.NetworkConnectionOption.checked) {
    console_.remote.serial_input().set_property(
        "CallerDataServer", {std::int64_t{line + 1}, std::int64_t{console_.program.GroupNumber}},
        text);
  } else if (form.WinsockMenu.checked) {
    ServerPacket packet = console_.server.packet(ClientCommand::CmdCallerData);
    packet.LineNo = field_byte(line);
    packet.set_buffer(text);
    console_.server.send(std::move(packet));
  }
}

}  // namespace lineweir
