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
namespace {

// Without blanks and code 0 at its ends.
std::string_view bare(std::string_view name) {
  constexpr std::string_view passed_over(" \0", 2);
  const std::size_t first = name.find_first_not_of(passed_over);
  if (first == std::string_view::npos) return {};
  return name.substr(first, name.find_last_not_of(passed_over) - first + 1);
}

// What is missing of the texts is empty.
std::string with_all_fields(std::string_view data) {
  std::string whole(data);
  if (!whole.empty()) whole.append(data_field_count, field_end);
  return whole;
}

}  // namespace

void ReceivedData::ReturnCallerData(std::string_view ReturnData, int ALinenumber) {
  take(with_all_fields(ReturnData), ALinenumber - 1);
  caller_data_.data_arrived(ALinenumber - 1);
}

void ReceivedData::SrvCallerData(std::string_view Buffer, int LineNo) {
  const std::string_view sender = Buffer.substr(0, Buffer.find(field_end));
  if (!Buffer.empty() && is_own_name(sender)) return caller_data_.data_arrived(LineNo);
  const bool told_again = !Buffer.empty() && sender.empty() && is_held(Buffer, LineNo);
  if (take(with_all_fields(Buffer), LineNo)) {
    CallerRecord& record = state_.lines.CallerData(LineNo);
    if (told_again) return caller_data_.data_arrived(LineNo);
    record.clear_data_fields();
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
  const CallerDetails details = decode_caller_data(text).value();
  // What the record was logged of is another caller's.
  if (!is_held(text, line)) record.set(CallerField::CallDate, "");
  for (std::size_t i = 0; i < entry_fields.size(); ++i) {
    // Through the record, whose fixed fields cut and pad.
    const CallerField field = entry_fields[i].field;
    record.set(field, details.fields[i]);
    form.labels_of(field)(line).caption = std::string(trimmed(record[field]));
  }
  line_texts_.renewed(line);
  return true;
}

// A server leaves the name away where it tells a user's own data again, for a console of his that
// has begun anew or whose row has lost them. One that holds them still keeps them.
bool ReceivedData::is_held(std::string_view text, int line) const {
  const auto details = decode_caller_data(text);
  return details && details->fields == caller_data_of({}, state_.lines.CallerData(line)).fields;
}

bool ReceivedData::is_own(std::string_view sender) const {
  return sender == data_sender_.sender_name();
}

bool ReceivedData::is_own_name(std::string_view sender) const {
  const std::string own = data_sender_.sender_name();
  return bare(sender) == bare(own);
}

}  // namespace lineweir
