// A console on lineweir-server by TLS, with the certificate that the server makes for itself.

#include <doctest/doctest.h>

#include <signal.h>

#include <fstream>
#include <optional>

#include "core/console.h"
#include "letters/code_page_letters.h"
#include "platform/qt/qt_client_socket.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/services_with.h"
#include "serverd/started_server.h"
#include "temporary_directory.h"
#include "test_certificates.h"
#include "waiting.h"

using namespace lineweir;
using namespace lineweir::platform;
using lineweir::test::StartedServer;

namespace {

constexpr const char* configuration =
    "listen = \"127.0.0.1:0\"\n"
    "store = \"sqlite:server.db\"\n"
    "admin_socket = \"admin.sock\"\n"
    "shutdown_seconds = 0\n"
    "[tls]\n"
    "[[group]]\n"
    "number = 1\n";

// The text between two others.
std::string between(const std::string& text, const std::string& before, const std::string& behind) {
  const std::size_t begin = text.find(before);
  REQUIRE(begin != std::string::npos);
  const std::size_t from = begin + before.size();
  return text.substr(from, text.find(behind, from) - from);
}

struct TlsDesk {
  TlsDesk() {
    winsock1.trusted_fingerprint = [this](const std::string&, int) { return trusted; };
    winsock1.on_doubt = [this](const auto& certificate) { doubt = certificate; };
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    console.startup.Main("");
  }

  void connect(int port) {
    console.Lineweir.WinsockMenu.on_click();
    console.WinsockOptions.Text1.text = "tls:127.0.0.1";
    console.WinsockOptions.Text2.text = std::to_string(port);
    console.WinsockOptions.SockConnect.on_click();
  }
  bool session_stands() {
    return wait_until(
        loop, [this] { return console.login.ServerAlive && !console.Lineweir.Timer4.enabled; });
  }

  QtEventLoop loop;
  std::string trusted;
  QtClientSocket::DoubtfulCertificate doubt;
  QtClientSocket winsock1{loop};
  ScriptedPlatform workstation;
  std::vector<std::string> messages;
  Console console{
      platform::services_with(workstation.services(), {.loop = &loop, .winsock1 = &winsock1})};
};

}  // namespace

TEST_CASE("a console is let in by TLS once the server's own certificate is trusted") {
  const TemporaryDirectory folder;
  StartedServer server(folder, configuration);
  const int port = server.wait_until_ready();
  REQUIRE(port > 0);
  const std::string log = server.wait_for_log("listens on");
  TlsDesk desk;
  desk.console.login.UserName = between(server.wait_for_log("first user "), "first user ", ",");
  desk.console.login.UserPassword = between(server.wait_for_log("password "), "password ", "\n");
  desk.connect(port);
  CHECK(wait_until(desk.loop, [&] { return !desk.doubt.fingerprint.empty(); }));
  CHECK(log.find(desk.doubt.fingerprint) != std::string::npos);
  // The user is asked about it, and told nothing besides.
  CHECK(desk.messages.empty());
  CHECK_FALSE(desk.console.login.ServerAlive);

  desk.trusted = desk.doubt.fingerprint;
  desk.connect(port);
  CHECK(desk.session_stands());
  CHECK(desk.messages.empty());
  CHECK(desk.console.Lineweir.no_link.get().empty());
}

TEST_CASE("a certificate is taken anew at once, and one that is out of its time is not") {
  const TemporaryDirectory folder;
  const auto write = [&](const std::string& name, int from, int until) {
    const auto identity =
        test::make_identity({.names = "IP:127.0.0.1", .from = from, .until = until});
    std::ofstream(folder.path() / (name + ".crt")) << identity.certificate_text.toStdString();
    std::ofstream(folder.path() / (name + ".key")) << identity.key_text.toStdString();
  };
  write("good", -1, 9);
  write("better", -1, 9);
  write("old", -9, -1);
  write("early", 3, 9);
  const auto with = [](const std::string& name) {
    std::string text = configuration;
    const std::string table = "[tls]\n";
    return text.insert(text.find(table) + table.size(),
                       "certificate = \"" + name + ".crt\"\nkey = \"" + name + ".key\"\n");
  };
  StartedServer server(folder, with("good"));
  REQUIRE(server.wait_until_ready() > 0);
  std::size_t from = server.wait_for_log("listens on").size();
  const auto log_of_reload = [&](const std::string& name, const std::string& end) {
    test::write_configuration(folder, with(name));
    server.signal(SIGHUP);
    const std::string& log = server.wait_for_log(end, from);
    const std::string news = log.substr(from);
    from = log.size();
    return news;
  };
  const auto has = [](const std::string& log, const std::string& text) {
    return log.find(text) != std::string::npos;
  };
  const std::string news = log_of_reload("better", "read the configuration anew\n");
  CHECK(has(news, "consoles know this server by the fingerprint SHA-256 "));
  CHECK_FALSE(has(news, "waits for the next start"));
  CHECK_FALSE(has(log_of_reload("better", "read the configuration anew\n"), "fingerprint"));
  const std::string untaken = "nothing of the configuration was taken anew\n";
  CHECK(has(log_of_reload("old", untaken), "old.crt: the certificate has expired"));
  CHECK(has(log_of_reload("early", untaken), "early.crt: the certificate isn't valid yet"));
}

TEST_CASE("a server whose certificate has expired serves, and says why nobody comes") {
  const TemporaryDirectory folder;
  const auto identity = test::make_identity({.names = "IP:127.0.0.1", .from = -9, .until = -1});
  std::ofstream(folder.path() / "server.crt") << identity.certificate_text.toStdString();
  std::ofstream(folder.path() / "server.key") << identity.key_text.toStdString();
  StartedServer server(folder, configuration);
  REQUIRE(server.wait_until_ready() > 0);
  const std::string& log = server.wait_for_log("until it has another one");
  CHECK(log.find("server.crt has expired: consoles refuse this server until it has another one") !=
        std::string::npos);
}
