// The window and a server on a real socket: what a server that is slow, deaf, mad or gone does to
// it. That every frame does what it should, and every time limit, is asked in virtual time.

#include <doctest/doctest.h>

#include <QElapsedTimer>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <memory>

#include "desktop/desktop.h"
#include "platform/qt/qt_client_socket.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/scripted/scripted_platform.h"
#include "serverlink/server_watch.h"
#include "shown_console.h"

#include "platform/services_with.h"
#include "support/server_packet.h"
#include "support/skipping_loop.h"

namespace lineweir {
namespace {

using test::wait_for;

constexpr const char* time_text = "1/2/2026 10:00:00 AM";
constexpr std::string_view all_free = "F00F01F02F03F04F05F06F07F08F09";

std::string frame(ServerCommand command, std::string text = {}, std::uint8_t alt_info = no_value,
                  std::uint8_t line = no_value) {
  ServerPacket packet = test::server_packet(command, std::move(text));
  packet.LineNo = line;
  packet.AltInfo = alt_info;
  return test::frame_of(std::move(packet));
}

// Takes one connection after the other, lets everybody in and tells of a studio with free lines.
class TcpServer {
 public:
  TcpServer() {
    listen(0);
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
      connection.reset(server_.nextPendingConnection());
      connection->setParent(nullptr);
      received_ = {};
      QObject::connect(connection.get(), &QTcpSocket::readyRead, connection.get(),
                       [this] { hear(); });
    });
  }

  void listen(quint16 port) {
    REQUIRE(server_.listen(QHostAddress::LocalHost, port));
    port_ = server_.serverPort();
  }
  void stop_listening() { server_.close(); }
  int port() const { return port_; }

  void send(std::string_view bytes) {
    connection->write(bytes.data(), static_cast<qint64>(bytes.size()));
  }

  void send_byte_by_byte(std::string_view bytes) {
    for (const char byte : bytes) {
      send(std::string_view(&byte, 1));
      connection->flush();
      QCoreApplication::processEvents();
    }
  }

  std::unique_ptr<QTcpSocket> connection;
  bool answers = true;
  bool byte_by_byte = false;
  // Tells the time before it is asked.
  bool has_heartbeat = false;
  std::string status = std::string(all_free);
  int heard = 0;

 private:
  void hear() {
    received_.append(connection->readAll().toStdString());
    while (const auto body = received_.first_body()) {
      const ServerPacket packet = packet_of(*body);
      received_.drop_first();
      ++heard;
      if (answers) answer(static_cast<ClientCommand>(packet.CMD));
    }
  }

  void answer(ClientCommand command) {
    std::string reply;
    switch (command) {
      case ClientCommand::CmdLoginCheck:
        reply = frame(ServerCommand::SrvLoginCheckResult, std::string(test::all_rights), 'F');
        break;
      case ClientCommand::CmdPasswordLogin:
        reply = frame(ServerCommand::SrvPasswordResult, std::string(test::all_rights), 'T');
        break;
      case ClientCommand::CmdConnectConsole:
        if (!has_heartbeat) return;
        reply = frame(ServerCommand::SrvTime, time_text);
        break;
      case ClientCommand::CmdRequestStatus:
        reply = frame(ServerCommand::SrvFullStatus, status);
        break;
      case ClientCommand::CmdRequestStudioStatus:
        reply =
            frame(ServerCommand::SrvStudioStatus,
                  "True\3True\3True\3True\0031\0032\0033\0034\0035\0036\0037\0038\0039\00310\3");
        break;
      case ClientCommand::CmdRequestTimes:
        reply = frame(ServerCommand::SrvTimes, "\3\3\3\3\3\3\3\3\3\0030:00:00\3");
        break;
      case ClientCommand::CmdRequestLineNumbers:
        reply = frame(ServerCommand::SrvLineNumbers, std::string(100, ' '));
        break;
      default:
        return;
    }
    if (byte_by_byte) {
      send_byte_by_byte(reply);
    } else {
      send(reply);
    }
  }

  QTcpServer server_;
  quint16 port_ = 0;
  ReceiveBuffer received_;
};

struct WindowOnServer {
  platform::QtEventLoop real_loop;
  test::SkippingLoop loop{real_loop};
  platform::ScriptedPlatform rest;
  platform::QtClientSocket socket{loop};
  TcpServer server;
  std::vector<std::string> messages;
  Console console{services()};
  Desktop desktop{console};
  // Beats as long as the window is alive, each 5 milliseconds.
  QTimer pulse;
  int beats = 0;

