// Measures the two ways to a server side by side: how long a command takes there and back, and what
// it costs the window to be told of the lines a thousand times a second. Beside them a bare socket
// that only sends the same bytes there and back, which is the limit.
//
//   link_ways [SECONDS]    on a display; the program test_studio and dbus-daemon must be there

#include <netinet/in.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QHostAddress>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

#include "core/console.h"
#include "dbus/private_bus.h"
#include "dbus/studio_process.h"
#include "desktop/desktop.h"
#include "desktop/program.h"
#include "letters/code_page_letters.h"
#include "letters/code_pages.h"
#include "platform/qt/dbus_remote_objects.h"
#include "platform/qt/qt_client_socket.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/services_with.h"
#include "support/server_packet.h"

namespace lineweir {
namespace {

constexpr int commands = 5000;
constexpr int pushes_a_second = 1000;
constexpr const char* ringing = "R00F01F02F03F04F05F06F07F08F09";
constexpr const char* all_free = "F00F01F02F03F04F05F06F07F08F09";

double processor_seconds() {
  rusage use{};
  ::getrusage(RUSAGE_SELF, &use);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(use.ru_utime) + seconds(use.ru_stime);
}

void report_trips(const char* way, std::vector<double> microseconds) {
  std::ranges::sort(microseconds);
  std::printf("%-16s a command there and back: median %6.0f  99 of 100 %6.0f us\n", way,
              microseconds[microseconds.size() / 2], microseconds[microseconds.size() * 99 / 100]);
}

double microseconds_of(const std::function<void()>& trip) {
  QElapsedTimer time;
  time.start();
  trip();
  return static_cast<double>(time.nsecsElapsed()) / 1e3;
}

// The server's end of the socket, a process of its own. It sends each frame back, and after the
// text "flood" as many states as it is to.
[[noreturn]] void serve(int port_pipe, int states) {
  // Without a console nobody would ever connect.
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  int argc = 0;
  const QCoreApplication application(argc, nullptr);
  QTcpServer server;
  server.listen(QHostAddress::LocalHost);
  const int port = server.serverPort();
  if (::write(port_pipe, &port, sizeof port) != sizeof port) ::_exit(1);
  QObject::connect(&server, &QTcpServer::newConnection, [&] {
    QTcpSocket* peer = server.nextPendingConnection();
    QObject::connect(peer, &QTcpSocket::disconnected, [] { ::_exit(0); });
    QObject::connect(peer, &QTcpSocket::readyRead, [peer, states] {
      const QByteArray bytes = peer->readAll();
      if (!bytes.startsWith("flood")) {
        peer->write(bytes);
        return;
      }
      auto* clock = new QElapsedTimer;
      clock->start();
      auto* timer = new QTimer(peer);
      QObject::connect(timer, &QTimer::timeout, [=, sent = 0]() mutable {
        const auto due = std::min<qint64>(states, clock->elapsed() * pushes_a_second / 1000);
        for (; sent < due; ++sent) {
          const std::string frame = test::frame_of(test::server_packet(
              ServerCommand::SrvFullStatus, sent % 2 == 0 ? ringing : all_free));
          peer->write(frame.data(), static_cast<qint64>(frame.size()));
        }
      });
      timer->start(5);
    });
  });
  QCoreApplication::exec();
  ::_exit(0);
}

std::string told_frame() {
  return test::frame_of(test::server_packet(ServerCommand::SrvMessage, std::string("N05")));
}

void wait_for_bytes(int socket, char* bytes, std::size_t count) {
  if (::recv(socket, bytes, count, MSG_WAITALL) != static_cast<ssize_t>(count)) ::_exit(1);
}

void measure_bare() {
  const std::string frame = told_frame();
  std::string came(frame.size(), '\0');
  const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* name = reinterpret_cast<sockaddr*>(&address);
  if (::bind(listener, name, size) != 0 || ::listen(listener, 1) != 0) std::exit(1);
  ::getsockname(listener, name, &size);
  if (::fork() == 0) {
    const int peer = ::accept(listener, nullptr, nullptr);
    for (int i = 0; i < commands; ++i) {
      wait_for_bytes(peer, came.data(), came.size());
      if (::send(peer, came.data(), came.size(), 0) < 0) ::_exit(1);
    }
    ::_exit(0);
  }
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (::connect(socket, name, size) != 0) std::exit(1);
  std::vector<double> times;
  for (int i = 0; i < commands; ++i) {
    times.push_back(microseconds_of([&] {
      if (::send(socket, frame.data(), frame.size(), 0) < 0) ::_exit(1);
      wait_for_bytes(socket, came.data(), came.size());
    }));
  }
  ::close(socket);
  ::close(listener);
  ::wait(nullptr);
  report_trips("bare socket", times);
}

struct ShownDesk {
  explicit ShownDesk(const platform::Replaced& parts)
      : console(platform::services_with(workstation.services(), parts)) {
    console.startup.Main("");
  }

