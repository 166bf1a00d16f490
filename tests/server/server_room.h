#pragma once

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "exchange/simulated_exchange.h"
#include "letters/code_page_letters.h"
#include "platform/scripted/scripted_password_hash.h"
#include "platform/scripted/scripted_random_numbers.h"
#include "platform/scripted/scripted_store.h"
#include "platform/scripted/scripted_store_journal.h"
#include "platform/scripted/scripted_wall_clock.h"
#include "platform/scripted/virtual_event_loop.h"
#include "server/rights_templates.h"
#include "server/server.h"
#include "server/trunk.h"
#include "wire/sent_frame.h"
#include "wire/server_packet_framing.h"

namespace lineweir::server {

// The two ends of a connection without a network between them: what one sends the other has at the
// loop's next turn.
struct LineState {
  explicit LineState(platform::VirtualEventLoop& shared_loop) : loop(shared_loop) {}

  platform::VirtualEventLoop& loop;
  // Towards the server; null once the server has let go of its end.
  platform::Connection* server_end = nullptr;
  std::string to_console;
  // The same, frame by frame as the server has sent them.
  std::deque<std::string> frames;
  bool console_reads = true;
  bool ended_by_server = false;
  // The server has let all that it had sent go out first.
  bool sent_to_the_end = false;
};

class ServerEnd final : public platform::Connection {
 public:
  ServerEnd(std::shared_ptr<LineState> line, std::string peer)
      : line_(std::move(line)), peer_(std::move(peer)) {
    line_->server_end = this;
  }
  ~ServerEnd() override {
    line_->server_end = nullptr;
    line_->ended_by_server = true;
  }

  std::string peer() const override { return peer_; }
  void send(std::string_view bytes) override {
    if (overflown_) return;
    if (line_->console_reads) {
      line_->to_console += bytes;
      line_->frames.emplace_back(bytes);
      return;
    }
    waiting_ += bytes.size();
    if (waiting_ <= queue_bound) return;
    overflown_ = true;
    line_->loop.schedule(platform::Milliseconds{0}, [line = line_] {
      if (line->server_end != nullptr) line->server_end->on_end(platform::ConnectionEnd::Overflow);
    });
  }
  std::size_t queued() const override { return waiting_; }
  void close_when_sent() override { line_->sent_to_the_end = true; }

 private:
  std::shared_ptr<LineState> line_;
  std::string peer_;
  std::size_t waiting_ = 0;
  bool overflown_ = false;
};

// A console as far as it is frames.
class FrameConsole {
 public:
  FrameConsole(platform::VirtualEventLoop& loop, Server& server, const std::string& peer);
  ~FrameConsole();

  void send(const ServerPacket& packet);
  void send_bytes(const std::string& bytes);
  // Everything that has come since the last call, in its order.
  std::vector<ServerPacket> take();
  // Those of one code among it; the others are gone.
  std::vector<ServerPacket> take(ServerCommand command);
  // The last one of them; an empty packet where none has come.
  ServerPacket take_last(ServerCommand command);

  ServerPacket packet(ClientCommand command, int line = no_value, std::string buffer = {}) const;
  void log_in(const std::string& user, const std::string& password,
              ClientCommand command = ClientCommand::CmdPasswordLogin);
  // As a console does at the start of a session.
  void join(int to_group, int as_console = 0);
  void word(char letter, int line, int alt_info = no_value, int bank = no_value);
  void hang_up();

  bool is_open() const { return !line_->ended_by_server; }
  // The end came behind everything that the server had sent.
  bool heard_to_the_end() const { return !is_open() && line_->sent_to_the_end; }
  bool reads() const { return line_->console_reads; }
  // Every frame so far was cut from the bytes as the server has sent it.
  bool cut_as_sent() const { return cut_as_sent_; }
  void stop_reading() { line_->console_reads = false; }

  int group = 1;
  int console = 0;

 private:
  platform::VirtualEventLoop& loop_;
  std::shared_ptr<LineState> line_;
  ReceiveBuffer received_;
  bool cut_as_sent_ = true;
};

// The loop of a process that can be stopped: its clock goes on meanwhile, and what falls due is
// late.
class StoppableLoop final : public platform::EventLoop {
 public:
  explicit StoppableLoop(platform::VirtualEventLoop& inner) : inner_(inner) {}

  platform::Milliseconds now() const override { return inner_.now() + stopped_; }
  CallId schedule(platform::Milliseconds delay, std::function<void()> call) override {
    return inner_.schedule(delay, std::move(call));
  }
  void cancel(CallId id) override { inner_.cancel(id); }
  void run_pending() override { inner_.run_pending(); }
  void yield() override { inner_.yield(); }

  void stop_for(platform::Milliseconds span) { stopped_ += span; }

 private:
  platform::VirtualEventLoop& inner_;
  platform::Milliseconds stopped_{0};
};

inline constexpr const char* host_password = "on air";

// A server with its world scripted. Groups 1 and 2 have ten lines; the users "host" and "screener"
// with the password host_password have the rights of their work in every group.
class ServerRoom {
 public:
  explicit ServerRoom(ServerOptions options = two_studios());
  ~ServerRoom();

  static ServerOptions two_studios();
  static platform::Account account(const std::string& name, RightsTemplate work,
                                   std::vector<int> groups = {0});

  // Begins to serve; a second time as after a crash.
  void start();
  void crash();
  void wait(platform::Milliseconds span) { loop.advance(span); }

  std::unique_ptr<FrameConsole> connect(const std::string& peer = "10.0.0.1");
  // Let in and registered.
  std::unique_ptr<FrameConsole> seat(const std::string& user, int group = 1, int console = 0,
                                     const std::string& peer = "10.0.0.1");

  exchange::SimulatedExchange& exchange(int group = 1) { return *exchanges.at(group); }
  // A figure of the metrics, such as `refusals_total{reason="other_line"}`.
  double figure(const std::string& name) const;

  platform::VirtualEventLoop loop;
  StoppableLoop server_loop{loop};
  platform::ScriptedWallClock clock{loop};
  platform::ScriptedRandomNumbers random;
  platform::ScriptedStore store{loop};
  platform::ScriptedStoreJournal journal;
  platform::ScriptedPasswordHash passwords{loop};
  CodePageLetters letters;
  ServerOptions options;
  platform::Epoch epoch = 0;
  std::vector<std::string> log;
  std::string first_password;
  // How often a server has told that it serves.
  int servings = 0;
  // By group; they outlive the server, as a real exchange does.
  std::map<int, std::unique_ptr<exchange::SimulatedExchange>> exchanges;
  // The server's ways to them; one that begins finds them away where this says so.
  std::map<int, Trunk*> trunks;
  bool exchanges_are_away = false;
  std::unique_ptr<Server> server;
};

}  // namespace lineweir::server
