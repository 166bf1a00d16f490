#include <doctest/doctest.h>
#include <sys/resource.h>

#include <optional>
#include <vector>

#include "platform/asio/loop_peer.h"
#include "platform/asio/tcp_listener.h"
#include "platform/waiting.h"

using namespace lineweir;
using namespace lineweir::platform;
using namespace std::chrono_literals;
using lineweir::test::Peer;

namespace {

// A server that keeps what comes.
struct TcpFixture {
  AsioLoop loop;
  std::vector<std::string> troubles;
  TcpListener listener{loop,
                       {.address = "127.0.0.1", .on_trouble = [this](const std::string& text) {
                          troubles.push_back(text);
                        }}};
  std::unique_ptr<Connection> connection;
  std::string received;
  std::optional<ConnectionEnd> end;

  TcpFixture() {
    listener.on_connection = [this](std::unique_ptr<Connection> came) {
      connection = std::move(came);
      set_handlers();
    };
    listener.accept();
  }
  void set_handlers() {
    connection->on_bytes = [this](std::string_view bytes) { received += bytes; };
    connection->on_end = [this](ConnectionEnd reason) {
      CHECK_FALSE(end);
      end = reason;
    };
  }
  Peer connect(int receive_buffer = 0) {
    Peer peer = Peer::tcp("127.0.0.1", listener.port(), receive_buffer);
    REQUIRE(wait_until(loop, [&] { return connection != nullptr; }));
    return peer;
  }
  bool wait(const std::function<bool()>& condition) { return wait_until(loop, condition); }
};

std::string some_bytes(std::size_t count) {
  std::string bytes(count, '\0');
  for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<char>(i * 7 + i / 251);
  return bytes;
}

}  // namespace

TEST_CASE_FIXTURE(TcpFixture, "Megabytes go both ways, in pieces, whole and in order") {
  Peer peer = connect();
  CHECK(connection->peer() == "127.0.0.1");
  connection->on_bytes = [this](std::string_view bytes) {
    received += bytes;
    connection->send(bytes);
  };
  const std::string all = some_bytes(8'000'000);
  std::string echo;
  std::size_t sent = 0;
  std::size_t piece = 1;
  REQUIRE(wait([&] {
    // No more is under way than the queue holds.
    if (sent < all.size() && sent - echo.size() < 30'000) {
      sent += peer.write(std::string_view(all).substr(sent, piece));
      piece = piece * 3 % 20'011 + 1;
    }
    echo += peer.read();
    return echo.size() == all.size() || peer.ended();
  }));
  CHECK(received == all);
  CHECK(echo == all);
}

TEST_CASE_FIXTURE(TcpFixture, "What one handler sends goes out in one piece") {
  Peer peer = connect();
  for (int i = 0; i < 100; ++i) connection->send("frame");
  CHECK(connection->queued() == 500);
  CHECK(peer.read().empty());
  std::string first;
  REQUIRE(wait([&] {
    first = peer.read();
    return !first.empty();
  }));
  CHECK(first.size() == 500);
  CHECK(wait([&] { return connection->queued() == 0; }));
}

