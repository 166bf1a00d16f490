#include <algorithm>

#include "base/iso_date.h"
#include "base/telephone_number.h"
#include "base/text.h"
#include "lines/equipment_kinds.h"
#include "server/caller_memory.h"
#include "server/caller_text.h"
#include "server/line_order.h"
#include "server/session_request.h"
#include "wire/caller_known.h"
#include "wire/group_elsewhere.h"
#include "wire/studio_texts.h"

namespace lineweir::server {
namespace {

constexpr std::size_t longest_profile = 8192;
constexpr std::string_view words_of_remote_next = "XRU";
constexpr std::string_view words_of_tones = "T";
// Callers are put on air, and locked there, in talent mode.
constexpr std::string_view words_of_talent = "NCL";
constexpr int tones_from = 20;
constexpr platform::Milliseconds gone_by{2000};

// What a command word takes beyond the frame's own needs.
std::optional<Right> right_of(const LineOrder& order, int kind) {
  if (order.kind != LineOrder::Kind::Word || order.word.empty()) return std::nullopt;
  const char letter = order.word.front();
  if (words_of_remote_next.find(letter) != std::string_view::npos) return Right::RemoteNext;
  if (words_of_tones.find(letter) != std::string_view::npos) return Right::Dial;
  // Where a producer's handset is the conference hybrid, the word takes a caller to it.
  const bool is_handset = letter == 'C' && is_of(kind, kinds_with_conference_handset);
  if (words_of_talent.find(letter) != std::string_view::npos && !is_handset) {
    return Right::StudioMode;
  }
  if (letter != 'P' && letter != 'O') return std::nullopt;
  if (order.line < 0 && leading_number(order.word.substr(1)) >= tones_from) return Right::Dial;
  if (server_decides(kind)) return std::nullopt;
  return letter == 'P' ? Right::MitelPhone1 : Right::MitelPhone2;
}

}  // namespace

const Session::Request* Session::request_of(std::uint8_t code) {
  using enum ClientCommand;
  static constexpr Request requests[] = {
      {CmdPasswordLogin, Needs::Nothing, &Session::check_password},
      {CmdConnectConsole, Needs::LetIn, &Session::register_console},
      {CmdLeaveGroup, Needs::LetIn, &Session::leave_group},
      {CmdLineCommand, Needs::Registered, &Session::order_line, std::nullopt, true},
      {CmdRequestStatus, Needs::Registered, &Session::tell_status},
      {CmdCallerData, Needs::Registered, &Session::take_caller_data, std::nullopt, false, true},
      {CmdFlashMessage, Needs::Registered, &Session::take_message, Right::MessagesAllowed},
      {CmdSetNextCall, Needs::Registered, &Session::set_next_call, std::nullopt, true},
      {CmdRequestGroupNames, Needs::LetIn, &Session::tell_group_names},
      {CmdRequestStudioStatus, Needs::LetIn, &Session::tell_studio_status},
      {CmdRequestTimes, Needs::Registered, &Session::tell_times},
      {CmdRequestLineNumbers, Needs::Registered, &Session::tell_line_numbers},
      {CmdDialDigit, Needs::Registered, &Session::dial_digit, Right::Dial, true, true},
      {CmdNextAction, Needs::Registered, &Session::act_on_next, std::nullopt, true},
      {CmdDialSeize, Needs::Registered, &Session::seize_line, Right::Dial, true, true},
      {CmdRequestPhones, Needs::Registered, &Session::tell_phones},
      {CmdSetMode, Needs::Registered, &Session::set_mode},
      {CmdSelectPhone, Needs::Registered, &Session::select_phone, std::nullopt, false, false, true},
      {CmdLoginCheck, Needs::Nothing, &Session::check_login},
      {CmdTimeRequest, Needs::Nothing, &Session::tell_time},
      {CmdUserProfile, Needs::LetIn, &Session::take_profile},
      {CmdRequestAccessRights, Needs::Nothing, &Session::tell_rights},
      {CmdRequestFirstUnblocked, Needs::Nothing, &Session::tell_first_open_group},
      {CmdAskCaller, Needs::Registered, &Session::tell_caller, Right::CallerDataAllowed},
      {CmdFlagCaller, Needs::Registered, &Session::flag_caller, Right::CallerFlagAllowed},
  };
  for (const Request& request : requests) {
    if (static_cast<std::uint8_t>(request.command) == code) return &request;
  }
  return nullptr;
}

void Session::register_console(const ServerPacket& packet) {
  Group* const wanted = services_.seats.find_group(packet.GroupNo);
  if (wanted == nullptr) return send_elsewhere(packet.GroupNo);
  if (!services_.accounts.has_rights(user, packet.GroupNo)) {
    return refuse(Refusal::NoRightsInGroup);
  }
  const std::uint8_t wanted_console = packet.Console == no_value ? 0 : packet.Console;
  if (wanted_console >= first_position_code) return refuse(Refusal::Malformed);
  console = wanted_console;
  rights = services_.accounts.rights(user, packet.GroupNo);
  since = services_.context.clock.now();
  tell_allowed_groups();
  services_.seats.join(*this, *wanted);
  tell_callers_later();
}

// A console that doesn't go there of itself shows it to the person.
void Session::send_elsewhere(int wanted) {
  const platform::StudioPlace* const place = services_.places.find(wanted);
  if (place == nullptr) return refuse(Refusal::OtherGroup);
  if (!services_.accounts.has_rights(user, wanted)) return refuse(Refusal::NoRightsInGroup);
  ServerPacket told = server_packet(ServerCommand::SrvGroupElsewhere, wanted,
                                    services_.context.letters.from_utf8(place->address));
  told.Bank = group_elsewhere_mark;
  send(told);
  services_.context.loop.schedule(gone_by,
                                  [this, alive = std::weak_ptr(alive_),
                                   text = place->name + " is served at " + place->address + "."] {
                                    if (alive.lock() && group == 0) tell_person(text);
                                  });
}

void Session::tell_callers_later() {
  services_.context.loop.schedule(
      callers_told_after, [this, alive = std::weak_ptr(alive_), registration = ++registrations_] {
        if (!alive.lock() || over_ || group == 0 || registration != registrations_) return;
        callers_told_too_early_ = !told_status;
        own_group().tell_callers(*this);
      });
}

void Session::tell_groups() {
  tell_group_names({});
  tell_allowed_groups();
}

void Session::tell_allowed_groups() {
  std::vector<std::string> names =
      names_of_groups(services_.groups, services_.places, services_.context.letters);
  for (std::size_t place = 0; place < names.size(); ++place) {
    if (!services_.accounts.has_rights(user, static_cast<int>(place) + 1)) names[place].clear();
  }
  std::erase_if(names, [](const std::string& name) { return name.empty() || name == "-"; });
  send(server_packet(ServerCommand::SrvAllowedGroups, no_value, encode_list(names)));
}

void Session::leave_group(const ServerPacket&) { services_.seats.leave_group(*this); }

void Session::order_line(const ServerPacket& packet) {
  Group& studio = own_group();
  const int kind = studio.options().kind;
  const auto order = line_order(packet, kind);
  if (!order) return refuse(Refusal::Malformed);
  if (order->line >= 0 && !studio.lines().exists(order->line)) return refuse(Refusal::OtherLine);
  const auto right = right_of(*order, kind);
  if (right && !allows(rights, *right)) return refuse_right(*right);
  hand_over(*order);
}

void Session::hand_over(const LineOrder& order) {
  const auto refusal = own_group().lines().obey(*this, order);
  if (refusal == Refusal::TooMany) return refuse_flood();
  if (refusal) refuse(*refusal);
}

void Session::tell_status(const ServerPacket&) { own_group().lines().tell_status(*this); }

// The clearing of a line is what its console does by itself.
void Session::take_caller_data(const ServerPacket& packet) {
  if (!packet.Buffer.empty() && !allows(rights, Right::CallerDataAllowed)) {
    return refuse_right(Right::CallerDataAllowed);
  }
  own_group().caller_data().take(*this, packet.LineNo, packet.Buffer);
}

void Session::take_message(const ServerPacket& packet) {
  if (!own_group().take_message(packet.Buffer)) refuse(Refusal::Malformed);
}

void Session::set_next_call(const ServerPacket& packet) {
  const bool is_none = packet.LineNo == no_value;
  if (!is_none && !own_group().lines().exists(packet.LineNo)) return refuse(Refusal::OtherLine);
  own_group().choose_next(*this, is_none ? -1 : packet.LineNo);
}

void Session::tell_group_names(const ServerPacket&) {
  send(server_packet(
      ServerCommand::SrvGroupNames, no_value,
      encode_list(names_of_groups(services_.groups, services_.places, services_.context.letters))));
}

void Session::tell_studio_status(const ServerPacket& packet) {
  const Group* const asked = services_.seats.find_group(packet.GroupNo);
  if (asked != nullptr && packet.GroupNo == group) return send(asked->studio_status());
  send(
      server_packet(ServerCommand::SrvStudioStatus, packet.GroupNo, std::string(no_studio_status)));
}

void Session::tell_caller(const ServerPacket& packet) {
  own_group().known_callers().answer(*this, clean_name(packet.Buffer, longest_caller_number));
}

void Session::flag_caller(const ServerPacket& packet) {
  const auto flagging = decode_caller_flagging(packet.AltInfo, packet.Buffer);
  if (!flagging) return refuse(Refusal::Malformed);
  const Letters& letters = services_.context.letters;
  const std::string of_caller = clean_name(flagging->number, longest_caller_number);
  const std::string key = telephone_key(of_caller);
  if (key.empty()) {
    refuse(Refusal::Malformed);
    return tell_person_of_refusal("a caller is known by a number of at least four digits");
  }
  const std::string today =
      iso_date_text(services_.context.clock.local(services_.context.clock.now()));
  if (!flagging->until.empty() && flagging->until < today) {
    refuse(Refusal::Malformed);
    return tell_person_of_refusal("the last day " + flagging->until + " is over already");
  }
  services_.context.memory.note({.key = key,
                                 .number = letters.to_utf8(of_caller),
                                 .flag = flagging->flag,
                                 .reason = letters.to_utf8(flagging->reason),
                                 .until = flagging->until,
                                 .by = user});
}

void Session::tell_times(const ServerPacket&) { send(own_group().times()); }

void Session::tell_line_numbers(const ServerPacket&) { send(own_group().line_numbers()); }

void Session::dial_digit(const ServerPacket& packet) {
  const auto order = digit_order(packet);
  if (!order) return refuse(Refusal::Malformed);
  hand_over(*order);
}

void Session::act_on_next(const ServerPacket& packet) {
  const char letter = packet.Buffer.size() == 1 ? packet.Buffer.front() : '\0';
  if (letter == 'N' && !allows(rights, Right::StudioMode)) return refuse_right(Right::StudioMode);
  if (own_group().next_call().act(*this, letter, packet.Bank)) return;
  if (!server_decides(own_group().options().kind)) return refuse(Refusal::Malformed);
}

// A line that a caller is on is seized already.
void Session::seize_line(const ServerPacket& packet) {
  const auto order = seize_order(packet, own_group().options().kind);
  if (!order) return refuse(Refusal::Malformed);
  const auto right = right_of(*order, own_group().options().kind);
  if (right && !allows(rights, *right)) return refuse_right(*right);
  if (own_group().lines().line(order->line).letter != 'F') return;
  hand_over(*order);
}

void Session::tell_phones(const ServerPacket&) { send(own_group().phone_names()); }

void Session::set_mode(const ServerPacket& packet) { screener = packet.AltInfo == 1; }

// The number of a telephone is that of its position.
void Session::select_phone(const ServerPacket& packet) {
  if (packet.AltInfo >= first_position_code) return refuse(Refusal::Malformed);
  console = packet.AltInfo;
}

void Session::tell_time(const ServerPacket&) { send(time_packet(services_.context)); }

void Session::take_profile(const ServerPacket& packet) {
  const std::size_t end_of_name = packet.Buffer.find(item_end);
  if (end_of_name == std::string::npos) return refuse(Refusal::Malformed);
  const std::string name = services_.context.letters.to_utf8(
      trimmed(std::string_view(packet.Buffer).substr(0, end_of_name)));
  if (name != user) return refuse(Refusal::OtherUser);
  std::string profile = packet.Buffer.substr(end_of_name + 1);
  if (profile.size() > longest_profile) return refuse(Refusal::Malformed);
  const platform::Account* const account = services_.accounts.find(user);
  if (account == nullptr) return refuse(Refusal::OtherUser);
  services_.accounts.save_profile(user, std::move(profile));
  learn_own_names(*services_.accounts.find(user));
}

}  // namespace lineweir::server
