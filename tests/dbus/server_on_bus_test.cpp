// lineweir-server as it is started, with consoles that reach it through its remote objects.

#include <doctest/doctest.h>
#include <signal.h>

#include <QProcess>
#include <optional>

#include "core/console.h"
#include "dbus/private_bus.h"
#include "letters/code_page_letters.h"
#include "letters/code_pages.h"
#include "platform/qt/dbus_remote_objects.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/services_with.h"
#include "platform/temporary_directory.h"
#include "platform/waiting.h"
#include "serverd/started_server.h"

using namespace lineweir;
using lineweir::test::PrivateBus;
using lineweir::test::StartedServer;

namespace {

constexpr const char* configuration =
    "listen = \"127.0.0.1:0\"\n"
    "store = \"sqlite:server.db\"\n"
    "admin_socket = \"admin.sock\"\n"
    "remote_objects = \"session\"\n"
    "shutdown_seconds = 0\n"
    "[[group]]\n"
    "number = 1\n"
    "name = \"Morning\"\n"
    "[[group]]\n"
    "number = 2\n"
    "name = \"Évening\"\n";

// A console on the bus.
struct BusConsole {
  explicit BusConsole(platform::QtEventLoop& on_loop) : loop(on_loop) {
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    console.startup.Main("");
    console.Lineweir.NetworkConnectionOption.on_click();
  }

  bool shows(int line, char letter) {
    return wait_until(loop, [&] { return console.lines.StatusLetter(line) == letter; });
  }
  bool lost() const { return console.Lineweir.ServerSilence.visible; }

  platform::QtEventLoop& loop;
  CodePageLetters letters{default_code_page()};
  platform::DBusRemoteObjects remote_objects{loop, letters};
  platform::ScriptedPlatform workstation;
  std::vector<std::string> messages;
  Console console{platform::services_with(workstation.services(),
                                          {.loop = &loop, .remote_objects = &remote_objects})};
};

struct StudioOnBus {
  StudioOnBus() { start(); }

  void start() {
    server.emplace(folder, configuration);
    REQUIRE(server->wait_until_ready() > 0);
    REQUIRE_FALSE(server->wait_for_log("remote objects stand").empty());
  }
  // Returns what the administrator's tool prints.
  QByteArray admin(const QStringList& words) {
    QProcess tool;
    const QString socket = QString::fromStdString((folder.path() / "admin.sock").string());
    tool.start(QStringLiteral(LINEWEIR_ADMIN), QStringList{"--socket", socket} + words);
    REQUIRE(tool.waitForFinished());
    CHECK(tool.exitCode() == 0);
    return tool.readAllStandardOutput();
  }
  void somebody_calls(int group, int line) {
    admin({"call", QString::number(group), QString::number(line), "--number", "555 0100"});
  }

  PrivateBus bus;
  TemporaryDirectory folder;
  platform::QtEventLoop loop;
  std::optional<StartedServer> server;
};

// A program that goes on until this object goes. What it has printed is read line by line.
struct Watcher {
  explicit Watcher(const QStringList& words) {
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(QStringLiteral("/usr/bin/python3"),
                  QStringList{QStringLiteral(LINEWEIR_EXAMPLES "/watch_studio.py")} + words);
    REQUIRE(program.waitForStarted());
  }
  ~Watcher() {
    program.kill();
    program.waitForFinished();
  }
  // Whether such a line comes within so many seconds; those before it are passed over.
  bool prints(const QByteArray& part) {
    constexpr int limit = 10'000;
    for (;;) {
      while (!program.canReadLine()) {
        if (!program.waitForReadyRead(limit)) return false;
      }
      if (program.readLine().contains(part)) return true;
    }
  }

  QProcess program;
};

}  // namespace

