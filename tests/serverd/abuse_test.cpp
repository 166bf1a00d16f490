// What strangers may do to the program itself without disturbing the seats.

#include <doctest/doctest.h>
#include <poll.h>
#include <sys/resource.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>
#include <vector>

#include "platform/asio/loop_peer.h"
#include "serverd/started_server.h"
#include "wire/password_scramble.h"
#include "wire/sent_frame.h"
#include "wire/server_packet_framing.h"

using namespace lineweir;
using namespace std::chrono_literals;
using lineweir::test::Peer;
using lineweir::test::StartedServer;
using enum ClientCommand;
using enum ServerCommand;

namespace {

// A sanitizer's own memory stands beside the server's.
#ifdef __SANITIZE_ADDRESS__
constexpr double most_megabytes = 400;
#else
constexpr double most_megabytes = 100;
#endif

constexpr const char* configuration =
    "listen = \"127.0.0.1:0\"\nseats = 300\nmetrics = \"127.0.0.1:0\"\nshutdown_seconds = 0\n"
    "[[group]]\nnumber = 1\n";
constexpr const char* password = "on air";

class Studio {
 public:
  Studio() : server(folder, configuration), port(server.wait_until_ready()) {
    REQUIRE(port > 0);
    admin("user add host --template host --password-stdin");
  }

  void admin(const std::string& words) const {
    const std::string command =
        std::string("echo '") + password + "' | " LINEWEIR_ADMIN " --socket '" +
        (folder.path() / "admin.sock").string() + "' " + words + " > /dev/null";
    REQUIRE(std::system(command.c_str()) == 0);  // NOLINT(concurrency-mt-unsafe)
  }

  Peer connect() const { return Peer::tcp("127.0.0.1", static_cast<std::uint16_t>(port)); }

  double megabytes() const {
    std::ifstream status("/proc/" + std::to_string(server.process()) + "/status");
    for (std::string line; std::getline(status, line);) {
      if (line.starts_with("VmRSS:")) return std::stod(line.substr(6)) / 1024;
    }
    return 0;
  }

  // A figure of the metrics.
  double figure(const std::string& name) {
    const std::string& log = server.wait_for_log("metrics 127.0.0.1:");
    const std::size_t place = log.find("metrics 127.0.0.1:");
    Peer peer =
        Peer::tcp("127.0.0.1", static_cast<std::uint16_t>(std::stoi(log.substr(place + 18))));
    peer.write("GET /metrics HTTP/1.1\r\n\r\n");
    ::fcntl(peer.socket(), F_SETFL, 0);
    const std::string text = peer.read();
    const std::size_t found = text.find("\nlineweir_" + name + " ");
    REQUIRE(found != std::string::npos);
    return std::stod(text.substr(text.find(' ', found)));
  }

  TemporaryDirectory folder;
  StartedServer server;
  int port;
};

// A seat that works, and notices what it is told.
class WorkingSeat {
 public:
  explicit WorkingSeat(const Studio& studio) : peer_(studio.connect()) {
    ServerPacket login = client_packet(CmdPasswordLogin, 1, 0);
    login.Buffer = login_buffer(*pass_encode("host", 1), *pass_encode(password, 2));
    peer_.write(sent_frame(login));
    REQUIRE(hears(SrvPasswordResult));
    peer_.write(sent_frame(client_packet(CmdConnectConsole, 1, 0)) +
                sent_frame(client_packet(CmdRequestStatus, 1, 0)));
    REQUIRE(hears(SrvFullStatus));
  }

  // Whether it is told so before ten seconds have gone.
  bool hears(ServerCommand command) {
    const auto limit = std::chrono::steady_clock::now() + 10s;
    while (std::chrono::steady_clock::now() < limit && !peer_.ended()) {
      received_.append(peer_.read());
      while (const auto body = received_.first_body()) {
        const ServerPacket packet = packet_of(*body);
        received_.drop_first();
        if (packet.CMD == static_cast<std::uint8_t>(command)) return true;
      }
      pollfd waiting{peer_.socket(), POLLIN, 0};
      ::poll(&waiting, 1, 100);
    }
    return false;
  }

 private:
  Peer peer_;
  ReceiveBuffer received_;
};

// How the server is while it is being abused: a seat hears of callers, and memory stays.
void check_it_serves(Studio& studio, WorkingSeat& seat) {
  studio.admin("call 1 1");
  CHECK(seat.hears(SrvLineStatus));
  studio.admin("hangup 1 1");
  CHECK(seat.hears(SrvLineStatus));
  CHECK(seat.hears(SrvTime));
  CHECK(studio.megabytes() < most_megabytes);
}

}  // namespace

TEST_CASE("a flood of connections that say nothing, or half a frame, keeps nobody from work") {
  Studio studio;
  WorkingSeat seat(studio);
  std::vector<Peer> crowd;
  for (int i = 0; i < 900; ++i) {
    crowd.push_back(studio.connect());
    if (i % 2 == 0) crowd.back().write("\4\4" + std::string(20'000, 'x'));
  }
  check_it_serves(studio, seat);
  CHECK(studio.figure("connections") <= 300);
  // A new one comes in all the same.
  WorkingSeat another(studio);
  check_it_serves(studio, another);
}

TEST_CASE("connections that don't read what they ask for are dropped, and cost no memory") {
  Studio studio;
  WorkingSeat seat(studio);
  std::string asking;
  for (int i = 0; i < 400; ++i) asking += sent_frame(client_packet(CmdTimeRequest, 1, 0));
  std::vector<Peer> crowd;
  for (int i = 0; i < 200; ++i) crowd.push_back(studio.connect());
  for (int round = 0; round < 20; ++round) {
    for (Peer& peer : crowd) peer.write(asking);
    std::this_thread::sleep_for(20ms);
  }
  check_it_serves(studio, seat);
  CHECK(studio.figure("refusals_total{reason=\"too_many\"}") > 0);
}

TEST_CASE("passwords that are guessed by many at once keep the lines moving") {
  Studio studio;
  WorkingSeat seat(studio);
  std::vector<Peer> crowd;
  for (int i = 0; i < 100; ++i) {
    crowd.push_back(studio.connect());
    ServerPacket login = client_packet(CmdPasswordLogin, 1, 0);
    login.Buffer = login_buffer(*pass_encode("user " + std::to_string(i), 1), *pass_encode("x", 2));
    crowd.back().write(sent_frame(login));
  }
  check_it_serves(studio, seat);
  CHECK(studio.figure("refusals_total{reason=\"wrong_password\"}") > 0);
  const auto limit = std::chrono::steady_clock::now() + 20s;
  while (studio.figure("refusals_total{reason=\"address_locked\"}") == 0) {
    REQUIRE(std::chrono::steady_clock::now() < limit);
    std::this_thread::sleep_for(100ms);
  }
}