  WindowOnServer() {
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    console.startup.Main("");
    console.login.ServerPort = server.port();
    QObject::connect(&pulse, &QTimer::timeout, &pulse, [this] { ++beats; });
    pulse.start(5);
    desktop.flush();
  }
  ~WindowOnServer() { socket.close(); }

  platform::Services services() {
    return platform::services_with(rest.services(), {.loop = &loop, .winsock1 = &socket});
  }

  MainForm& form() { return console.Lineweir; }

  void connect() {
    form().WinsockMenu.on_click();
    console.WinsockOptions.SockConnect.on_click();
  }

  void stand() {
    connect();
    REQUIRE(session_stands());
  }

  bool session_stands() {
    return wait_for([&] { return console.login.ServerAlive && !form().Timer4.enabled; });
  }

  bool shows(int line, char letter) {
    return wait_for([&] { return console.lines.StatusLetter(line) == letter; });
  }
};

TEST_CASE_FIXTURE(WindowOnServer, "a session stands though each byte comes by itself") {
  server.byte_by_byte = true;
  stand();
  server.send_byte_by_byte(frame(ServerCommand::SrvLineStatus, "R", no_value, 4));
  CHECK(shows(4, 'R'));
  CHECK(messages.empty());
  CHECK(form().mouse_pointer == pointer_default);
}

TEST_CASE_FIXTURE(WindowOnServer, "a server that isn't there is told, and the pointer is free") {
  server.stop_listening();
  // The limit of the wait comes once the window has been seen to be alive.
  QObject::connect(&pulse, &QTimer::timeout, &pulse, [this] {
    if (beats == 40) loop.skip(std::chrono::seconds(5));
  });
  connect();
  CHECK(messages ==
        std::vector<std::string>{"Error communicating remote socket! No Server Available!"});
  CHECK(beats >= 40);
  CHECK(form().mouse_pointer == pointer_default);
  CHECK(console.WinsockOptions.visible);
}

TEST_CASE_FIXTURE(WindowOnServer,
                  "a server that accepts and says nothing leaves the window alive") {
  server.answers = false;
  bool user_acted = false;
  loop.schedule(std::chrono::milliseconds(300), [&] {
    CHECK(form().mouse_pointer == pointer_hourglass);
    CHECK(beats > 10);
    user_acted = true;
    // The user loses patience and tries again, and this time he is let in.
    server.answers = true;
    console.WinsockOptions.SockConnect.on_click();
  });
  connect();
  CHECK(user_acted);
  CHECK(session_stands());
  CHECK(messages.empty());
  CHECK(form().mouse_pointer == pointer_default);
}

TEST_CASE_FIXTURE(WindowOnServer,
                  "half a frame of a connection that is reset spoils no other one") {
  stand();
  const std::string cut = frame(ServerCommand::SrvLineStatus, "C", no_value, 2);
  server.send(cut.substr(0, cut.size() / 2));
  server.connection->flush();
  CHECK(wait_for([&] { return !console.server.RecString.text().empty(); }));
  server.connection->abort();
  CHECK(wait_for([&] { return socket.state() == platform::socket_closed; }));
  server.status = "F00R01F02F03F04F05F06F07F08F09";
  stand();
  CHECK(shows(1, 'R'));
  CHECK(console.lines.StatusLetter(2) != 'C');
  CHECK(messages.empty());
}

TEST_CASE_FIXTURE(WindowOnServer, "a command on a connection that has just ended is told as lost") {
  stand();
  server.connection->abort();
  // Until the end is known commands go into the void.
  CHECK(wait_for([&] {
    console.phone.PhoneCommand("N01", 0);
    return !messages.empty();
  }));
  CHECK(messages.front() == "Lineweir is not currently connected to a server.");
  CHECK(form().mouse_pointer == pointer_default);
}

TEST_CASE_FIXTURE(WindowOnServer, "ten megabytes of garbage are passed over") {
  stand();
  std::uint32_t state = 1;
  std::string garbage;
  for (int i = 0; i < 10'000'000; ++i) {
    state = state * 1664525 + 1013904223;
    garbage += static_cast<char>(state >> 24);
  }
  const int before = beats;
  server.send(garbage);
  server.send("\5\5");
  server.send(frame(ServerCommand::SrvFullStatus, "F00F01F02F03F04F05N06F07F08F09"));
  CHECK(wait_for([&] { return console.lines.StatusLetter(6) == 'N'; }));
  // One that is stuck has one beat at the most, however slow the machine is.
  CHECK(beats - before > 3);
  CHECK(form().mouse_pointer == pointer_default);
}

