#include "server/server_steps.h"

#include <algorithm>
#include <limits>

#include "base/telephone_number.h"
#include "server/session.h"
#include "wire/caller_known.h"
#include "wire/password_scramble.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;

constexpr int places = 5;
constexpr int groups = 3;
constexpr platform::Milliseconds longest_backlog = 30s;

constexpr const char* users[] = {"host", "screener", "only2", "nobody", ""};
constexpr const char* numbers[] = {"212 555 0100", "(212) 555-0100", "0100"};
constexpr const char* words[] = {"F00", "H01", "S02", "N03", "C04", "L03", "P01",
                                 "O02", "P15", "O15", "B00", "F03", "N12"};

}  // namespace

ServerSteps::ServerSteps(std::span<const std::uint8_t> bytes)
    : bytes_(bytes), room_(options_of(bytes.empty() ? std::uint8_t{0} : bytes[0])) {
  next();
  note_missing_lines(room_.options);
  places_.resize(places);
  for (Place& place : places_) connect(place);
}

ServerSteps::~ServerSteps() = default;

ServerOptions ServerSteps::options_of(std::uint8_t byte) {
  ServerOptions options;
  for (int number = 1; number <= groups; ++number) {
    GroupOptions group;
    group.number = number;
    group.name = "Studio " + std::to_string(number);
    options.groups.push_back(group);
  }
  options.groups[0].kind = 1 + byte % 4;
  options.groups[1].lines = (byte & 4U) != 0 ? 20 : 10;
  options.groups[1].missing_lines = {3};
  if ((byte & 8U) != 0) options.fixed_seats = {{"10.0.0.2", "host"}};
  // Smaller than what connects, so that places are missed.
  options.seats = (byte & 16U) != 0 ? places - 1 : 100;
  if ((byte & 32U) != 0) options.address = "10.0.0.9:5000";
  if ((byte & 64U) != 0) options.retention = {1, platform::Store::Forgetting::Calls};
  return options;
}

bool ServerSteps::play() {
  while (!bytes_.empty() && fault_.empty()) {
    take_step();
    look();
  }
  if (fault_.empty()) end();
  return fault_.empty();
}

std::uint8_t ServerSteps::next() {
  if (bytes_.empty()) return 0;
  const std::uint8_t byte = bytes_.front();
  bytes_ = bytes_.subspan(1);
  return byte;
}

std::string ServerSteps::text() {
  const std::size_t wanted = next();
  const std::size_t length = std::min(wanted, bytes_.size());
  const std::string taken(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(length));
  bytes_ = bytes_.subspan(length);
  return taken;
}

void ServerSteps::take_step() {
  const std::uint8_t step = next();
  Place& place = places_[step / 16 % places];
  switch (step % 16) {
    case 0:
      return connect(place);
    case 1:
      return log_in(place);
    case 2:
      // The beginning of a frame that was sent before makes any other of what comes now.
      if (!place.sent.text().empty()) note_leaving(place);
      place.sent = {};
      place.console->group = 1 + below(groups);
      return place.console->join(place.console->group, below(4));
    case 3:
    case 4:
    case 5:
      return send_frame(place, true);
    case 6:
      return send_frame(place, false);
    case 7:
      send(place, place.rest);
      return place.rest.clear();
    case 8:
      return send_record(place);
    case 9:
      return send(place, text());
    case 10:
    case 11:
      return work_exchange();
    case 12:
      return room_.wait(platform::Milliseconds(next() * next()));
    case 13:
      return work_store();
    case 14:
      if (below(4) == 0) return reconfigure();
      if (below(8) == 0) return restart();
      if (below(3) == 0) return hear_of_others();
      return place.console->stop_reading();
    default:
      return place.console->hang_up();
  }
}

void ServerSteps::connect(Place& place) {
  constexpr const char* peers[] = {"10.0.0.1", "10.0.0.2", "10.0.0.3"};
  place = Place{};
  place.console = room_.connect(peers[below(3)]);
}

void ServerSteps::log_in(Place& place) {
  constexpr ClientCommand commands[] = {CmdPasswordLogin, CmdLoginCheck, CmdRequestAccessRights,
                                        CmdRequestFirstUnblocked};
  const std::uint8_t how = next();
  const char* const password = how % 8 == 7 ? "wrong" : host_password;
  ServerPacket packet =
      client_packet(commands[how / 8 % 4], place.console->group, place.console->console);
  if (how < 250) {
    packet.Buffer =
        login_buffer(pass_encode(users[how / 32 % 5], 7).value(), pass_encode(password, 8).value());
  }
  send(place, sent_frame(packet));
  if (how % 2 == 0) room_.wait(1s);
}

