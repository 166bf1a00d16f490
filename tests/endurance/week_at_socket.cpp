#include "endurance/week_exchange.h"
#include "endurance/week_studio.h"
#include "server/line_order.h"
#include "support/server_packet.h"
#include "wire/studio_texts.h"

namespace lineweir::endurance {
namespace {

using namespace std::chrono_literals;
using test::server_packet;

constexpr platform::Milliseconds hand_over_every = 50ms;
constexpr platform::Milliseconds beat_every = 1s;
constexpr int kind = 1;

template <class Items>
std::string list_of(const Items& items) {
  std::string list;
  for (const std::string& item : items) list += item + item_end;
  return list;
}

// A server that isn't ours, as far as its frames: it lets the console in, tells of its lines and
// obeys words.
class WeekAtSocket final : public WeekStudio {
 public:
  explicit WeekAtSocket(platform::VirtualEventLoop& loop)
      : loop_(loop), exchange_(loop), desk_(loop) {
    exchange_.on_change = [this](exchange::LineChange change) { tell_line(change); };
    socket().accept_connections(true);
    hand_over();
    beat();
    desk_.start();
    Console& console = *desk_.console;
    console.login.UserName = "anna";
    console.login.UserPassword = "on air";
    console.Lineweir.WinsockMenu.on_click();
    console.WinsockOptions.SockConnect.on_click();
    if (console.LoginForm.visible) console.LoginForm.ConnectButton.on_click();
    loop.advance(10s);
  }
  ~WeekAtSocket() override {
    loop_.cancel(next_);
    loop_.cancel(next_beat_);
  }

  WeekDesk& desk() override { return desk_; }
  char letter(int line) const override { return exchange_.letter(line); }
  bool ring(int line, const std::string& number) override {
    return exchange_.lines().arrive(line, number);
  }
  bool leave(int line) override { return exchange_.lines().leave(line); }

 private:
  platform::ScriptedClientSocket& socket() { return desk_.workstation.winsock1; }

  void hand_over() {
    for (const std::string& bytes : socket().take_writes()) received_.append(bytes);
    while (const auto body = received_.first_body()) {
      const ServerPacket packet = packet_of(*body);
      received_.drop_first();
      answer(packet);
    }
    next_ = loop_.schedule(hand_over_every, [this] { hand_over(); });
  }

  void beat() {
    send(server_packet(ServerCommand::SrvTime));
    next_beat_ = loop_.schedule(beat_every, [this] { beat(); });
  }

  void send(ServerPacket packet) { socket().arrive(test::frame_of(std::move(packet))); }

  void answer(const ServerPacket& packet) {
    using enum ClientCommand;
    switch (static_cast<ClientCommand>(packet.CMD)) {
      case CmdPasswordLogin:
        return let_in(ServerCommand::SrvPasswordResult, 'T');
      case CmdLoginCheck:
        return let_in(ServerCommand::SrvLoginCheckResult, 'F');
      case CmdRequestStudioStatus:
        return tell_studio();
      case CmdRequestTimes:
        return tell_times();
      case CmdRequestStatus:
        return send(server_packet(ServerCommand::SrvFullStatus, exchange_.status_text()));
      case CmdRequestLineNumbers:
        return send(server_packet(ServerCommand::SrvLineNumbers,
                                  std::string(std::size_t{10} * week_lines, ' ')));
      case CmdRequestGroupNames:
        return send(server_packet(ServerCommand::SrvGroupNames, std::string("Morning") + item_end));
      case CmdTimeRequest:
        return send(server_packet(ServerCommand::SrvTime));
      case CmdLineCommand:
        if (const auto order = server::line_order(packet, kind)) obey(*order);
        return;
      case CmdCallerData:
        return tell_with_line(ServerCommand::SrvCallerData, packet.LineNo, packet.Buffer);
      case CmdSetNextCall:
        return tell_with_line(ServerCommand::SrvNextCall, packet.LineNo, "");
      default:
        return;
    }
  }

  void obey(const server::LineOrder& order) {
    using enum server::LineOrder::Kind;
    if (order.kind == Word) return exchange_.lines().obey(order.word);
    // Whoever is on a hybrid.
    const std::string_view places = order.bank == 0 ? "N" : "C";
    for (int line = 0; line < week_lines; ++line) {
      if (places.find(exchange_.letter(line)) == std::string_view::npos) continue;
      exchange_.lines().obey(exchange::status_item(line, order.kind == DropPlace ? 'F' : 'H'));
    }
  }

  void let_in(ServerCommand command, char yes) {
    ServerPacket answer = server_packet(command, std::string(test::all_rights));
    answer.AltInfo = static_cast<std::uint8_t>(yes);
    send(std::move(answer));
  }

  void tell_studio() {
    std::vector<std::string> items(4, "True");
    for (int line = 1; line <= week_lines; ++line) items.push_back(std::to_string(line));
    send(server_packet(ServerCommand::SrvStudioStatus, list_of(items)));
  }

  void tell_times() {
    std::vector<std::string> items(week_lines, "0");
    items.emplace_back("10:00:00 AM");
    send(server_packet(ServerCommand::SrvTimes, list_of(items)));
  }

  void tell_with_line(ServerCommand command, std::uint8_t line, const std::string& text) {
    ServerPacket packet = server_packet(command, text);
    packet.LineNo = line;
    send(std::move(packet));
  }

  void tell_line(exchange::LineChange change) {
    tell_with_line(ServerCommand::SrvLineStatus, static_cast<std::uint8_t>(change.line),
                   std::string(1, change.letter));
  }

  platform::VirtualEventLoop& loop_;
  WeekExchange exchange_;
  WeekDesk desk_;
  ReceiveBuffer received_;
  platform::EventLoop::CallId next_ = 0;
  platform::EventLoop::CallId next_beat_ = 0;
};

}  // namespace

std::unique_ptr<WeekStudio> week_at_socket(platform::VirtualEventLoop& loop) {
  return std::make_unique<WeekAtSocket>(loop);
}

}  // namespace lineweir::endurance
