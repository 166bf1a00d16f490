#include "platform/scripted/scripted_client_socket.h"

#include <doctest/doctest.h>

#include "platform/scripted/virtual_event_loop.h"
#include "support/failure_number.h"
#include "support/listen.h"

namespace lineweir::platform {
namespace {

using test::failure_number_of;
using Texts = std::vector<std::string>;

struct SocketFixture {
  SocketFixture() {
    listen(socket.on_connect, [this] { events += "C"; });
    listen(socket.on_data_arrival, [this] { events += "D"; });
  }

  void connect() {
    socket.accept_connections(true);
    socket.connect("server", 2001);
    loop.advance(Milliseconds(20));
  }

  VirtualEventLoop loop;
  ScriptedClientSocket socket{loop};
  std::string events;
};

TEST_CASE_FIXTURE(SocketFixture, "A connection takes 20 milliseconds") {
  socket.accept_connections(true);
  CHECK(socket.state() == socket_closed);
  socket.connect("server", 2001);
  CHECK(socket.state() == socket_connecting);
  loop.advance(Milliseconds(19));
  CHECK(socket.state() == socket_connecting);
  loop.advance(Milliseconds(1));
  CHECK(socket.state() == socket_connected);
  CHECK(events == "C");
  CHECK(socket.host() == "server");
  CHECK(socket.port() == 2001);
}

TEST_CASE_FIXTURE(SocketFixture, "A server that refuses leaves the socket closed") {
  socket.connect("server", 2001);
  loop.advance(Milliseconds(10000));
  CHECK(socket.state() == socket_closed);
  CHECK(events.empty());
}

TEST_CASE_FIXTURE(SocketFixture, "Closing gives up a connection that is being made") {
  socket.accept_connections(true);
  socket.connect("server", 2001);
  socket.close();
  loop.advance(Milliseconds(20));
  CHECK(socket.state() == socket_closed);
  CHECK(events.empty());
}

TEST_CASE_FIXTURE(SocketFixture, "Received bytes are counted until they are taken") {
  connect();
  socket.arrive("abc");
  CHECK(socket.bytes_received() == 0);
  loop.run_pending();
  CHECK(socket.bytes_received() == 3);
  CHECK(socket.get_data() == "abc");
  CHECK(socket.bytes_received() == 0);
  CHECK(events == "CD");
}

TEST_CASE_FIXTURE(SocketFixture, "Without a connection nothing arrives and nothing goes out") {
  socket.arrive("abc");
  loop.run_pending();
  CHECK(socket.bytes_received() == 0);
  CHECK(failure_number_of([&] { socket.send_data("x"); }) == failure_number::socket_wrong_state);
  connect();
  CHECK(failure_number_of([&] { socket.connect("other", 1); }) ==
        failure_number::socket_wrong_state);
}

TEST_CASE_FIXTURE(SocketFixture, "A frame is answered by its command code") {
  connect();
  socket.reply(21, "answer");
  socket.send_data("\x04\x04\x15rest");
  socket.send_data("\x04\x04\x16rest");
  socket.send_data("\x04\x04");
  socket.send_data("xx\x15");
  loop.advance(Milliseconds(20));
  CHECK(socket.get_data() == "answer");
  CHECK(socket.take_writes() ==
        Texts{"\x04\x04\x15rest", "\x04\x04\x16rest", "\x04\x04", "xx\x15"});
  CHECK(socket.take_writes().empty());
}

TEST_CASE_FIXTURE(SocketFixture, "A code of 128 and more is a byte like any other") {
  connect();
  socket.reply(200, "answer");
  socket.send_data("\x04\x04\xC8");
  loop.advance(Milliseconds(20));
  CHECK(socket.get_data() == "answer");
}

TEST_CASE_FIXTURE(SocketFixture, "What is on its way ends with its connection") {
  connect();
  socket.reply(21, "answer");
  socket.send_data("\x04\x04\x15");
  socket.close();
  socket.connect("server", 2001);
  loop.advance(Milliseconds(100));
  CHECK(socket.state() == socket_connected);
  CHECK(socket.bytes_received() == 0);
}

TEST_CASE_FIXTURE(SocketFixture, "What arrived before the server went can still be taken") {
  connect();
  socket.arrive("abc");
  loop.run_pending();
  socket.drop();
  CHECK(socket.state() == socket_closed);
  CHECK(socket.get_data() == "abc");
}

TEST_CASE_FIXTURE(SocketFixture, "A connection can be said to stand") {
  socket.stand_connected();
  CHECK(socket.state() == socket_connected);
  CHECK(events.empty());
  socket.arrive("abc");
  loop.run_pending();
  CHECK(events == "D");
  CHECK(socket.take_writes().empty());
}

}  // namespace
}  // namespace lineweir::platform