// Mostly of the console's own group and number, as others are refused at once.
void ServerSteps::send_frame(Place& place, bool whole) {
  const std::uint8_t code = next();
  const std::uint8_t line = next();
  ServerPacket packet = client_packet(client_commands[code % client_commands.size()].command,
                                      place.console->group, place.console->console);
  if (code >= 250) packet.CMD = next();
  packet.LineNo = line < 200 ? static_cast<std::uint8_t>(line % 22) : line;
  const std::uint8_t more = next();
  if (more % 16 == 1) packet.GroupNo = next();
  if (more % 16 == 2) packet.Console = next();
  if ((more & 16U) != 0) packet.AltInfo = next();
  if ((more & 32U) != 0) packet.Bank = next();
  packet.Buffer = (more & 64U) != 0 ? text() : std::string(1, "FHSLNCPOXRTUVA"[next() % 14]);
  std::string bytes = sent_frame(packet);
  if (!whole) {
    const std::size_t cut = next() % bytes.size();
    place.rest = bytes.substr(cut);
    bytes.resize(cut);
  }
  send(place, bytes);
}

// What is passed on to others, whole but for its texts.
void ServerSteps::send_record(Place& place) {
  const std::uint8_t kind = next();
  const int line = below(20);
  FrameConsole& console = *place.console;
  switch (kind % 4) {
    case 0: {
      CallerDetails data;
      data.sender = text();
      for (std::string& field : data.fields) field = (kind & 4U) != 0 ? text() : "x";
      return send(place, sent_frame(console.packet(CmdCallerData, line, encode_caller_data(data))));
    }
    case 1: {
      const TextMessage message{kind * 1000, -kind, text() + "\3" + text()};
      return send(place, sent_frame(console.packet(CmdFlashMessage, no_value,
                                                   encode_text_message(message))));
    }
    case 2: {
      if ((kind & 8U) != 0) {
        ServerPacket packet = console.packet(
            CmdFlagCaller, no_value,
            encode_caller_flagging({.number = numbers[below(3)], .reason = text(), .until = {}}));
        packet.AltInfo = static_cast<std::uint8_t>(below(5));
        return send(place, sent_frame(packet));
      }
      const std::string profile = users[below(3)] + ("\3" + std::string(43, '1')) + text();
      return send(place, sent_frame(console.packet(CmdUserProfile, no_value, profile)));
    }
    default: {
      const std::string longest(20'000 + 100U * next(), 'x');
      return send(place,
                  sent_frame(console.packet(CmdFlashMessage, no_value, "1\0022\2" + longest)));
    }
  }
}

// What stands before it may be worked on for some time yet, refused logins say.
void ServerSteps::note_leaving(Place& place) {
  place.may_leave_until = room_.loop.now() + longest_backlog;
}

void ServerSteps::send(Place& place, const std::string& bytes) {
  place.sent.append(bytes);
  while (const auto body = place.sent.first_body()) {
    const auto code = static_cast<std::uint8_t>(body->front());
    if (code == static_cast<std::uint8_t>(CmdLeaveGroup)) note_leaving(place);
    place.sent.drop_first();
  }
  place.console->send_bytes(bytes);
}

void ServerSteps::work_exchange() {
  const std::uint8_t what = next();
  exchange::SimulatedExchange& exchange = room_.exchange(1 + what % groups);
  const int line = below(20);
  switch (what / 4 % 4) {
    case 0:
      exchange.arrive(line, what < 128 ? text() : numbers[below(3)]);
      return;
    case 1:
      exchange.leave(line);
      return;
    case 2:
      return exchange.obey(words[below(std::size(words))]);
    default:
      return exchange.take_to_position(line, next());
  }
}

void ServerSteps::work_store() {
  switch (below(4)) {
    case 0:
      return room_.store.stall(true);
    case 1:
      return room_.store.fail(true);
    case 2:
      return room_.store.misbehave(next(), 0.3, 1s);
    default:
      room_.store.stall(false);
      room_.store.fail(false);
      return room_.store.behave();
  }
}

// What another server of the same store has changed.
void ServerSteps::hear_of_others() {
  constexpr RightsTemplate works[] = {RightsTemplate::Engineer, RightsTemplate::Host,
                                      RightsTemplate::Screener};
  platform::StoreNews news;
  const char* const user = users[below(3)];
  switch (below(4)) {
    case 0: {
      platform::Account account = ServerRoom::account(user, works[below(3)], {below(groups + 1)});
      account.locked = below(4) == 0;
      news.accounts.push_back(account);
      break;
    }
    case 1:
      news.removed_accounts.emplace_back(user);
      break;
    case 2: {
      const char* const number = numbers[below(3)];
      news.flagged_callers.push_back({.key = telephone_key(number),
                                      .number = number,
                                      .flag = CallerFlag{static_cast<std::uint8_t>(below(4))},
                                      .reason = text(),
                                      .until = below(2) == 0 ? "" : "2026-03-01",
                                      .by = user});
      break;
    }
    default:
      news.studio_places.push_back(
          {1 + below(groups + 2), text(), below(3) == 0 ? "" : "10.0.0.10:5000"});
  }
  if (room_.store.on_news) room_.store.on_news(news);
}

void ServerSteps::reconfigure() {
  ServerOptions options = room_.options;
  const std::uint8_t what = next();
  for (GroupOptions& group : options.groups) {
    group.name = "Name " + text();
    group.line_names = {text(), "2"};
    group.missing_lines = {1 + what % 10};
  }
  if ((what & 128U) != 0) options.groups.pop_back();
  note_missing_lines(options);
  room_.server->reconfigure(options);
}

// A group that isn't among them any more keeps its own while seats are in it.
void ServerSteps::note_missing_lines(const ServerOptions& options) {
  for (const GroupOptions& group : options.groups) {
    missing_[group.number] = group.missing_lines.empty() ? 0 : group.missing_lines.front();
  }
}

void ServerSteps::restart() {
  const bool announced = below(2) == 0;
  if (announced) room_.server->shut_down(below(4), text(), [] {});
  room_.wait(5s);
  for (Place& place : places_) place = Place{};
  room_.crash();
  room_.store.stall(false);
  room_.store.fail(false);
  room_.store.behave();
  note_missing_lines(room_.options);
  room_.start();
  room_.wait(5s);
  for (Place& place : places_) connect(place);
}

void ServerSteps::look() {
  for (Place& place : places_) look_at(place);
  for (const Place& place : places_) compare_lines(place);
  for (const Place& place : places_) {
    for (const Place& other : places_) compare_seats(place, other);
  }
}

void ServerSteps::look_at(Place& place) {
  const int registrations_before = place.witness.registrations();
  require(place.witness.look_at(*place.console), "a frame that isn't for the console");
  if (place.witness.registrations() != registrations_before) {
    place.knows_callers_from = room_.loop.now() + Session::callers_told_after + 1ms;
  }
  if (room_.loop.now() < place.may_leave_until) place.witness.may_have_left();
}

void ServerSteps::compare_lines(const Place& place) {
  if (!place.console->is_open() || !place.console->reads() || !place.witness.knows_lines()) return;
  const int group = place.witness.group();
  for (int line = 0; line < place.witness.line_count(); ++line) {
    const char letter = place.witness.letter(line);
    const bool exists = missing_[group] != line + 1;
    require(letter == (exists ? room_.exchange(group).letter(line) : 'F'), "a line's letter");
  }
}

void ServerSteps::compare_seats(const Place& place, const Place& other) {
  for (const Place* seat : {&place, &other}) {
    if (!seat->console->is_open() || !seat->console->reads() || !seat->witness.knows_lines()) {
      return;
    }
    if (room_.loop.now() < seat->knows_callers_from) return;
  }
  if (place.witness.group() != other.witness.group()) return;
  require(place.witness.caller_data() == other.witness.caller_data(), "caller data");
  require(place.witness.known_callers() == other.witness.known_callers(), "known callers");
  require(place.witness.next_call() == other.witness.next_call(), "next call");
  require(place.witness.message() == other.witness.message(), "message");
}

// Nothing is left of what has gone.
void ServerSteps::end() {
  for (Place& place : places_) place.console->hang_up();
  room_.store.stall(false);
  room_.store.fail(false);
  room_.store.behave();
  room_.wait(2min);
  require(room_.figure("connections") == 0 && room_.figure("seats_let_in") == 0, "seats stay");
  require(room_.figure("store_waiting") == 0, "records stay");
  require(room_.loop.scheduled() <= 2, "calls stay");
}

void ServerSteps::require(bool holds, const char* what) {
  if (!holds && fault_.empty()) fault_ = what;
}

}  // namespace lineweir::server
