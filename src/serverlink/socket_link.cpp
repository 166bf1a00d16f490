#include "serverlink/socket_link.h"

#include <array>
#include <optional>
#include <string>

#include "lines/equipment_kinds.h"
#include "link/command_word.h"
#include "link/seat_message.h"
#include "serverlink/command_frame.h"
#include "serverlink/server_link.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {
namespace {

// What the two buttons ask of a server that decides. Without a value AltInfo is this console's
// number.
struct NextActionRule {
  bool talent;
  bool conference;
  std::optional<std::uint8_t> alt_info;
  std::uint8_t bank;
  std::string_view letter;
};

constexpr std::array next_action_rules = {
    NextActionRule{true, false, 65, bank_main, "N"},
    NextActionRule{false, false, 65, bank_main, "S"},
    NextActionRule{true, true, 66, bank_conference, "N"},
    NextActionRule{false, true, std::nullopt, bank_none, "A"},
};

// A last byte that is taken for a frame's pad is a letter in some alphabets: a blank keeps it.
std::string with_kept_end(std::string text) {
  if (text.ends_with('\xFF')) text += ' ';
  return text;
}

}  // namespace

bool SocketLink::send(std::string_view handler, ClientCommand command,
                      const std::function<void(ServerPacket& packet)>& fill) {
  return socket_trap(state_, handler, [&] {
    ServerPacket packet = server_.packet(command);
    if (fill) fill(packet);
    server_.send(packet);
  });
}

void SocketLink::command(std::string_view handler, std::string_view word, int bank) {
  socket_trap(state_, handler, [&] {
    const CommandContext context{state_.program.GroupNumber, state_.program.ConsoleNumber,
                                 state_.Lineweir.ScreenerMode.checked, state_.lines, state_.dial};
    if (const auto packet = command_frame(word, bank, context)) server_.send(*packet);
  });
}

void SocketLink::next_call(std::string_view handler, int line) {
  send(handler, ClientCommand::CmdSetNextCall, [&](ServerPacket& packet) {
    packet.LineNo = line == no_line ? no_value : field_byte(line);
  });
}

HandPick SocketLink::hand_pick() const {
  return server_decides(state_.lines.ThePhoneFlag) ? HandPick::RowWord : HandPick::ServerTold;
}

void SocketLink::next_action(std::string_view handler, NextAction action) {
  for (const NextActionRule& rule : next_action_rules) {
    if (rule.talent != action.talent || rule.conference != action.conference) continue;
    send(handler, ClientCommand::CmdNextAction, [&](ServerPacket& packet) {
      packet.AltInfo = rule.alt_info.value_or(packet.Console);
      packet.Bank = rule.bank;
      packet.set_buffer(std::string(rule.letter));
    });
  }
}

bool SocketLink::caller_data(std::string_view handler, int line, std::string_view text,
                             const std::function<bool()>& still_wanted) {
  return socket_trap(state_, handler, [&] {
    if (still_wanted && !still_wanted()) return;
    ServerPacket packet = server_.packet(ClientCommand::CmdCallerData);
    packet.LineNo = field_byte(line);
    packet.set_buffer(std::string(text));
    server_.send(std::move(packet));
  });
}

void SocketLink::ask_caller(std::string_view handler, std::string_view number) {
  guard(state_.trace, handler, [&] {
    ServerPacket packet = server_.packet(ClientCommand::CmdAskCaller);
    packet.set_buffer(std::string(number));
    server_.send(std::move(packet));
  });
}

bool SocketLink::flag_caller(std::string_view handler, int flag, std::string_view text) {
  return send(handler, ClientCommand::CmdFlagCaller, [&](ServerPacket& packet) {
    packet.AltInfo = field_byte(flag);
    packet.set_buffer(std::string(text));
  });
}

bool SocketLink::message(std::string_view handler, const SeatMessage& message) {
  const int group = state_.program.GroupNumber;
  bool sent = false;
  socket_trap(state_, handler, [&] {
    // Between two tries the console may have gone to another group, for which it wasn't written.
    if (state_.program.GroupNumber != group) return;
    ServerPacket packet = server_.packet(ClientCommand::CmdFlashMessage);
    packet.set_buffer(with_kept_end(encode_text_message({.back_color = message.back_color,
                                                         .fore_color = message.fore_color,
                                                         .text = with_sender(message)})));
    server_.send(std::move(packet));
    sent = true;
  });
  return sent;
}

void SocketLink::mode(std::string_view handler, bool producer) {
  // A session tells it as it begins.
  if (locks_keys()) return;
  send(handler, ClientCommand::CmdSetMode,
       [&](ServerPacket& packet) { packet.AltInfo = producer ? 1 : 0; });
}

void SocketLink::phone(std::string_view handler, int number) {
  send(handler, ClientCommand::CmdSelectPhone,
       [&](ServerPacket& packet) { packet.AltInfo = field_byte(number); });
}

void SocketLink::phone_names() { server_.send(server_.packet(ClientCommand::CmdRequestPhones)); }

void SocketLink::line_names(std::string_view handler) {
  guard(state_.trace, handler, [&] {
    ServerPacket packet = server_.packet(ClientCommand::CmdRequestLineNumbers);
    packet.AltInfo = no_value;
    server_.send(packet);
  });
}

void SocketLink::seize(std::string_view handler, int line, int bank) {
  send(handler, ClientCommand::CmdDialSeize, [&](ServerPacket& packet) {
    packet.LineNo = field_byte(line);
    packet.Bank = field_byte(bank);
  });
}

bool SocketLink::leave_group(std::string_view handler) {
  const bool told = send(handler, ClientCommand::CmdLeaveGroup, nullptr);
  if (told) state_.services.loop.yield();
  return told;
}

GroupEntry SocketLink::enter_group() {
  state_.login.SessionBegun = false;
  state_.login.BetweenGroups = true;
  const bool begun = on_enter_group && on_enter_group();
  return begun ? GroupEntry::EnteredBySession : GroupEntry::NotEntered;
}

bool SocketLink::locks_keys() const {
  if (!silence.empty() || state_.login.BetweenGroups) return true;
  // What a server gets of somebody whom it hasn't let in is lost.
  const bool connected = state_.services.winsock1.state() == platform::socket_connected;
  return connected && !state_.login.SessionBegun;
}

void SocketLink::give_way(bool was_chosen) {
  platform::ClientSocket& socket = state_.services.winsock1;
  if (socket.state() != platform::socket_closed) socket.close();
  // What a server has announced concerns the one who listens to it.
  state_.Lineweir.ShutDownTimer.enabled = false;
  state_.Lineweir.timForceGroupChange.enabled = false;
  if (was_chosen) state_.messages.withdraw_offer();
}

void SocketLink::let_go() { give_way(true); }

std::string_view SocketLink::trouble() const {
  if (!silence.empty()) return silence;
  const bool connected = state_.services.winsock1.state() == platform::socket_connected;
  if (!connected) return "There is no link: the server isn't connected.";
  if (!state_.login.SessionBegun) return "There is no link: the server hasn't let this user in.";
  return {};
}

std::string_view SocketLink::standing() const { return state_.login.ServerNow; }

void SocketLink::leave() { server_.send(server_.packet(ClientCommand::CmdLeaveGroup)); }

bool SocketLink::keeps_profiles() const { return !server_decides(state_.lines.ThePhoneFlag); }

void SocketLink::keep_profile(std::string_view block) {
  ServerPacket packet = server_.packet(ClientCommand::CmdUserProfile);
  packet.set_buffer(std::string(block));
  server_.send(std::move(packet));
}

}  // namespace lineweir