TEST_SUITE("a server on a bus") {
  TEST_CASE_FIXTURE(StudioOnBus, "two consoles work one show through its remote objects") {
    BusConsole host(loop);
    BusConsole screener(loop);
    for (BusConsole* desk : {&host, &screener}) {
      CHECK(desk->messages.empty());
      CHECK(desk->console.Lineweir.no_link.get().empty());
      CHECK(desk->console.Lineweir.StudioGr(0).caption == "Morning");
      CHECK(desk->console.Lineweir.StudioGr(1).caption == "\xC9vening");
    }
    somebody_calls(1, 3);
    CHECK(host.shows(2, 'R'));
    CHECK(screener.shows(2, 'R'));
    screener.console.phone.PhoneCommand("P02", bank_main);
    CHECK(screener.shows(2, 'P'));
    CHECK(host.shows(2, 'P'));
    screener.console.phone.PhoneCommand("S02", bank_main);
    CHECK(host.shows(2, 'S'));
    host.console.phone.PhoneCommand("N02", bank_main);
    CHECK(screener.shows(2, 'N'));
    CHECK(host.shows(2, 'N'));
    host.console.phone.PhoneCommand("F02", bank_main);
    CHECK(screener.shows(2, ' '));
    CHECK(host.messages.empty());
    CHECK(screener.messages.empty());
  }

  TEST_CASE_FIXTURE(StudioOnBus, "caller data, next call and messages reach the other console") {
    BusConsole host(loop);
    BusConsole screener(loop);
    somebody_calls(1, 3);
    CHECK(screener.shows(2, 'R'));
    screener.console.phone.PhoneCommand("S02", bank_main);
    CHECK(host.shows(2, 'S'));
    const auto input = screener.remote_objects.create("Quorlink.SerialInput");
    const std::string data =
        "Bob\x02"
        "Ann" +
        std::string(10, '\x02');
    input->call("CallerDataServer", {std::int64_t{3}, std::int64_t{1}, data});
    CHECK(wait_until(loop, [&] { return host.console.Lineweir.LineName(2).caption == "Ann"; }));
    input->call("SetNextCall", {std::int64_t{3}, std::int64_t{1}});
    CHECK(wait_until(loop, [&] { return host.console.lines.TheNextCall == 2; }));
    input->call("MessageGroupData", {std::int64_t{1}, std::int64_t{255}, std::int64_t{0},
                                     "Bob\x03"
                                     "Break in two"});
    CHECK(wait_until(loop, [&] {
      return host.console.Lineweir.Text1.text.get().find("Break in two") != std::string::npos;
    }));
  }

  TEST_CASE_FIXTURE(StudioOnBus, "a console in the other studio hears nothing of this one") {
    BusConsole here(loop);
    BusConsole there(loop);
    there.console.Lineweir.StudioGr(1).on_click();
    CHECK(wait_until(loop, [&] { return there.console.program.GroupNumber == 2; }));
    somebody_calls(1, 1);
    somebody_calls(2, 5);
    CHECK(here.shows(0, 'R'));
    CHECK(there.shows(4, 'R'));
    CHECK(here.console.lines.StatusLetter(4) != 'R');
    CHECK(there.console.lines.StatusLetter(0) != 'R');
  }

  TEST_CASE_FIXTURE(StudioOnBus,
                    "a server that is killed is missed, and taken anew when it is back") {
    BusConsole desk(loop);
    somebody_calls(1, 3);
    CHECK(desk.shows(2, 'R'));
    server->signal(SIGKILL);
    server->wait_for_end();
    CHECK(wait_until(loop, [&] { return desk.lost(); }));
    start();
    CHECK(wait_until(loop, [&] { return !desk.lost(); }));
    CHECK(desk.console.Lineweir.no_link.get().empty());
    somebody_calls(1, 7);
    CHECK(desk.shows(6, 'R'));
  }

  TEST_CASE_FIXTURE(StudioOnBus, "the example in Python watches a studio and works it") {
    BusConsole desk(loop);
    Watcher watcher({"1"});
    CHECK(watcher.prints("'lines' 'F00F01F02"));
    somebody_calls(1, 3);
    CHECK(watcher.prints("R02F03"));
    CHECK(desk.shows(2, 'R'));
    const Watcher hand({"1", "P02"});
    CHECK(desk.shows(2, 'P'));
    CHECK(watcher.prints("P02F03"));
    const auto input = desk.remote_objects.create("Quorlink.SerialInput");
    input->tell("CallerDataServer",
                {std::int64_t{3}, std::int64_t{1},
                 "Bob\x02"
                 "Ann" +
                     std::string(10, '\x02')},
                {});
    CHECK(watcher.prints("'caller' 3 'Ann'"));
    input->tell("SetNextCall", {std::int64_t{3}, std::int64_t{1}}, {});
    CHECK(watcher.prints("'next' 3"));
    input->tell("MessageGroupData",
                {std::int64_t{1}, std::int64_t{255}, std::int64_t{0}, "Bob\x03Yes"}, {});
    CHECK(watcher.prints("Yes"));
    CHECK(watcher.program.state() == QProcess::Running);
  }
}
