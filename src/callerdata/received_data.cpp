#include "callerdata/received_data.h"

#include "callerdata/entry_fields.h"
#include "core/console.h"
#include "core/text.h"
#include "serverlink/packet_text.h"

namespace lineweir {

ReceivedData::ReceivedData(Console& console) : console_(console) {
  console.server.handle(ServerCommand::SrvCallerData, [this](const ServerPacket& packet) {
    SrvCallerData(packet.Buffer, packet.LineNo);
  });
}

void ReceivedData::ReturnCallerData(std::string_view ReturnData, int ALinenumber) {
  take(ReturnData, ALinenumber - 1);
  console_.caller_data.data_arrived(ALinenumber - 1);
}

void ReceivedData::SrvCallerData(std::string_view Buffer, int LineNo) {
  if (take(Buffer, LineNo)) {
    CallerRecord& record = console_.lines.CallerData(LineNo);
    for (const EntryField& field : entry_fields) record.set(field.field, "");
  }
  console_.caller_data.data_arrived(LineNo);
}

bool ReceivedData::take(std::string_view text, int line) {
  MainForm& form = console_.Lineweir;
  CallerRecord& record = console_.lines.CallerData(line);
  if (text.empty()) {
    form.LineName(line).caption = "";
    form.LineCity(line).caption = "";
    form.LineComments(line).caption = "";
    return false;
  }
  if (is_own(text.substr(0, text.find(field_end)))) return false;
  const auto details = decode_caller_data(text);
  if (!details) {
    throw Failure(failure_number::invalid_argument, "Caller data with fields missing");
  }
  for (std::size_t i = 0; i < entry_fields.size(); ++i) {
    // Through the record, whose fixed fields cut and pad.
    record.set(entry_fields[i].field, details->fields[i]);
    form.column_labels(entry_fields[i].column)(line).caption = record[entry_fields[i].field];
  }
  return true;
}

bool ReceivedData::is_own(std::string_view sender) const {
  return sender == console_.data_sender.sender_name();
}

}  // namespace lineweir
