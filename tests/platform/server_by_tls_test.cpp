// A console on lineweir-server by TLS, with the certificate that the server makes for itself.

#include <doctest/doctest.h>

#include <optional>

#include "core/console.h"
#include "letters/code_page_letters.h"
#include "platform/qt/qt_client_socket.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/services_with.h"
#include "serverd/started_server.h"
#include "temporary_directory.h"
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