TEST_CASE_FIXTURE(TcpFixture, "A peer that doesn't read is cut off, and told so") {
  Peer peer = connect(4096);
  const std::string piece = some_bytes(8000);
  std::size_t sent = 0;
  REQUIRE(wait([&] {
    if (!end) {
      connection->send(piece);
      sent += piece.size();
      CHECK(connection->queued() <= Connection::queue_bound);
    }
    return end.has_value();
  }));
  CHECK(*end == ConnectionEnd::Overflow);
  // The queue, and small buffers of the system on both sides.
  CHECK(sent > Connection::queue_bound);
  CHECK(sent < Connection::queue_bound + 200'000);
  connection->send("more");
  CHECK(connection->queued() == 0);
  REQUIRE(wait([&] {
    peer.read();
    return peer.ended();
  }));
  CHECK(peer.error() == ECONNRESET);
}

TEST_CASE_FIXTURE(TcpFixture,
                  "What would pass the bound is dropped whole, and the end told later") {
  Peer peer = connect(4096);
  const std::string piece = some_bytes(8000);
  while (connection->queued() + piece.size() <= Connection::queue_bound) {
    connection->send(piece);
    run_for(loop, 1ms);
  }
  connection->send(std::string(Connection::queue_bound - connection->queued(), 'x'));
  CHECK(connection->queued() == Connection::queue_bound);
  connection->send("y");
  CHECK(connection->queued() == 0);
  CHECK_FALSE(end);
  REQUIRE(wait([&] { return end.has_value(); }));
  CHECK(*end == ConnectionEnd::Overflow);
}

TEST_CASE_FIXTURE(TcpFixture, "A peer that keeps up gets all that a round has for it") {
  Peer peer = connect();
  const std::string all = some_bytes(5 * Connection::queue_bound);
  std::string got;
  for (int round = 0; round < 3; ++round) {
    got.clear();
    for (std::size_t sent = 0; sent < all.size(); sent += Connection::queue_bound / 2) {
      connection->send(std::string_view(all).substr(sent, Connection::queue_bound / 2));
    }
    REQUIRE(wait([&] {
      got += peer.read();
      return got.size() >= all.size() || end.has_value();
    }));
    CHECK(got == all);
    CHECK(wait([&] { return connection->queued() == 0; }));
  }
  CHECK_FALSE(end);
}

TEST_CASE_FIXTURE(TcpFixture, "What a round has for a peer has a bound too") {
  Peer peer = connect();
  const std::string piece(Connection::queue_bound, 'x');
  for (int i = 0; i < 16; ++i) connection->send(piece);
  CHECK(connection->queued() == 16 * piece.size());
  connection->send("y");
  CHECK(connection->queued() == 0);
  REQUIRE(wait([&] { return end.has_value(); }));
  CHECK(*end == ConnectionEnd::Overflow);
}

TEST_CASE_FIXTURE(TcpFixture, "A peer that closes is gone, with all that it said before") {
  Peer peer = connect();
  peer.write("last words");
  peer.close();
  REQUIRE(wait([&] { return end.has_value(); }));
  CHECK(received == "last words");
  CHECK(*end == ConnectionEnd::Gone);
}

TEST_CASE_FIXTURE(TcpFixture, "A peer that closes its half is gone") {
  Peer peer = connect();
  peer.close_sending();
  REQUIRE(wait([&] { return end.has_value(); }));
  CHECK(*end == ConnectionEnd::Gone);
  connection.reset();
  CHECK(wait([&] {
    peer.read();
    return peer.ended();
  }));
}

TEST_CASE_FIXTURE(TcpFixture, "What comes before the handlers are set is kept") {
  listener.on_connection = [this](std::unique_ptr<Connection> came) {
    connection = std::move(came);
  };
  Peer peer = connect();
  peer.write("hello");
  peer.close();
  run_for(loop, 50ms);
  set_handlers();
  CHECK(received.empty());
  REQUIRE(wait([&] { return end.has_value(); }));
  CHECK(received == "hello");
  CHECK(*end == ConnectionEnd::Gone);
}

TEST_CASE_FIXTURE(TcpFixture, "What is queued goes out behind the owner's back") {
  Peer peer = connect(4096);
  // More than the system takes at once, and bytes that nobody reads any more.
  const std::string all = some_bytes(60'000);
  connection->send(all);
  connection->close_when_sent();
  connection->send("too late");
  peer.write("unread");
  connection.reset();
  std::string got;
  REQUIRE(wait([&] {
    got += peer.read();
    return peer.ended();
  }));
  CHECK(got == all);
  CHECK(peer.error() == 0);
  CHECK(received.empty());
  CHECK_FALSE(end);
}

TEST_CASE_FIXTURE(TcpFixture, "A peer that sends no more still gets what is queued") {
  Peer peer = connect(4096);
  const std::string all = some_bytes(60'000);
  connection->send(all);
  connection->close_when_sent();
  peer.close_sending();
  run_for(loop, 20ms);
  std::string got;
  REQUIRE(wait([&] {
    got += peer.read();
    return peer.ended();
  }));
  CHECK(got == all);
}

TEST_CASE_FIXTURE(TcpFixture, "What is queued for a peer that doesn't read is given up") {
  Peer peer = connect(4096);
  connection->send(std::string(Connection::queue_bound, 'x'));
  connection->close_when_sent();
  connection.reset();
  const auto begin = loop.now();
  // An answer is told by the system once the other end lets go.
  REQUIRE(wait([&] { return peer.write("?") == 0; }));
  CHECK(loop.now() - begin >= 1900ms);
  CHECK(loop.now() - begin < 5s);
}

TEST_CASE_FIXTURE(TcpFixture,
                  "Without a word a connection that is destroyed loses what it queued") {
  Peer peer = connect();
  connection->send("never seen");
  connection.reset();
  std::string got;
  REQUIRE(wait([&] {
    got += peer.read();
    return peer.ended();
  }));
  CHECK(got.empty());
}

TEST_CASE_FIXTURE(TcpFixture, "A connection may be destroyed by its own handlers") {
  SUBCASE("of bytes") {
    Peer peer = connect();
    connection->on_bytes = [this, marker = std::string(100, 'm')](std::string_view bytes) {
      connection.reset();
      // What the handler holds still stands.
      received = marker + std::string(bytes);
    };
    peer.write("go");
    REQUIRE(wait([&] { return !received.empty(); }));
    CHECK(received == std::string(100, 'm') + "go");
    CHECK(wait([&] {
      peer.read();
      return peer.ended();
    }));
  }
  SUBCASE("of the end") {
    Peer peer = connect();
    connection->on_end = [this, marker = std::string(100, 'm')](ConnectionEnd) {
      connection.reset();
      received = marker;
    };
    peer.close();
    REQUIRE(wait([&] { return !received.empty(); }));
    CHECK(received == std::string(100, 'm'));
  }
}

TEST_CASE_FIXTURE(TcpFixture, "A connection that is not taken is closed") {
  listener.on_connection = nullptr;
  Peer peer = Peer::tcp("127.0.0.1", listener.port());
  CHECK(wait([&] {
    peer.read();
    return peer.ended();
  }));
}

TEST_CASE("A listener that is gone listens no more, and its connections stay") {
  AsioLoop loop;
  std::unique_ptr<Connection> connection;
  auto listener = std::make_unique<TcpListener>(loop, TcpListener::Options{.address = "127.0.0.1"});
  const std::uint16_t port = listener->port();
  listener->on_connection = [&](std::unique_ptr<Connection> came) { connection = std::move(came); };
  Peer early = Peer::tcp("127.0.0.1", port);
  CHECK_FALSE(connection);
  listener->accept();
  REQUIRE(wait_until(loop, [&] { return connection != nullptr; }));
  listener.reset();
  CHECK_THROWS(Peer::tcp("127.0.0.1", port));
  connection->send("still here");
  std::string got;
  CHECK(wait_until(loop, [&] {
    got += early.read();
    return got == "still here";
  }));
}

TEST_CASE("A port that is taken, or an address of another machine, is told in a sentence") {
  AsioLoop loop;
  const TcpListener first(loop, {.address = "127.0.0.1"});
  const std::string taken = "127.0.0.1:" + std::to_string(first.port());
  CHECK_THROWS_WITH(TcpListener(loop, {.address = "127.0.0.1", .port = first.port()}),
                    ("Can't listen on " + taken + ": Address already in use").c_str());
  CHECK_THROWS_WITH(TcpListener(loop, {.address = "192.0.2.1", .port = 2001}),
                    "Can't listen on 192.0.2.1:2001: Cannot assign requested address");
}

TEST_CASE("Addresses of version 6 are listened on for themselves") {
  AsioLoop loop;
  std::unique_ptr<Connection> connection;
  TcpListener six(loop, {.address = "::1"});
  const TcpListener four(loop, {.address = "127.0.0.1", .port = six.port()});
  six.on_connection = [&](std::unique_ptr<Connection> came) { connection = std::move(came); };
  six.accept();
  const Peer peer = Peer::tcp("::1", six.port());
  REQUIRE(wait_until(loop, [&] { return connection != nullptr; }));
  CHECK(connection->peer() == "::1");
}

TEST_CASE_FIXTURE(TcpFixture, "What is taken down before a round's sending is not sent") {
  Peer peer = connect();
  bool may_send = true;
  loop.before_sending = [&] {
    if (!may_send) connection.reset();
  };
  connection->send("first");
  REQUIRE(wait([&] { return peer.read() == "first"; }));
  may_send = false;
  connection->send("second");
  std::string rest;
  CHECK(wait([&] {
    rest += peer.read();
    return peer.ended();
  }));
  CHECK(rest.empty());
}

TEST_CASE_FIXTURE(TcpFixture, "The rest of what found no room goes out only if it still may") {
  Peer peer = connect(4096);
  const std::string piece = some_bytes(8000);
  std::size_t sent = 0;
  while (connection->queued() < 20'000) {
    connection->send(piece);
    sent += piece.size();
    loop.yield();
  }
  const std::size_t gone = sent - connection->queued();
  loop.before_sending = [&] { connection.reset(); };
  std::string all;
  CHECK(wait([&] {
    all += peer.read();
    return peer.ended();
  }));
  CHECK(all.size() == gone);
  CHECK_FALSE(connection);
}

TEST_CASE_FIXTURE(TcpFixture, "Without descriptors peers wait until there are some again") {
  Peer first = connect();
  connection.reset();
  rlimit before{};
  ::getrlimit(RLIMIT_NOFILE, &before);
  Peer waiting = Peer::tcp("127.0.0.1", listener.port());
  rlimit none = before;
  none.rlim_cur = 3;
  ::setrlimit(RLIMIT_NOFILE, &none);
  const bool told = wait([&] { return !troubles.empty(); });
  CHECK_FALSE(connection);
  run_for(loop, 300ms);
  ::setrlimit(RLIMIT_NOFILE, &before);
  REQUIRE(told);
  CHECK(troubles ==
        std::vector<std::string>{"Nobody can connect for the moment: Too many open files"});
  REQUIRE(wait([&] { return connection != nullptr; }));
  waiting.write("patience");
  CHECK(wait([&] { return received == "patience"; }));
}
