#include "server/server_room.h"

#include "base/text.h"
#include "wire/password_scramble.h"

namespace lineweir::server {
namespace {

using platform::Milliseconds;

}  // namespace

FrameConsole::FrameConsole(platform::VirtualEventLoop& loop, Server& server,
                           const std::string& peer)
    : loop_(loop), line_(std::make_shared<LineState>(loop)) {
  server.accept(std::make_unique<ServerEnd>(line_, peer));
}

FrameConsole::~FrameConsole() { hang_up(); }

void FrameConsole::send(const ServerPacket& packet) { send_bytes(sent_frame(packet)); }

void FrameConsole::send_bytes(const std::string& bytes) {
  loop_.schedule(Milliseconds{0}, [line = line_, bytes] {
    if (line->server_end != nullptr) line->server_end->on_bytes(bytes);
  });
  loop_.advance(Milliseconds{1});
}

std::vector<ServerPacket> FrameConsole::take() {
  received_.append(std::exchange(line_->to_console, {}));
  std::vector<ServerPacket> packets;
  while (const auto body = received_.first_body()) {
    const std::string frame = line_->frames.empty() ? std::string() : line_->frames.front();
    cut_as_sent_ = cut_as_sent_ && framed(*body) == frame;
    if (!line_->frames.empty()) line_->frames.pop_front();
    packets.push_back(packet_of(*body));
    received_.drop_first();
  }
  cut_as_sent_ = cut_as_sent_ && line_->frames.empty();
  return packets;
}

std::vector<ServerPacket> FrameConsole::take(ServerCommand command) {
  std::vector<ServerPacket> packets = take();
  std::erase_if(packets, [command](const ServerPacket& packet) {
    return packet.CMD != static_cast<std::uint8_t>(command);
  });
  return packets;
}

ServerPacket FrameConsole::take_last(ServerCommand command) {
  const auto packets = take(command);
  return packets.empty() ? ServerPacket{} : packets.back();
}

ServerPacket FrameConsole::packet(ClientCommand command, int line, std::string buffer) const {
  ServerPacket made = client_packet(command, group, console);
  made.LineNo = field_byte(line);
  made.Buffer = std::move(buffer);
  return made;
}

void FrameConsole::log_in(const std::string& user, const std::string& password,
                          ClientCommand command) {
  ServerPacket made = client_packet(command, group, console);
  made.Buffer = login_buffer(pass_encode(user, 7).value(), pass_encode(password, 8).value());
  send(made);
  loop_.advance(std::chrono::seconds(1));
}

void FrameConsole::join(int to_group, int as_console) {
  group = to_group;
  console = as_console;
  using enum ClientCommand;
  for (const ClientCommand command :
       {CmdConnectConsole, CmdRequestGroupNames, CmdRequestStudioStatus, CmdRequestTimes,
        CmdRequestStatus, CmdRequestLineNumbers, CmdSetMode}) {
    send(packet(command));
  }
  // The callers are told a little later.
  loop_.advance(Milliseconds{400});
}

void FrameConsole::word(char letter, int line, int alt_info, int bank) {
  ServerPacket made = packet(ClientCommand::CmdLineCommand, line, std::string(1, letter));
  made.AltInfo = field_byte(alt_info);
  made.Bank = field_byte(bank);
  send(made);
}

void FrameConsole::hang_up() {
  if (line_->server_end != nullptr) {
    line_->server_end->on_end(platform::ConnectionEnd::Gone);
    loop_.advance(Milliseconds{1});
  }
}

ServerOptions ServerRoom::two_studios() {
  ServerOptions options;
  options.groups = {{.number = 1, .name = "Studio 1"}, {.number = 2, .name = "Studio 2"}};
  return options;
}

platform::Account ServerRoom::account(const std::string& name, RightsTemplate work,
                                      std::vector<int> groups) {
  platform::Account account;
  account.name = name;
  account.password_hash = host_password;
  for (const int group : groups) account.rights[group] = rights_of(work);
  return account;
}

ServerRoom::ServerRoom(ServerOptions wanted) : options(std::move(wanted)) {
  for (const GroupOptions& group : options.groups) {
    exchange::SimulatedExchangeOptions of_group;
    of_group.line_count = group.lines;
    of_group.callers.call_every = exchange::Moment{0};
    of_group.callers.ring_patience = exchange::Moment{0};
    of_group.callers.hold_patience = exchange::Moment{0};
    exchanges[group.number] = std::make_unique<exchange::SimulatedExchange>(loop, of_group);
  }
  std::string hash;
  passwords.hash(host_password, [&](const std::string& made) { hash = made; });
  loop.advance(Milliseconds{1});
  std::vector<platform::StoreChange> accounts;
  for (auto made :
       {account("host", RightsTemplate::Host), account("screener", RightsTemplate::Screener),
        account("only2", RightsTemplate::Host, {2})}) {
    made.password_hash = hash;
    accounts.emplace_back(made);
  }
  store.write(std::move(accounts), [](bool) {});
  loop.advance(Milliseconds{1});
  start();
}

ServerRoom::~ServerRoom() = default;

void ServerRoom::start() {
  server = std::make_unique<Server>(
      ServerServices{server_loop, clock, random, store, passwords, letters,
                     [this](LogLevel, const std::string& line) { log.push_back(line); },
                     [this](const GroupOptions& group) {
                       auto trunk = std::make_unique<Trunk>(*exchanges.at(group.number));
                       if (exchanges_are_away) trunk->reach(false);
                       trunks[group.number] = trunk.get();
                       return trunk;
                     },
                     &journal, epoch, true},
      options);
  server->start(
      [this] { ++servings; },
      [this](const std::string&, const std::string& password) { first_password = password; });
  loop.advance(Milliseconds{10});
}

void ServerRoom::crash() { server.reset(); }

std::unique_ptr<FrameConsole> ServerRoom::connect(const std::string& peer) {
  return std::make_unique<FrameConsole>(loop, *server, peer);
}

std::unique_ptr<FrameConsole> ServerRoom::seat(const std::string& user, int group, int console,
                                               const std::string& peer) {
  auto made = connect(peer);
  made->group = group;
  made->log_in(user, host_password);
  made->join(group, console);
  return made;
}

double ServerRoom::figure(const std::string& name) const {
  const std::string text = server->metrics();
  const std::string start = "\nlineweir_" + name + ' ';
  const std::size_t place = text.find(start);
  return place == std::string::npos ? -1 : std::stod(text.substr(place + start.size()));
}

}  // namespace lineweir::server
