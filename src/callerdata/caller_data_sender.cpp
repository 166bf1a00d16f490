#include "callerdata/caller_data_sender.h"

#include "base/text.h"
#include "forms/entry_fields.h"
#include "link/links.h"
#include "state/console_state.h"
#include "wire/packet_text.h"
#include "wire/server_packet_codec.h"

namespace lineweir {

std::string CallerDataSender::sender_name() const {
  const auto name = trimmed(state_.program.OperatorName);
  return std::string(TextWrit_NullRemove(name.empty() ? state_.program.ClientId : name));
}

std::string CallerDataSender::caller_data_text(int line) {
  CallerRecord& record = state_.lines.CallerData(line);
  CallerDetails data = caller_data_of(sender_name(), record);
  for (std::size_t i = 0; i < data.fields.size(); ++i) {
    data.fields[i] = std::string(TextWrit_NullRemove(data.fields[i]));
    if (entry_fields[i].width != 0) record.set(entry_fields[i].field, data.fields[i]);
  }
  return encode_caller_data(data);
}

bool CallerDataSender::send(std::string_view handler, int line, const std::string& text,
                            const std::function<bool()>& still_wanted) {
  StudioLink& link = links_.in_use();
  if (!link.locks_keys()) return link.caller_data(handler, line, text, still_wanted);
  // The offer to connect again says it too.
  if (!state_.messages.offers_reconnection()) state_.messages.ShowMessage(link.trouble());
  return false;
}

void CallerDataSender::tell_data_cleared(std::string_view handler, int line) {
  links_.in_use().caller_data(handler, line, "");
}

}  // namespace lineweir
