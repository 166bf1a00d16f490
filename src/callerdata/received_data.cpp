#include "callerdata/received_data.h"

#include "base/text.h"
#include "callerdata/caller_data.h"
#include "callerdata/caller_data_sender.h"
#include "callerdata/line_texts.h"
#include "forms/entry_fields.h"
#include "state/console_state.h"
#include "wire/packet_text.h"
#include "wire/server_packet_codec.h"

namespace lineweir {

void ReceivedData::ReturnCallerData(std::string_view ReturnData, int ALinenumber) {
  take(ReturnData, ALinenumber - 1);
  caller_data_.data_arrived(ALinenumber - 1);
}

void ReceivedData::SrvCallerData(std::string_view Buffer, int LineNo) {
  if (take(Buffer, LineNo)) {
    CallerRecord& record = state_.lines.CallerData(LineNo);
    for (const CallerFieldRule& rule : entry_fields) record.set(rule.field, "");
  }
  caller_data_.data_arrived(LineNo);
}

bool ReceivedData::take(std::string_view text, int line) {
  MainForm& form = state_.Lineweir;
  CallerRecord& record = state_.lines.CallerData(line);
  if (text.empty()) {
    for (const CallerFieldRule& rule : entry_fields) {
      if (rule.log.from == LoggedFrom::Row) form.labels_of(rule.field)(line).caption = "";
    }
    return false;
  }
  if (is_own(text.substr(0, text.find(field_end)))) return false;
  const auto details = decode_caller_data(text);
  if (!details) {
    throw Failure(failure_number::invalid_argument, "Caller data with fields missing");
  }
  for (std::size_t i = 0; i < entry_fields.size(); ++i) {
    // Through the record, whose fixed fields cut and pad.
    const CallerField field = entry_fields[i].field;
    record.set(field, details->fields[i]);
    form.labels_of(field)(line).caption = record[field];
  }
  line_texts_.renewed(line);
  return true;
}

bool ReceivedData::is_own(std::string_view sender) const {
  return sender == data_sender_.sender_name();
}

}  // namespace lineweir
