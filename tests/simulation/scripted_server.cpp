#include "simulation/scripted_server.h"

#include <algorithm>

#include "base/text.h"
#include "support/server_packet.h"

namespace lineweir::simulation {
namespace {

using test::all_rights;
using test::server_packet;

using namespace std::chrono_literals;

constexpr std::string_view letters_told = "FROSHNCELKYB";
constexpr Milliseconds mean_between_changes = 700ms;
constexpr Milliseconds beat_interval = 1s;
constexpr Milliseconds longest_answer = 1500ms;
constexpr double no_answer = 0.03;
constexpr double turned_away = 0.05;
constexpr int longest_line_name = 10;
constexpr int most_groups = 20;

std::string line_item(char letter, int line) { return letter + zero_filled(line, 2); }

template <class Items>
std::string list_of(const Items& items) {
  std::string list;
  for (const std::string& item : items) list += item + item_end;
  return list;
}

}  // namespace

ScriptedServer::ScriptedServer(platform::VirtualEventLoop& loop, Network& network,
                               Transcript& transcript, const std::string& address,
                               std::uint64_t seed)
    : loop_(loop),
      network_(network),
      transcript_(transcript),
      address_(address),
      dice_(seed),
      has_heartbeat_(dice_.happens(0.6)) {
  network.listen(address,
                 [this](std::unique_ptr<Connection> connection) { accept(std::move(connection)); });
  change_something();
  if (has_heartbeat_) beat();
}

ScriptedServer::~ScriptedServer() { network_.stop_listening(address_); }

const ToldState* ScriptedServer::told() const {
  if (registered_last_ == nullptr) return nullptr;
  const Session& session = *registered_last_;
  return session.registered && session.answers_to_come == 0 ? &session.told : nullptr;
}

void ScriptedServer::accept(std::unique_ptr<Connection> connection) {
  // A session stays in its place in the list, and so do the calls that name it.
  Session& session = sessions_.emplace_back();
  session.name = "server, session " + std::to_string(sessions_.size());
  session.answers = calm_ || !dice_.happens(no_answer);
  session.connection = std::move(connection);
  session.connection->on_bytes = [this, &session](std::string_view bytes) {
    receive(session, bytes);
  };
  session.connection->on_closed = [&session] { session.registered = false; };
}

void ScriptedServer::receive(Session& session, std::string_view bytes) {
  session.received.append(bytes);
  while (const auto body = session.received.first_body()) {
    const ServerPacket packet = packet_of(*body);
    session.received.drop_first();
    transcript_.add(session.name, "hears " + std::to_string(packet.CMD) + ' ' +
                                      std::to_string(packet.LineNo) + ' ' + packet.Buffer);
    if (session.answers || calm_) handle(session, packet);
  }
}

void ScriptedServer::handle(Session& session, const ServerPacket& packet) {
  using enum ClientCommand;
  switch (static_cast<ClientCommand>(packet.CMD)) {
    case CmdPasswordLogin:
      return answer_login(session, ServerCommand::SrvPasswordResult, 'T');
    case CmdLoginCheck:
      return answer_login(session, ServerCommand::SrvLoginCheckResult, 'F');
    case CmdConnectConsole:
      if (packet.GroupNo < 1 || packet.GroupNo > studio_count) return;
      session.registered = true;
      ++session.registration;
      session.answers_to_come = 0;
      session.group = packet.GroupNo;
      session.told = {.group = session.group,
                      .letters = std::string(ToldState::line_count, free_letter),
                      .callers = {},
                      .line_names = {},
                      .groups = session.told.groups,
                      .show_times = {}};
      registered_last_ = &session;
      // The answer that the former registration waits for isn't given any more.
      if (session.registration > 1 && session.told.groups.empty()) tell_groups(session);
      for (int line = 0; line < ToldState::line_count; ++line) tell_caller(session, line);
      tell_show_times(session);
      return;
    case CmdCallerData:
      return take_caller(session, packet);
    case CmdLeaveGroup:
      session.registered = false;
      return;
    case CmdRequestGroupNames:
      return answer_later(session, [this, &session] { tell_groups(session); });
    case CmdRequestStudioStatus:
      return answer_later(session, [this, &session] { tell_studio(session); });
    case CmdRequestTimes:
      return answer_later(session, [this, &session] { tell_times(session); });
    case CmdRequestStatus:
      return answer_later(
          session, [this, &session] { tell_all_letters(session, ServerCommand::SrvFullStatus); });
    case CmdRequestLineNumbers:
      return answer_later(session, [this, &session] { tell_line_names(session); });
    case CmdTimeRequest:
      return answer_later(
          session, [this, &session] { send(session, server_packet(ServerCommand::SrvTime)); });
    default:
      return;
  }
}

ScriptedServer::Studio& ScriptedServer::studio_of(const Session& session) {
  return studios_[static_cast<std::size_t>(session.group - 1)];
}

void ScriptedServer::take_caller(const Session& from, const ServerPacket& packet) {
  if (packet.LineNo >= ToldState::line_count) return;
  const auto details = decode_caller_data(packet.Buffer);
  studio_of(from).callers[packet.LineNo] = details ? details->fields.front() : std::string();
  tell_group(from.group, [&](Session& session) { tell_caller(session, packet.LineNo); });
}

void ScriptedServer::answer_later(Session& session, std::function<void()> answer) {
  ++session.answers_to_come;
  loop_.schedule(dice_.between(0s, longest_answer),
                 [&session, registration = session.registration, answer = std::move(answer)] {
                   if (session.registration != registration) return;
                   --session.answers_to_come;
                   answer();
                 });
}

void ScriptedServer::answer_login(Session& session, ServerCommand command, char yes) {
  const bool is_let_in = calm_ || !dice_.happens(turned_away);
  answer_later(session, [this, &session, command, yes, is_let_in] {
    ServerPacket answer = server_packet(command);
    answer.AltInfo = static_cast<std::uint8_t>(is_let_in ? yes : 'x');
    answer.set_buffer(std::string(all_rights));
    send(session, std::move(answer));
  });
}

void ScriptedServer::change_something() {
  loop_.schedule(dice_.exponential(mean_between_changes), [this] { change_something(); });
  if (calm_) return;
  const int group = dice_.below(studio_count) + 1;
  Studio& studio = studios_[static_cast<std::size_t>(group - 1)];
  const auto line = dice_.below(ToldState::line_count);
  const auto place = static_cast<std::size_t>(line);
  const std::string name = "Name " + std::to_string(++names_made_);
  std::function<void(Session&)> tell;
  switch (dice_.below(10)) {
    case 0:
      if (studio.letters[place] == free_letter) return;
      studio.callers[place] = dice_.below(3) == 0 ? std::string() : name;
      tell = [this, line](Session& session) { tell_caller(session, line); };
      break;
    case 1:
      studio.line_names[place] = name.substr(0, longest_line_name);
      tell = [this](Session& session) { tell_line_names(session); };
      break;
    case 2:
      groups_.resize(
          static_cast<std::size_t>(studio_count + dice_.below(most_groups - studio_count + 1)),
          name);
      return tell_everybody([this](Session& session) { tell_groups(session); });
    case 3:
      studio.show_times = {"10:00:00", "10:15:00", name};
      tell = [this](Session& session) { tell_show_times(session); };
      break;
    case 4:
      for (char& letter : studio.letters) {
        letter = letters_told[static_cast<std::size_t>(
            dice_.below(static_cast<int>(letters_told.size())))];
      }
      tell = [this](Session& session) { tell_all_letters(session, ServerCommand::SrvLineStatus); };
      break;
    default:
      studio.letters[place] = letters_told[static_cast<std::size_t>(
          dice_.below(static_cast<int>(letters_told.size())))];
      tell = [this, line](Session& session) { tell_letter(session, line); };
  }
  tell_group(group, tell);
  // A caller's data go with the call.
  for (int i = 0; i < ToldState::line_count; ++i) {
    const auto at = static_cast<std::size_t>(i);
    if (studio.letters[at] != free_letter || studio.callers[at].empty()) continue;
    studio.callers[at].clear();
    tell_group(group, [this, i](Session& session) { tell_caller(session, i); });
  }
}

void ScriptedServer::tell_everybody(const std::function<void(Session&)>& tell) {
  for (Session& session : sessions_) {
    if (session.registered) tell(session);
  }
}

void ScriptedServer::tell_group(int group, const std::function<void(Session&)>& tell) {
  tell_everybody([&](Session& session) {
    if (session.group == group) tell(session);
  });
}

void ScriptedServer::beat() {
  loop_.schedule(beat_interval, [this] { beat(); });
  tell_everybody(
      [this](Session& session) { send(session, server_packet(ServerCommand::SrvTime)); });
}

void ScriptedServer::tell_all_letters(Session& session, ServerCommand command) {
  std::string items;
  for (int line = 0; line < ToldState::line_count; ++line) {
    items += line_item(studio_of(session).letters[static_cast<std::size_t>(line)], line);
  }
  session.told.letters = studio_of(session).letters;
  ServerPacket packet = server_packet(command);
  packet.set_buffer(items);
  send(session, std::move(packet));
}

void ScriptedServer::tell_letter(Session& session, int line) {
  session.told.letters[static_cast<std::size_t>(line)] =
      studio_of(session).letters[static_cast<std::size_t>(line)];
  ServerPacket packet = server_packet(ServerCommand::SrvLineStatus);
  packet.LineNo = static_cast<std::uint8_t>(line);
  packet.set_buffer(std::string(1, studio_of(session).letters[static_cast<std::size_t>(line)]));
  send(session, std::move(packet));
}

void ScriptedServer::tell_caller(Session& session, int line) {
  const std::string& name = studio_of(session).callers[static_cast<std::size_t>(line)];
  session.told.callers[static_cast<std::size_t>(line)] = name;
  ServerPacket packet = server_packet(ServerCommand::SrvCallerData);
  packet.LineNo = static_cast<std::uint8_t>(line);
  CallerDetails details;
  details.sender = "Another";
  details.fields.front() = name;
  packet.set_buffer(name.empty() ? std::string() : encode_caller_data(details));
  send(session, std::move(packet));
}

void ScriptedServer::tell_line_names(Session& session) {
  session.told.line_names = studio_of(session).line_names;
  std::string names;
  for (const std::string& name : studio_of(session).line_names) {
    names += name + std::string(longest_line_name - name.size(), ' ');
  }
  ServerPacket packet = server_packet(ServerCommand::SrvLineNumbers);
  packet.set_buffer(names);
  send(session, std::move(packet));
}

void ScriptedServer::tell_groups(Session& session) {
  session.told.groups = groups_;
  ServerPacket packet = server_packet(ServerCommand::SrvGroupNames);
  packet.set_buffer(list_of(groups_));
  send(session, std::move(packet));
}

void ScriptedServer::tell_show_times(Session& session) {
  session.told.show_times = studio_of(session).show_times;
  ServerPacket packet = server_packet(ServerCommand::SrvShowTimes);
  packet.set_buffer(list_of(studio_of(session).show_times));
  send(session, std::move(packet));
}

void ScriptedServer::tell_times(Session& session) {
  ServerPacket packet = server_packet(ServerCommand::SrvTimes);
  std::vector<std::string> items(ToldState::line_count, "0");
  items.emplace_back("10:00:00 AM");
  packet.set_buffer(list_of(items));
  send(session, std::move(packet));
}

void ScriptedServer::tell_studio(Session& session) {
  ServerPacket packet = server_packet(ServerCommand::SrvStudioStatus);
  std::vector<std::string> items(4, "True");
  for (int line = 1; line <= ToldState::line_count; ++line) items.push_back(std::to_string(line));
  packet.set_buffer(list_of(items));
  send(session, std::move(packet));
}

void ScriptedServer::send(Session& session, ServerPacket packet) {
  ++frames_sent_;
  transcript_.add(session.name, "tells " + std::to_string(packet.CMD) + ' ' +
                                    std::to_string(packet.LineNo) + ' ' + packet.Buffer);
  pad(packet.Buffer);
  session.connection->send(framed(body_of(packet)));
}

}  // namespace lineweir::simulation
