#include "simulation/server_site.h"

#include "server/rights_templates.h"
#include "wire/server_packet_codec.h"
#include "wire/server_packet_framing.h"

namespace lineweir::simulation {
namespace {

using namespace std::chrono_literals;

bool has_caller(char letter) { return letter != 'F' && letter != 'B' && letter != 'E'; }

// Tells of the group that a session is in.
bool is_of_group(std::uint8_t code) {
  const auto place = server_command_place(code);
  return place && server_commands[*place].of_group;
}

}  // namespace

// The server's end of a connection. Nothing of another group than the one in which the seat is may
// go out on it.
class ServerSite::WatchedConnection final : public platform::Connection {
 public:
  WatchedConnection(std::unique_ptr<simulation::Connection> wire, ServerSite& site)
      : wire_(std::move(wire)), site_(site) {
    wire_->on_bytes = [this](std::string_view bytes) {
      watch_in(bytes);
      if (on_bytes) on_bytes(bytes);
    };
    wire_->on_closed = [this] {
      if (on_end) on_end(platform::ConnectionEnd::Gone);
    };
  }

  std::string peer() const override { return wire_->origin(); }
  void send(std::string_view bytes) override {
    watch_out(bytes);
    wire_->send(bytes);
  }
  std::size_t queued() const override { return 0; }
  void close_when_sent() override {}

 private:
  void watch_in(std::string_view bytes) {
    in_.append(bytes);
    while (const auto body = in_.first_body()) {
      const ServerPacket packet = packet_of(*body);
      in_.drop_first();
      if (packet.CMD == static_cast<std::uint8_t>(ClientCommand::CmdConnectConsole)) {
        group_ = packet.GroupNo;
      }
      if (packet.CMD == static_cast<std::uint8_t>(ClientCommand::CmdLeaveGroup)) group_ = 0;
    }
  }

  void watch_out(std::string_view bytes) {
    out_.append(bytes);
    while (const auto body = out_.first_body()) {
      const ServerPacket packet = packet_of(*body);
      out_.drop_first();
      ++site_.frames_watched_;
      const bool error = packet.Buffer == "ERROR";
      if (is_of_group(packet.CMD) && packet.GroupNo != group_ && !error) {
        site_.fault("a frame " + std::to_string(packet.CMD) + " of group " +
                    std::to_string(packet.GroupNo) + " goes to a seat in group " +
                    std::to_string(group_));
      }
    }
  }

  std::unique_ptr<simulation::Connection> wire_;
  ServerSite& site_;
  ReceiveBuffer in_;
  ReceiveBuffer out_;
  int group_ = 0;
};

ServerSite::ServerSite(platform::VirtualEventLoop& loop, Network& network, Transcript& transcript,
                       std::string address, server::ServerOptions options,
                       const std::vector<std::string>& users, std::uint64_t seed)
    : loop_(loop),
      network_(network),
      transcript_(transcript),
      address_(std::move(address)),
      options_(std::move(options)) {
  for (const server::GroupOptions& group : options_.groups) {
    begin_group(group, seed * 1000 + static_cast<std::uint64_t>(group.number));
  }
  passwords_.take(17ms);
  for (const std::string& user : users) {
    passwords_.hash(seat_password, [this, user](const std::string& hash) {
      platform::Account account;
      account.name = user;
      account.password_hash = hash;
      account.rights[0] = server::rights_of(server::RightsTemplate::Engineer);
      store_.content().accounts[user] = account;
    });
  }
  loop_.advance(std::chrono::seconds(1) + 17ms * users.size());
  network_.listen(address_, [this](std::unique_ptr<simulation::Connection> wire) {
    if (!serving_) return;
    server_->accept(std::make_unique<WatchedConnection>(std::move(wire), *this));
  });
  start();
}

ServerSite::~ServerSite() { network_.stop_listening(address_); }

void ServerSite::start() {
  transcript_.add("server", "starts");
  server_ = std::make_unique<server::Server>(
      server::ServerServices{loop_, clock_, random_, store_, passwords_, letters_,
                             [this](server::LogLevel level, const std::string& line) {
                               if (level != server::LogLevel::Debug)
                                 transcript_.add("server", line);
                             },
                             [this](const server::GroupOptions& group) {
                               return std::make_unique<server::Trunk>(
                                   *exchanges_.at(group.number),
                                   [this, number = group.number](exchange::LineChange change) {
                                     count(number, change);
                                   });
                             },
                             &journal_},
      options_);
  server_->start(
      [this] {
        serving_ = true;
        for (auto& [group, letters] : seen_letters_) {
          for (int line = 0; line < static_cast<int>(letters.size()); ++line) {
            count(group, {line, exchanges_.at(group)->letter(line)});
          }
        }
      },
      [](const std::string&, const std::string&) {});
}

void ServerSite::crash() {
  transcript_.add("server", "crashes");
  serving_ = false;
  server_.reset();
  store_.forget_what_waits();
  passwords_.forget_what_waits();
}

bool ServerSite::has_written_all() const {
  return server_ != nullptr &&
         server_->metrics().find("lineweir_store_waiting 0\n") != std::string::npos;
}

void ServerSite::quieten() {
  for (auto& [group, exchange] : exchanges_) exchange->quieten();
}

void ServerSite::begin_group(const server::GroupOptions& options, std::uint64_t seed) {
  exchange::SimulatedExchangeOptions of_group;
  of_group.line_count = options.lines;
  of_group.callers = {15s, 40s, 90s};
  of_group.seed = seed;
  exchanges_[options.number] = std::make_unique<exchange::SimulatedExchange>(loop_, of_group);
  seen_letters_[options.number] = std::string(static_cast<std::size_t>(options.lines), 'F');
}

// A call begins where a free line gets a caller, and where a line with one rings again.
void ServerSite::count(int group, exchange::LineChange change) {
  if (!serving_) return;
  char& seen = seen_letters_.at(group)[static_cast<std::size_t>(change.line)];
  const bool begins =
      has_caller(change.letter) && (!has_caller(seen) || (change.letter == 'R' && seen != 'R'));
  if (begins) {
    ++calls_seen_;
    transcript_.add("exchange", "call " + std::to_string(calls_seen_) + " on line " +
                                    std::to_string(change.line + 1) + " of group " +
                                    std::to_string(group));
  }
  seen = change.letter;
}

void ServerSite::fault(const std::string& what) {
  transcript_.add("fault", what);
  faults_.push_back(exchange::format_seconds(loop_.now()) + ' ' + what);
}

}  // namespace lineweir::simulation
