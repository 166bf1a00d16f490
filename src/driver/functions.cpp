#include "driver/functions.h"

#include <array>
#include <functional>
#include <tuple>
#include <type_traits>

#include "callerdata/call_log_columns.h"
#include "core/bits.h"
#include "core/guard.h"
#include "core/window_caption.h"
#include "driver/handlers.h"
#include "driver/refusal.h"
#include "elements/names.h"
#include "serverlink/packet_text.h"

namespace lineweir::driver {
namespace {

using Arguments = std::vector<Json>;

struct Function {
  std::string_view name;
  std::function<std::optional<Json>(Console&, const Arguments&)> call;
};

template <class T>
T argument_of(const Json& value) {
  if constexpr (std::is_same_v<T, bool>) {
    return truth_of(value);
  } else if constexpr (std::is_same_v<T, int>) {
    return number_of(value);
  } else if constexpr (std::is_same_v<T, char>) {
    const std::string text = text_of(value);
    if (text.size() != 1) throw NotUnderstood("not one character: " + printed(value));
    return text.front();
  } else {
    return text_of(value);
  }
}

template <class T>
Json result_of(const T& value) {
  if constexpr (std::is_same_v<T, char>) {
    return text_value({&value, 1});
  } else if constexpr (std::is_arithmetic_v<T>) {
    return value;
  } else {
    return text_value(value);
  }
}

// A function of the console and of values, such as `[](Console&, int line) { ... }`.
template <class Callable, class Result, class... Values>
Function function(std::string_view name, Callable callable,
                  Result (Callable::*)(Console&, Values...) const) {
  return {name, [callable](Console& console, const Arguments& arguments) -> std::optional<Json> {
            if (arguments.size() != sizeof...(Values)) {
              throw NotUnderstood(std::to_string(sizeof...(Values)) + " arguments are wanted");
            }
            return [&]<std::size_t... I>(std::index_sequence<I...>)->std::optional<Json> {
              // Braces, so that the arguments are read from left to right.
              std::tuple<std::decay_t<Values>...> values{
                  argument_of<std::decay_t<Values>>(arguments[I])...};
              if constexpr (std::is_void_v<Result>) {
                callable(console, std::get<I>(values)...);
                return std::nullopt;
              } else {
                return result_of(callable(console, std::get<I>(values)...));
              }
            }
            (std::index_sequence_for<Values...>());
          }};
}

template <class Callable>
Function function(std::string_view name, Callable callable) {
  return function(name, callable, &Callable::operator());
}

// The value, or what a function of the system returns after it has reported its failure.
template <class T>
T or_reported(Console& console, std::string_view name, const std::optional<T>& value, T otherwise) {
  if (value) return *value;
  report_failure(console, name, Failure(failure_number::out_of_range, "Subscript out of range"));
  return otherwise;
}

// A call log with no rows; its last column is named as the user names it.
void CreateDatabase(Console& console, const std::string& file) {
  std::vector<platform::DatabaseColumn> columns;
  for (const CallLogColumn& column : call_log_columns) {
    const std::string_view name =
        column.name.empty() ? console.Lineweir.CaptionLabel(user_column).caption : column.name;
    columns.push_back({std::string(name), static_cast<int>(column.size)});
  }
  console.services.databases.create(file)->create_table(std::string(call_log_table), columns);
}

const std::vector<Function>& functions() {
  static const std::vector<Function> table = {
      function("GetBit",
               [](Console& c, char byte, int bit_number) {
                 return or_reported(c, "TextWrit_GetBit", get_bit(byte, bit_number), false);
               }),
      function("ByteToBits", [](Console&, char byte) { return byte_to_bits(byte); }),
      function("BitsToByte",
               [](Console& c, const std::string& bits) {
                 return or_reported(c, "TextWrit_BitsToByte", bits_to_byte(bits), '\0');
               }),
      function("ReturnByte", [](Console&, bool flag) { return return_byte(flag); }),
      function("NumToBool", [](Console&, const std::string& text) { return num_to_bool(text); }),
      function("GetCadence", [](Console& c, int line) { return c.rows.GetCadence(line); }),
      function("GetPhoneText", [](Console& c) { return GetPhoneText(c); }),
      function("SetStatusText", [](Console& c, int line) { c.rows.SetStatusText(line); }),
      function("HybridPictureSet",
               [](Console& c, int line, int color1, int color2) {
                 c.rows.HybridPictureSet(line, color1, color2);
               }),
      function("DrawMark", [](Console& c, int line) { c.rows.DrawMark(line); }),
      function("SetCiconPosition1", [](Console& c, int line) { c.rows.SetCiconPosition1(line); }),
      function("SetCiconPosition2", [](Console& c, int line) { c.rows.SetCiconPosition2(line); }),
      function("ShowMessage",
               [](Console& c, const std::string& text) { c.messages.ShowMessage(text); }),
      function("RedefineScreen", [](Console& c) { c.layout.RedefineScreen(); }),
      function("SetToRoot", [](Console& c, int rows) { c.window.SetToRoot(rows); }),
      function("SetDisplayOptions", [](Console& c) { c.display.SetDisplayOptions(); }),
      function("NewColumnSetup", [](Console& c) { c.display.NewColumnSetup(); }),
      function("PhoneCommand", [](Console& c, const std::string& word,
                                  int bank) { c.phone.PhoneCommand(word, bank); }),
      function("UCommand", [](Console& c, const std::string& word) { c.phone.UCommand(word); }),
      function("TextWrit_WriteTrace",
               [](Console& c, const std::string& line) { c.trace.WriteTrace(line); }),
      function("TextWrit_ReturnStudioGroupName",
               [](Console& c) { return TextWrit_ReturnStudioGroupName(c); }),
      function("TextWrit_RefreshColumnOrder", [](Console& c) { c.display.RefreshColumnOrder(); }),
      function("TextWrit_ZeroFill", [](Console&, const std::string& text,
                                       int width) { return TextWrit_ZeroFill(text, width); }),
      function("TextWrit_SizeEncode",
               [](Console&, int value) { return TextWrit_SizeEncode(value); }),
      function(
          "TextWrit_NullRemove",
          [](Console&, const std::string& text) { return std::string(TextWrit_NullRemove(text)); }),
      function("TextWrit_CheckWinsPort", [](Console& c) { c.server.TextWrit_CheckWinsPort(); }),
      function("CreateDatabase",
               [](Console& c, const std::string& file) { CreateDatabase(c, file); }),
      function("Comm1_OnComm",
               [](Console& c) { c.decoder.Comm1_OnComm(platform::comm_event_receive); }),
      function("Winsock1_DataArrival", [](Console& c) { c.server.Winsock1_DataArrival(); }),
  };
  return table;
}

}  // namespace

std::optional<Json> call_function(Session& session, const std::string& name,
                                  const std::vector<Json>& arguments) {
  Console& console = session.console();
  for (const Function& function : functions()) {
    if (!same_name(function.name, name)) continue;
    std::optional<Json> result;
    session.act([&] { result = function.call(console, arguments); });
    return result;
  }
  const auto handler = find_handler(console, name, arguments);
  if (!handler) throw NotUnderstood("no such function: " + on_one_line(name));
  session.act(handler);
  return std::nullopt;
}

}  // namespace lineweir::driver
