#include "platform/client_socket.h"

#include <doctest/doctest.h>

#include <QDir>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <memory>

#include "platform/qt/qt_client_socket.h"
#include "platform/qt/qt_event_loop.h"
#include "processor_time.h"
#include "support/failure_number.h"
#include "support/listen.h"
#include "waiting.h"

using namespace lineweir;
using lineweir::test::failure_number_of;
using namespace lineweir::platform;
using namespace std::chrono_literals;

namespace {

struct ClientSocketFixture {
  QtEventLoop loop;
  QTcpServer server;
  std::unique_ptr<QTcpSocket> peer;
  QtClientSocket socket{loop};
  std::string received;
  int connects = 0;

  ClientSocketFixture() {
    REQUIRE(server.listen(QHostAddress::LocalHost));
    listen(socket.on_connect, [this] { ++connects; });
    listen(socket.on_data_arrival, [this] { received += socket.get_data(); });
  }

  int port() const { return server.serverPort(); }

  void connect() {
    socket.connect("127.0.0.1", port());
    REQUIRE(wait_until(loop, [&] { return connects > 0 && server.hasPendingConnections(); }));
    peer.reset(server.nextPendingConnection());
    peer->setParent(nullptr);
  }

  std::string take_from_peer() { return peer->readAll().toStdString(); }
};

}  // namespace

TEST_CASE_FIXTURE(ClientSocketFixture, "A connection is closed, connecting, connected, closed") {
  CHECK(socket.state() == socket_closed);
  socket.connect("localhost", port());
  CHECK(socket.state() == socket_connecting);
  CHECK(connects == 0);
  CHECK(wait_until(loop, [&] { return socket.state() == socket_connected; }));
  CHECK(wait_until(loop, [&] { return connects == 1; }));
  socket.close();
  CHECK(socket.state() == socket_closed);
  socket.close();
}

TEST_CASE_FIXTURE(ClientSocketFixture, "Bytes go both ways in order") {
  connect();
  std::string all;
  for (int i = 0; i < 100000; ++i) all += static_cast<char>(i * 7);
  for (std::size_t at = 0; at < all.size(); at += 1000) socket.send_data(all.substr(at, 1000));
  std::string taken;
  CHECK(wait_until(loop, [&] { return (taken += take_from_peer()).size() >= all.size(); }));
  CHECK(taken == all);

  peer->write(all.data(), static_cast<qint64>(all.size()));
  CHECK(wait_until(loop, [&] { return received.size() >= all.size(); }));
  CHECK(received == all);
  CHECK(socket.bytes_received() == 0);
  CHECK(socket.get_data().empty());
}

TEST_CASE_FIXTURE(ClientSocketFixture, "Received bytes are counted until they are taken") {
  connect();
  socket.on_data_arrival.forget_handler();
  peer->write("abc");
  CHECK(wait_until(loop, [&] { return socket.bytes_received() == 3; }));
  peer->write("de");
  CHECK(wait_until(loop, [&] { return socket.bytes_received() == 5; }));
  CHECK(socket.get_data() == "abcde");
  CHECK(socket.bytes_received() == 0);
}

TEST_CASE_FIXTURE(ClientSocketFixture, "A handler that waits within an arrival gets the next one") {
  connect();
  std::string inner;
  listen(socket.on_data_arrival, [&] {
    received += socket.get_data();
    if (received == "a") {
      peer->write("b");
      CHECK(wait_until(loop, [&] { return received == "ab"; }));
      inner = received;
    }
  });
  peer->write("a");
  CHECK(wait_until(loop, [&] { return inner == "ab"; }));
}

TEST_CASE_FIXTURE(ClientSocketFixture, "What the state forbids is failure 40006") {
  CHECK(failure_number_of([&] { socket.send_data("x"); }) == 40006);
  CHECK(socket.get_data().empty());
  CHECK(socket.bytes_received() == 0);
  socket.connect("127.0.0.1", port());
  CHECK(failure_number_of([&] { socket.connect("127.0.0.1", port()); }) == 40006);
  socket.close();
  connects = 0;
  connect();
  CHECK(failure_number_of([&] { socket.connect("127.0.0.1", port()); }) == 40006);
  CHECK(socket.state() == socket_connected);
}

TEST_CASE_FIXTURE(ClientSocketFixture, "A port that can't be is refused") {
  for (int number : {-1, 0, 65536, 1000000}) {
    CHECK(failure_number_of([&] { socket.connect("127.0.0.1", number); }) == 5);
  }
  CHECK(socket.state() == socket_closed);
}

TEST_CASE_FIXTURE(ClientSocketFixture, "A server that isn't there leaves the socket closed") {
  const int nobody = port();
  server.close();
  socket.connect("127.0.0.1", nobody);
  CHECK(wait_until(loop, [&] { return socket.state() == socket_closed; }));
  run_for(loop, 50ms);
  CHECK(connects == 0);
  CHECK(failure_number_of([&] { socket.send_data("x"); }) == 40006);
}

