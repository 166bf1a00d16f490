#include "platform/client_socket.h"

#include <doctest/doctest.h>

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <memory>

#include "base/failure.h"
#include "platform/qt/qt_client_socket.h"
#include "platform/qt/qt_event_loop.h"
#include "processor_time.h"
#include "support/listen.h"
#include "waiting.h"

using namespace lineweir;
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

int failure_number_of(const std::function<void()>& action) {
  try {
    action();
  } catch (const Failure& failure) {
    return failure.number();
  }
  return 0;
}

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

TEST_CASE_FIXTURE(ClientSocketFixture, "A server that doesn't read has a limit, and closing too") {
  const std::string piece(50000, 'x');
  const auto connect_to_deaf_server = [&] {
    connects = 0;
    connect();
    // One byte in the server's program; the rest fills what the system has for the connection.
    peer->setReadBufferSize(1);
  };
  const auto send_piece = [&] {
    const int number = failure_number_of([&] { socket.send_data(piece); });
    run_for(loop, 1ms);
    return number;
  };

  connect_to_deaf_server();
  int pieces = 0;
  int number = 0;
  while (number == 0 && pieces < 10000) {
    number = send_piece();
    ++pieces;
  }
  CHECK(number == 40006);
  CHECK(socket.state() == socket_closed);

  // Half of what the program itself keeps is still there to be sent at the close.
  connect_to_deaf_server();
  pieces -= static_cast<int>(QtClientSocket::most_unsent) / 50000 / 2;
  while (pieces-- > 0) REQUIRE(send_piece() == 0);
  const auto begin = loop.now();
  socket.close();
  CHECK(loop.now() - begin >= QtClientSocket::longest_flush);
  CHECK(loop.now() - begin < QtClientSocket::longest_flush + 1s);
  CHECK(socket.state() == socket_closed);
}

TEST_CASE_FIXTURE(ClientSocketFixture, "A closed socket tells nothing of what was on the way") {
  socket.connect("127.0.0.1", port());
  CHECK(wait_until(loop, [&] { return server.hasPendingConnections(); }));
  socket.close();
  run_for(loop, 50ms);
  CHECK(connects <= 1);
  CHECK(socket.state() == socket_closed);
}