  // What a second costs while states come in, in percent of a core.
  double cost(platform::EventLoop& loop, int seconds, const std::function<void()>& begin) {
    Desktop desktop(console);
    desktop.flush();
    begin();
    const double before = processor_seconds();
    const auto end = loop.now() + std::chrono::seconds(seconds);
    while (loop.now() < end) loop.yield();
    return (processor_seconds() - before) / seconds * 100;
  }

  platform::ScriptedPlatform workstation;
  Console console;
};

void measure_objects(int seconds) {
  const test::PrivateBus bus;
  test::StudioProcess studio;
  platform::QtEventLoop loop;
  const CodePageLetters letters(default_code_page());
  platform::DBusRemoteObjects objects(loop, letters);
  {
    const auto input = objects.create("Quorlink.SerialInput");
    std::vector<double> times;
    for (int i = 0; i < commands; ++i) {
      times.push_back(microseconds_of([&] {
        input->call("InputSerialPort", {std::int64_t{1}, std::string()});
      }));
    }
    report_trips("remote objects", times);
  }
  ShownDesk desk({.loop = &loop, .remote_objects = &objects});
  desk.console.Lineweir.NetworkConnectionOption.on_click();
  const double cost = desk.cost(loop, seconds, [&] {
    studio.tell("flood " + QByteArray::number(pushes_a_second * seconds) + " " +
                QByteArray::number(pushes_a_second));
  });
  std::printf("%-16s %d states a second: %5.1f %% of a core\n", "remote objects", pushes_a_second,
              cost);
}

void measure_socket(int port, int seconds) {
  platform::QtEventLoop loop;
  platform::QtClientSocket socket(loop);
  ShownDesk desk({.loop = &loop, .winsock1 = &socket});
  socket.connect("127.0.0.1", port);
  while (socket.state() != platform::socket_connected) loop.yield();
  const std::string frame = told_frame();
  std::vector<double> times;
  desk.console.Lineweir.WinsTimer.enabled = false;
  for (int i = 0; i < commands; ++i) {
    times.push_back(microseconds_of([&] {
      socket.send_data(frame);
      std::size_t came = 0;
      while (came < frame.size()) {
        came += socket.get_data().size();
        if (came < frame.size()) loop.yield();
      }
    }));
  }
  report_trips("socket", times);
  desk.console.server.RecString.assign("");
  desk.console.Lineweir.uncheck_coms();
  desk.console.Lineweir.WinsockMenu.checked = true;
  desk.console.Lineweir.WinsTimer.enabled = true;
  const double cost = desk.cost(loop, seconds, [&] { socket.send_data("flood"); });
  std::printf("%-16s %d states a second: %5.1f %% of a core\n", "socket", pushes_a_second, cost);
}

}  // namespace
}  // namespace lineweir

int main(int argc, char** argv) {
  const int seconds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 10;
  lineweir::measure_bare();
  std::fflush(stdout);
  int port_pipe[2];
  if (::pipe(port_pipe) != 0) return 1;
  if (::fork() == 0) lineweir::serve(port_pipe[1], lineweir::pushes_a_second * seconds);
  int port = 0;
  if (::read(port_pipe[0], &port, sizeof port) != sizeof port) return 1;
  const QApplication application(argc, argv);
  lineweir::dress_application();
  lineweir::measure_objects(seconds);
  lineweir::measure_socket(port, seconds);
}
