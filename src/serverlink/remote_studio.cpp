#include "serverlink/remote_studio.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "base/integer16.h"
#include "base/text.h"
#include "callcontrol/modes.h"
#include "serverlink/held_objects.h"
#include "serverlink/line_events.h"
#include "serverlink/studio_groups.h"
#include "serverlink/studio_shape.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "wire/server_packet_codec.h"

namespace lineweir {
namespace {

using platform::RemoteValue;

constexpr std::size_t digits_of_a_line = 2;

// A member that returns nothing returns the empty text. Any other type is a Failure of number 13.
std::string text(const RemoteValue& value) {
  if (std::holds_alternative<std::monostate>(value)) return {};
  const std::string* characters = std::get_if<std::string>(&value);
  if (characters == nullptr) throw Failure(failure_number::type_mismatch, "Type mismatch");
  return *characters;
}

int number(const RemoteValue& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return integer16(*whole);
  return leading_number(text(value));
}

// The number that a line's pair of characters names; nothing where it is missing or no number.
std::optional<int> number_of_line(std::string_view numbers, std::size_t line) {
  const std::size_t place = digits_of_a_line * line;
  if (place + digits_of_a_line > numbers.size()) return std::nullopt;
  const std::string_view pair = trimmed(numbers.substr(place, digits_of_a_line));
  if (pair.empty() || !std::ranges::all_of(pair, is_digit)) return std::nullopt;
  return leading_number(pair);
}

std::vector<RemoteValue> present_group(const ConsoleState& state) {
  return {std::int64_t{state.program.GroupNumber}};
}

}  // namespace

RemoteStudio::RemoteStudio(ConsoleState& state, HeldObjects& objects, Modes& modes,
                           LineEvents& line_events, StudioShape& shape, StudioGroups& groups)
    : state_(state),
      objects_(objects),
      modes_(modes),
      line_events_(line_events),
      shape_(shape),
      groups_(groups) {}

void RemoteStudio::GetStudioStat() {
  guard(state_.trace, "DisplayOptionForm_GetStudioStat", [&] {
    shape_.GetStudioStat(
        text(objects_.serial_input().call("GetStudioStatus", present_group(state_))));
  });
}

void RemoteStudio::GetTheTimes() {
  guard(state_.trace, "DisplayOptionForm_GetTheTimes", [&] {
    shape_.GetTheTimes(text(objects_.serial_input().call("gettimes", present_group(state_))));
  });
}

void RemoteStudio::RefreshStudioNames() {
  guard(state_.trace, "Lineweir_RefreshStudioNames", [&] {
    groups_.show_names(decode_list(text(objects_.serial_input().call("GetStudioNames", {}))));
  });
}

void RemoteStudio::take_lines() {
  line_events_.take(text(objects_.serial_input().call("OutputSerialPort", present_group(state_))));
  // While it was called the user may have let the objects go.
  state_.lines.ThePhoneFlag =
      number(objects_.serial_input().call("GetDimType", present_group(state_)));
  modes_.follow_equipment();
  name_lines();
}

void RemoteStudio::name_lines() {
  MainForm& form = state_.Lineweir;
  const std::string numbers =
      text(objects_.serial_input().call("GetLineNumbers", present_group(state_)));
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    const auto number = number_of_line(numbers, static_cast<std::size_t>(line));
    const bool named = form.DimLineNumMenu.checked && number.has_value();
    form.LineNumb(line).caption = std::to_string(named ? *number : line + 1);
  }
}

}  // namespace lineweir
