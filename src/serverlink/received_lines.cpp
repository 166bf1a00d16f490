#include "serverlink/received_lines.h"

#include "base/text.h"
#include "boxlink/line_steps.h"
#include "callcontrol/next_caller.h"
#include "callcontrol/phone_command.h"
#include "callerdata/known_callers.h"
#include "callerdata/received_data.h"
#include "lines/equipment_kinds.h"
#include "serverlink/line_events.h"
#include "serverlink/reply_code.h"
#include "serverlink/server_alive.h"
#include "serverlink/server_link.h"
#include "state/console_state.h"

namespace lineweir {
namespace {

constexpr std::uint8_t conference = 1;

// A line that is reported so has no caller.
bool is_nobodys(char letter) { return letter == 'F' || letter == busy_letter; }

}  // namespace

ReceivedLines::ReceivedLines(ConsoleState& state, ServerLink& server, PhoneCommands& phone,
                             ReceivedData& received_data, NextCaller& next_caller,
                             LineSteps& line_steps, LineEvents& line_events,
                             KnownCallers& known_callers)
    : state_(state),
      phone_(phone),
      received_data_(received_data),
      next_caller_(next_caller),
      line_steps_(line_steps),
      line_events_(line_events),
      known_callers_(known_callers) {
  using enum ServerCommand;
  server.handle(SrvFullStatus, [this](const auto& packet) { this->SrvFullStatus(packet); });
  server.handle(SrvLineStatus, [this](const auto& packet) { this->SrvLineStatus(packet); });
  server.handle(SrvCallerData, [this](const auto& packet) { this->SrvCallerData(packet); });
  server.handle(SrvNextCall, [this](const auto& packet) { this->SrvNextCall(packet); });
}

void ReceivedLines::SrvFullStatus(const ServerPacket& packet) {
  forget_known_where_free(packet.Buffer);
  line_events_.apply_soon(packet.Buffer);
  state_.login.LastReplyCode = reply_full_status;
  hear_running_server(state_);
}

void ReceivedLines::SrvLineStatus(const ServerPacket& packet) {
  if (packet.Buffer.starts_with('U')) return phone_.UCommand(packet.Buffer);
  if (packet.LineNo == no_value) {
    forget_known_where_free(packet.Buffer);
    return line_events_.apply_soon(packet.Buffer);
  }
  if (!has_line(packet)) return;
  std::string item = packet.Buffer + zero_filled(packet.LineNo, 2);
  if (item.size() != status_item_length) return;
  if (is_nobodys(item.front())) known_callers_.forget(packet.LineNo);
  item.front() = reported_letter_of(packet, server_decides(state_.lines.ThePhoneFlag));
  line_events_.apply_item_soon(packet.LineNo, item);
}

void ReceivedLines::forget_known_where_free(std::string_view status_text) {
  for (std::size_t place = 0; place < status_text.size(); place += status_item_length) {
    if (is_nobodys(status_text[place])) {
      known_callers_.forget(static_cast<int>(place / status_item_length));
    }
  }
}

void ReceivedLines::SrvCallerData(const ServerPacket& packet) {
  if (!has_line(packet)) return;
  // The call whose end came before is logged with what its row still shows, and the data of the
  // next one aren't cleared with it.
  line_events_.apply_change_of(packet.LineNo);
  if (!packet.Buffer.empty()) count_as_screened(packet.LineNo);
  received_data_.SrvCallerData(packet.Buffer, packet.LineNo);
  if (!packet.Buffer.empty()) state_.login.LastReplyCode = reply_caller_data;
}

void ReceivedLines::count_as_screened(int line) {
  const char letter = state_.lines.StatusLetter(line);
  if (letter != held_letter || !ready_is_held_with_data(state_.lines.ThePhoneFlag)) return;
  const LineReport report{"Lineweir_WinsTimer_Timer", line, ready_letter, letter,
                          *look_of(ready_letter)};
  state_.lines.StatusLetter(line) = ready_letter;
  using enum LineStep;
  for (const LineStep step : {StampHold, CloseAir, RunClock, ShowText, ShowRowOrNext}) {
    line_steps_.run(RuleStep(step), report);
  }
  if (state_.lines.ClockBase(line).empty()) line_steps_.run(RuleStep(BaseNow), report);
}

void ReceivedLines::SrvNextCall(const ServerPacket& packet) {
  if (packet.GroupNo != state_.program.GroupNumber) return;
  // A server tells it last of all that it has to tell of the callers.
  known_callers_.told_all_lines();
  if (packet.LineNo == no_value) {
    // A letter that came before ends the present choice as the console's own rule does, after which
    // it chooses anew.
    line_events_.apply_change_of(state_.lines.TheNextCall);
    state_.lines.TheNextCall = no_line;
  } else {
    // A letter that came before the choice must not end it.
    line_events_.apply_change_of(packet.LineNo);
    next_caller_.pin(packet.LineNo);
    // A choice among the lines that this seat doesn't show is one all the same: it makes no other.
    const bool is_not_shown = !has_line(packet) && packet.LineNo < lines_of_large_layout;
    if (is_not_shown) state_.lines.NextCallSet = true;
  }
}

bool ReceivedLines::has_line(const ServerPacket& packet) const {
  return packet.LineNo < state_.lines.LineCount;
}

char reported_letter_of(const ServerPacket& packet, bool server_decides) {
  char letter = packet.Buffer.front();
  if (letter == 'P') {
    const auto position = [](std::uint8_t number) {
      return static_cast<char>(first_position_code + number);
    };
    if (packet.AltInfo < first_position_code) letter = position(packet.AltInfo);
    if (server_decides && packet.Console < first_position_code) letter = position(packet.Console);
  } else if (letter == 'N' && (packet.AltInfo == conference || packet.Bank == conference)) {
    letter = 'C';
  }
  return letter;
}

}  // namespace lineweir