TEST_CASE_FIXTURE(ClientSocketFixture, "What came before the server closed can still be taken") {
  connect();
  socket.on_data_arrival.forget_handler();
  peer->write("last words");
  peer->disconnectFromHost();
  CHECK(wait_until(loop, [&] { return socket.state() == socket_closed; }));
  CHECK(socket.bytes_received() == 10);
  CHECK(socket.get_data() == "last words");
  const auto before = processor_time();
  run_for(loop, 300ms);
  CHECK(processor_time() - before < 20ms);
}

TEST_CASE_FIXTURE(ClientSocketFixture, "A new connection knows nothing of the one before") {
  connect();
  socket.on_data_arrival.forget_handler();
  peer->write("old");
  peer->disconnectFromHost();
  CHECK(wait_until(loop, [&] { return socket.state() == socket_closed; }));
  CHECK(socket.bytes_received() == 3);
  connects = 0;
  connect();
  CHECK(socket.bytes_received() == 0);
  peer->write("new");
  CHECK(wait_until(loop, [&] { return socket.bytes_received() == 3; }));
  CHECK(socket.get_data() == "new");
}

TEST_CASE_FIXTURE(ClientSocketFixture, "What was sent before a close arrives") {
  connect();
  // No more than the system takes at once: the server reads in this thread, so not meanwhile.
  const std::string all(30000, 'x');
  socket.send_data(all);
  socket.close();
  std::string taken;
  CHECK(wait_until(loop, [&] {
    taken += take_from_peer();
    return peer->state() == QAbstractSocket::UnconnectedState;
  }));
  CHECK(taken == all);
}

namespace {

struct DeafServerFixture : ClientSocketFixture {
  const std::string piece = std::string(50000, 'x');
  int system_room = 32 * 1024;

  void connect_to_deaf_server() {
    connects = 0;
    connect();
    // One byte in the server's program, little in its system; the rest stays on this side.
    peer->setReadBufferSize(1);
    peer->setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, system_room);
  }

  int send_piece() {
    const int number = failure_number_of([&] { socket.send_data(piece); });
    run_for(loop, 1ms);
    return number;
  }

  // Sends so much at once that a part of it stays in this program, and closes.
  std::size_t send_much_and_close() {
    connect_to_deaf_server();
    std::size_t pieces = 0;
    while (send_piece() == 0) ++pieces;
    connect_to_deaf_server();
    pieces -= 5;
    for (std::size_t i = 0; i < pieces; ++i) REQUIRE(send_piece() == 0);
    const auto begin = loop.now();
    socket.close();
    CHECK(loop.now() - begin < 100ms);
    CHECK(socket.state() == socket_closed);
    return pieces * piece.size();
  }

  std::size_t all_that_comes(QTcpSocket& from) {
    std::size_t count = 0;
    from.setReadBufferSize(0);
    CHECK(wait_until(loop, [&] {
      count += static_cast<std::size_t>(from.readAll().size());
      return from.state() == QAbstractSocket::UnconnectedState;
    }));
    return count;
  }
};

}  // namespace

TEST_CASE_FIXTURE(DeafServerFixture, "A server that doesn't read has a limit") {
  connect_to_deaf_server();
  int pieces = 0;
  int number = 0;
  while (number == 0 && pieces < 10000) {
    number = send_piece();
    ++pieces;
  }
  CHECK(number == 40006);
  CHECK(socket.state() == socket_closed);
}

TEST_CASE_FIXTURE(DeafServerFixture, "A close waits for no server, and what was sent arrives") {
  const std::size_t sent = send_much_and_close();
  const std::unique_ptr<QTcpSocket> deaf = std::move(peer);
  connects = 0;
  connect();
  CHECK(deaf->state() == QAbstractSocket::ConnectedState);
  CHECK(all_that_comes(*deaf) == sent);
  CHECK(socket.state() == socket_connected);
}

TEST_CASE_FIXTURE(DeafServerFixture, "A closed connection to a deaf server ends after a while") {
  system_room = 4096;
  send_much_and_close();
  const auto open_files = [] { return QDir("/proc/self/fd").count(); };
  const auto open_before = open_files();
  CHECK(wait_until(loop, [&] { return open_files() == open_before - 1; }));
}

TEST_CASE_FIXTURE(ClientSocketFixture, "What was sent before the end of the program arrives") {
  const std::string all(1000, 'x');
  {
    QtClientSocket ending(loop);
    ending.connect("127.0.0.1", port());
    REQUIRE(wait_until(loop, [&] { return ending.state() == socket_connected; }));
    REQUIRE(wait_until(loop, [&] { return server.hasPendingConnections(); }));
    peer.reset(server.nextPendingConnection());
    peer->setParent(nullptr);
    ending.send_data(all);
    ending.close();
  }
  std::string taken;
  CHECK(wait_until(loop, [&] { return (taken += take_from_peer()).size() >= all.size(); }));
  CHECK(taken == all);
}

TEST_CASE_FIXTURE(ClientSocketFixture, "A closed socket tells nothing of what was on the way") {
  socket.connect("127.0.0.1", port());
  CHECK(wait_until(loop, [&] { return server.hasPendingConnections(); }));
  socket.close();
  run_for(loop, 50ms);
  CHECK(connects <= 1);
  CHECK(socket.state() == socket_closed);
}
