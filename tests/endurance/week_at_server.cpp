#include "endurance/week_studio.h"
#include "simulation/network_socket.h"
#include "simulation/seat.h"
#include "simulation/server_site.h"

namespace lineweir::endurance {
namespace {

using namespace std::chrono_literals;

constexpr const char* user = "anna";
constexpr int group = 1;
constexpr simulation::Weather fair = {.stalled = 0, .refused = 0, .late = 0, .cut = 0};

server::ServerOptions options() {
  server::ServerOptions options;
  options.groups.resize(1);
  options.groups.front().name = "Morning";
  return options;
}

// The server's core with its store and its exchange, over a network that does nothing wrong.
class WeekAtServer final : public WeekStudio {
 public:
  explicit WeekAtServer(platform::VirtualEventLoop& loop)
      : loop_(loop),
        transcript_(loop),
        network_(loop, transcript_, fair, 1),
        site_(loop, network_, transcript_,
              simulation::network_address(simulation::server_host, simulation::server_port),
              options(), {user}, 1),
        socket_(network_, "seat"),
        desk_(loop) {
    site_.quieten();
    desk_.start(&socket_);
    Console& console = *desk_.console;
    console.login.UserName = user;
    console.login.UserPassword = simulation::seat_password;
    console.Lineweir.WinsockMenu.on_click();
    console.WinsockOptions.Text1.text = simulation::server_host;
    console.WinsockOptions.Text2.text = std::to_string(simulation::server_port);
    console.WinsockOptions.SockConnect.on_click();
    if (console.LoginForm.visible) console.LoginForm.ConnectButton.on_click();
    loop_.advance(10s);
  }

  WeekDesk& desk() override { return desk_; }
  char letter(int line) const override { return lines().letter(line); }
  bool ring(int line, const std::string& number) override { return lines().arrive(line, number); }
  bool leave(int line) override { return lines().leave(line); }

  bool writes_calls_down() const override { return true; }
  std::size_t take_written_calls() override {
    transcript_.clear();
    platform::StoreContent& content = site_.store().content();
    content.audit.clear();
    const auto ended = [](const auto& entry) { return entry.second.ended.count() != 0; };
    return std::erase_if(content.calls, ended);
  }

 private:
  exchange::SimulatedExchange& lines() const { return site_.exchange(group); }

  platform::VirtualEventLoop& loop_;
  simulation::Transcript transcript_;
  simulation::Network network_;
  mutable simulation::ServerSite site_;
  simulation::NetworkSocket socket_;
  WeekDesk desk_;
};

}  // namespace

std::unique_ptr<WeekStudio> week_at_server(platform::VirtualEventLoop& loop) {
  return std::make_unique<WeekAtServer>(loop);
}

}  // namespace lineweir::endurance