TEST_CASE_FIXTURE(WindowOnServer,
                  "a flood of states leaves the window alive, and the last one shows") {
  stand();
  constexpr int frames = 100'000;
  constexpr std::string_view letters = "RSHPONCF";
  std::string flood;
  for (int i = 0; i < frames; ++i) {
    const char letter = letters[static_cast<std::size_t>(i / 10) % letters.size()];
    flood += frame(ServerCommand::SrvLineStatus, std::string(1, letter), no_value,
                   static_cast<std::uint8_t>(i % 10));
  }
  for (int line = 0; line < 10; ++line) {
    flood += frame(ServerCommand::SrvLineStatus, line % 2 == 0 ? "R" : "S", no_value,
                   static_cast<std::uint8_t>(line));
  }
  const int before = beats;
  QElapsedTimer time;
  time.start();
  server.send(flood);
  CHECK(wait_for([&] {
    return console.lines.StatusLetter(9) == 'S' && console.server.RecString.text().size() < 2;
  }));
  MESSAGE("the flood took ", time.elapsed(), " ms, the window's pulse beat ", beats - before);
  CHECK(wait_for([&] { return !form().Timer4.enabled.get(); }));
  for (int line = 0; line < 10; ++line) {
    CAPTURE(line);
    CHECK(console.lines.StatusLetter(line) == (line % 2 == 0 ? 'R' : 'S'));
  }
  CHECK(beats - before > 20);
}

TEST_CASE_FIXTURE(WindowOnServer,
                  "a server with a heartbeat is missed at once and comes back by itself") {
  server.has_heartbeat = true;
  stand();
  for (const char letter : {'R', 'S', 'H', 'R', 'S'}) {
    loop.skip(ServerWatch::longest_silence / 3);
    server.send(frame(ServerCommand::SrvTime, time_text));
    server.send(frame(ServerCommand::SrvLineStatus, std::string(1, letter), no_value, 4));
    REQUIRE(shows(4, letter));
    CHECK_FALSE(form().ServerSilence.visible);
  }
  server.answers = false;
  server.stop_listening();
  loop.skip(ServerWatch::longest_silence);
  CHECK(wait_for([&] { return form().ServerSilence.visible.get(); }));
  CHECK(form().ServerSilence.caption.get().starts_with("No word from the server since "));
  CHECK_FALSE(form().no_link.get().empty());
  server.status = "F00F01F02C03F04F05F06F07F08F09";
  server.answers = true;
  server.listen(static_cast<quint16>(server.port()));
  loop.skip(ServerWatch::between_tries);
  CHECK(wait_for([&] { return !form().ServerSilence.visible.get(); }));
  CHECK(console.lines.StatusLetter(3) == 'C');
  CHECK(form().no_link.get().empty());
  CHECK_FALSE(console.MyMsgbox.visible);
}

TEST_CASE_FIXTURE(WindowOnServer, "a window whose server dies is on the other within seconds") {
  TcpServer other;
  const std::string first = "127.0.0.1:" + std::to_string(server.port());
  const std::string second = "127.0.0.1:" + std::to_string(other.port());
  console.login.ServerHost = first + ", " + second;
  for (TcpServer* each : {&server, &other}) each->has_heartbeat = true;
  other.status = "F00F01F02C03F04F05F06F07F08F09";
  stand();
  for (int beat = 0; beat < 4; ++beat) {
    const int frames = console.server.frames();
    server.send(frame(ServerCommand::SrvTime, time_text));
    REQUIRE(wait_for([&] { return console.server.frames() > frames; }));
    loop.skip(std::chrono::seconds(1));
  }
  const auto& lamp = *desktop.main_frame().main_window()->canvas().widget_of(form().Shape1);
  desktop.flush();
  CHECK(lamp.tool_tip().toStdString().starts_with("127.0.0.1, port " +
                                                  std::to_string(server.port()) + ", since "));
  QElapsedTimer time;
  time.start();
  server.stop_listening();
  server.connection->abort();
  CHECK(wait_for([&] { return form().ServerSilence.visible.get(); }));
  CHECK(form().ServerSilence.caption.get().ends_with(", trying " + first + " and " + second));
  CHECK(wait_for([&] { return shows(3, 'C') && !form().ServerSilence.visible; }));
  CHECK(time.elapsed() < 5000);
  desktop.flush();
  CHECK(lamp.tool_tip().toStdString().starts_with("127.0.0.1, port " +
                                                  std::to_string(other.port()) + ", since "));
  CHECK_FALSE(console.MyMsgbox.visible);
}

}  // namespace
}  // namespace lineweir
