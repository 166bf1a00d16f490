#include "driver/functions.h"

#include "base/bits.h"
#include "base/names.h"
#include "driver/callcontrol_functions.h"
#include "driver/callerdata_functions.h"
#include "driver/clock_functions.h"
#include "driver/function_table.h"
#include "driver/handlers.h"
#include "driver/refusal.h"
#include "driver/screen_functions.h"
#include "driver/serverlink_functions.h"
#include "state/guard.h"
#include "state/window_caption.h"
#include "wire/packet_text.h"

namespace lineweir::driver {
namespace {

// The value, or what a function of the system returns after it has reported its failure.
template <class T>
T or_reported(Console& console, std::string_view name, const std::optional<T>& value, T otherwise) {
  if (value) return *value;
  report_failure(console.trace, name,
                 Failure(failure_number::out_of_range, "Subscript out of range"));
  return otherwise;
}

std::vector<Function> general_functions() {
  return {
      function("GetBit",
               [](Console& c, char byte, int bit_number) {
                 return or_reported(c, "TextWrit_GetBit", get_bit(byte, bit_number), false);
               }),
      function("ByteToBits", [](Console&, char byte) { return byte_to_bits(byte); }),
      function("BitsToByte",
               [](Console& c, const std::string& bits) {
                 return or_reported(c, "TextWrit_BitsToByte", bits_to_byte(bits), '\0');
               }),
      function("ReturnByte",
               [](Console&, const Json& flag) {
                 // As a number a truth is -1.
                 return return_byte(flag.is_number() ? number_of(flag) == -1 : truth_of(flag));
               }),
      function("NumToBool", [](Console&, const std::string& text) { return num_to_bool(text); }),
      function("GetCadence", [](Console& c, int line) { return c.rows.GetCadence(line); }),
      function("GetPhoneText", [](Console& c) { return GetPhoneText(c); }),
      function("SetStatusText", [](Console& c, int line) { c.rows.SetStatusText(line); }),
      function("ShowMessage",
               [](Console& c, const std::string& text) { c.messages.ShowMessage(text); }),
      function("PhoneCommand", [](Console& c, const std::string& word,
                                  int bank) { c.phone.PhoneCommand(word, bank); }),
      function("UCommand", [](Console& c, const std::string& word) { c.phone.UCommand(word); }),
      function("TextWrit_WriteTrace",
               [](Console& c, const std::string& line) { c.trace.WriteTrace(line); }),
      function("TextWrit_ReturnStudioGroupName",
               [](Console& c) { return TextWrit_ReturnStudioGroupName(c); }),
      function("TextWrit_ZeroFill", [](Console&, const std::string& text,
                                       int width) { return TextWrit_ZeroFill(text, width); }),
      function("TextWrit_SizeEncode",
               [](Console&, int value) { return TextWrit_SizeEncode(value); }),
      function(
          "TextWrit_NullRemove",
          [](Console&, const std::string& text) { return std::string(TextWrit_NullRemove(text)); }),
      function("TextWrit_CheckWinsPort", [](Console& c) { c.server.TextWrit_CheckWinsPort(); }),
      function("Comm1_OnComm",
               [](Console& c) { c.services.comm1.on_comm(platform::comm_event_receive); }),
      function("Comm2_OnComm",
               [](Console& c) { c.services.comm2.on_comm(platform::comm_event_receive); }),
      function("SetFileSettings", [](Console& c) { c.settings.SetFileSettings(); }),
      function("Winsock1_Connect", [](Console& c) { c.services.winsock1.on_connect(); }),
      function("Winsock1_DataArrival", [](Console& c) { c.services.winsock1.on_data_arrival(); }),
  };
}

const std::vector<Function>& functions() {
  static const std::vector<Function> known = [] {
    std::vector<Function> all = general_functions();
    append_screen_functions(all);
    append_callcontrol_functions(all);
    append_callerdata_functions(all);
    append_serverlink_functions(all);
    append_clock_functions(all);
    return all;
  }();
  return known;
}

}  // namespace

std::optional<Json> call_function(Session& session, const std::string& name,
                                  const std::vector<Json>& arguments) {
  Console& console = session.console();
  const Function* same_named = nullptr;
  for (const Function& function : functions()) {
    if (!same_name(function.name, name)) continue;
    same_named = &function;
    if (function.arguments != arguments.size()) continue;
    std::optional<Json> result;
    session.act([&] { result = function.call(console, arguments); });
    return result;
  }
  if (same_named != nullptr) {
    throw NotUnderstood(std::to_string(same_named->arguments) + " arguments are wanted");
  }
  const auto handler = find_handler(console, name, arguments);
  if (!handler) throw NotUnderstood("no such function: " + on_one_line(name));
  session.act(handler);
  return std::nullopt;
}

}  // namespace lineweir::driver
