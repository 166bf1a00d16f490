#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include "simulation/network.h"

#include <doctest/doctest.h>

#include <list>
#include <set>

#include "simulation/network_socket.h"
#include "support/listen.h"

namespace lineweir::simulation {
namespace {

using namespace std::chrono_literals;

constexpr Weather calm{1ms, 80ms, 0, 0ms, 0, 0, 0ms, 0, 0};

// A network with one listener, who keeps what he hears on each connection.
struct NetworkFixture {
  explicit NetworkFixture(const Weather& weather = calm, std::uint64_t seed = 1)
      : network(loop, transcript, weather, seed) {
    network.listen("here", [this](std::unique_ptr<Connection> end) {
      Heard& heard = accepted.emplace_back();
      heard.end = std::move(end);
      heard.end->on_bytes = [&heard, this](std::string_view bytes) {
        heard.bytes += bytes;
        ++heard.pieces;
        order += std::to_string(&heard == &accepted.front() ? 1 : 2);
      };
      heard.end->on_closed = [&heard] { ++heard.closings; };
    });
  }

  std::unique_ptr<Connection> connected() {
    std::unique_ptr<Connection> made;
    network.connect("here", [&](std::unique_ptr<Connection> end) { made = std::move(end); });
    loop.advance(20s);
    return made;
  }

  struct Heard {
    std::unique_ptr<Connection> end;
    std::string bytes;
    int pieces = 0;
    int closings = 0;
  };

  platform::VirtualEventLoop loop;
  Transcript transcript{loop};
  Network network;
  std::list<Heard> accepted;
  // Which connection each piece came on.
  std::string order;
};

std::string long_text() {
  std::string text;
  for (int i = 0; i < 500; ++i) text += std::to_string(i) + ' ';
  return text;
}

TEST_CASE("bytes come whole and in order, in other pieces than they were sent in") {
  NetworkFixture world;
  const auto end = world.connected();
  REQUIRE(end);
  for (const char c : long_text()) end->send(std::string(1, c));
  end->send(long_text());
  world.loop.advance(60s);
  CHECK(world.accepted.front().bytes == long_text() + long_text());
  CHECK(world.accepted.front().pieces > static_cast<int>(long_text().size()));
}

TEST_CASE("one connection doesn't wait for another") {
  NetworkFixture world;
  const auto first = world.connected();
  const auto second = world.connected();
  REQUIRE(first);
  REQUIRE(second);
  for (int i = 0; i < 100; ++i) {
    first->send("1");
    second->send("2");
    world.loop.advance(100ms);
  }
  // Both ways round: what was sent first comes last now and then.
  CHECK(world.order.find("12") != std::string::npos);
  bool overtaken = false;
  for (std::size_t i = 0; i + 1 < world.order.size(); i += 2) {
    overtaken = overtaken || world.order[i] == '2';
  }
  CHECK(overtaken);
}

TEST_CASE("the other end learns of a close behind the bytes") {
  NetworkFixture world;
  auto end = world.connected();
  end->send(long_text());
  end->close();
  CHECK_FALSE(end->is_open());
  end->send("lost");
  world.loop.advance(60s);
  CHECK(world.accepted.front().bytes == long_text());
  CHECK(world.accepted.front().closings == 1);
}

TEST_CASE("a cut connection ends behind any byte, and both ends learn of it") {
  Weather weather = calm;
  weather.cut = 1;
  weather.longest_life = 1000;
  std::set<std::size_t> lengths;
  for (std::uint64_t seed = 1; seed <= 20; ++seed) {
    NetworkFixture world(weather, seed);
    const auto end = world.connected();
    int closings = 0;
    end->on_closed = [&] { ++closings; };
    end->send(long_text());
    world.loop.advance(60s);
    const std::string& heard = world.accepted.front().bytes;
    CHECK(long_text().starts_with(heard));
    CHECK(heard.size() < 1000);
    CHECK(closings == 1);
    CHECK(world.accepted.front().closings == 1);
    lengths.insert(heard.size());
  }
  CHECK(lengths.size() > 10);
}

TEST_CASE("a connection is refused where nobody listens, or by chance") {
  NetworkFixture world;
  bool told = false;
  world.network.connect("elsewhere", [&](std::unique_ptr<Connection> end) { told = !end; });
  world.loop.advance(1s);
  CHECK(told);

  Weather weather = calm;
  weather.refused = 1;
  NetworkFixture bad(weather);
  CHECK_FALSE(bad.connected());
}

TEST_CASE("a socket tells its connection, and nothing of one that it has given up") {
  Weather weather = calm;
  weather.late = 1;
  weather.longest_lateness = 5s;
  NetworkFixture world(weather);
  world.network.listen("here:1", [&](std::unique_ptr<Connection> end) {
    world.accepted.emplace_back().end = std::move(end);
  });
  NetworkSocket socket(world.network);
  int connects = 0;
  listen(socket.on_connect, [&] { ++connects; });
  socket.connect("here", 1);
  CHECK(socket.state() == platform::socket_connecting);
  socket.close();
  world.loop.advance(10s);
  CHECK(connects == 0);
  CHECK(socket.state() == platform::socket_closed);
  REQUIRE(world.accepted.size() == 1);
  CHECK_FALSE(world.accepted.front().end->is_open());

  socket.connect("here", 1);
  world.loop.advance(10s);
  CHECK(connects == 1);
  world.accepted.back().end->send("hello");
  world.loop.advance(1s);
  CHECK(socket.get_data() == "hello");
  world.accepted.back().end->close();
  world.loop.advance(1s);
  CHECK(socket.state() == platform::socket_closed);
}

}  // namespace
}  // namespace lineweir::simulation
