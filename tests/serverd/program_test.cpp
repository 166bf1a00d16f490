#include <doctest/doctest.h>
#include <signal.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "platform/asio/loop_peer.h"
#include "platform/asio/tls_certificate.h"
#include "platform/asio/tls_identity.h"
#include "serverd/started_server.h"

using namespace lineweir;
using lineweir::test::Peer;
using lineweir::test::StartedServer;
using lineweir::test::write_configuration;

namespace {

const std::string a_group = "[[group]]\nnumber = 1\n";
const std::string some_port = "listen = \"127.0.0.1:0\"\n";
// Its seats get no time to read that it ends.
const std::string a_free_port = some_port + "shutdown_seconds = 0\n";

Peer connect(int port) { return Peer::tcp("127.0.0.1", static_cast<std::uint16_t>(port)); }

// Whether the other end closes it, within 20 seconds.
bool is_closed(Peer& peer) {
  ::fcntl(peer.socket(), F_SETFL, 0);
  const timeval limit{20, 0};
  ::setsockopt(peer.socket(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  peer.read();
  return peer.ended();
}

bool is_open(Peer& peer) {
  peer.read();
  return !peer.ended();
}

int lines_in(const std::string& text) {
  return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// Runs until its end.
struct Run {
  Run(const TemporaryDirectory& folder, const std::string& configuration,
      const std::vector<std::string>& words = {}) {
    StartedServer server(folder, configuration, words);
    output = server.wait_for_output();
    log = server.wait_for_log();
    status = server.wait_for_end();
  }
  std::string output;
  std::string log;
  int status;
};

// The addresses on which a process listens for others, as the system tells them.
std::set<std::string> listening(pid_t process) {
  std::set<std::string> sockets;
  const std::string descriptors = "/proc/" + std::to_string(process) + "/fd";
  for (const auto& entry : std::filesystem::directory_iterator(descriptors)) {
    std::error_code gone;
    sockets.insert(std::filesystem::read_symlink(entry.path(), gone).string());
  }
  std::set<std::string> found;
  for (const char* table : {"/proc/net/tcp", "/proc/net/tcp6", "/proc/net/udp", "/proc/net/udp6"}) {
    std::ifstream rows(table);
    std::string row;
    std::getline(rows, row);
    while (std::getline(rows, row)) {
      std::istringstream words(row);
      std::string number, local, remote, state, skip, inode;
      words >> number >> local >> remote >> state;
      for (int i = 0; i < 5; ++i) words >> skip;
      words >> inode;
      constexpr const char* is_listening = "0A";
      if (state == is_listening && sockets.contains("socket:[" + inode + "]")) {
        found.insert(local.substr(0, local.find(':')));
      }
    }
  }
  return found;
}

}  // namespace

TEST_CASE("The server tells that it is ready, lets consoles connect and ends when it is told to") {
  for (const int number : {SIGTERM, SIGINT}) {
    const TemporaryDirectory folder;
    StartedServer server(folder, a_free_port + a_group);
    const int port = server.wait_until_ready();
    REQUIRE(port > 0);
    CHECK(server.wait_for_output("\n") == "ready 127.0.0.1:" + std::to_string(port) + "\n");
    Peer peer = connect(port);
    CHECK(is_open(peer));
    CHECK(std::filesystem::exists(folder.path() / "admin.sock"));
    server.signal(number);
    CHECK(server.wait_for_end() == 0);
    CHECK(is_closed(peer));
    CHECK(lines_in(server.wait_for_output()) == 1);
    // Nothing is left but what is kept.
    CHECK(folder.names() == std::vector<std::string>{"server.db", "server.db.lock", "server.toml"});
  }
}

TEST_CASE("The first start makes one user with a password, and tells it once, in no log's form") {
  const TemporaryDirectory folder;
  std::string password;
  {
    StartedServer server(folder, a_free_port + a_group);
    REQUIRE(server.wait_until_ready() > 0);
    const std::string log = server.wait_for_log("password");
    const std::size_t begin = log.find("first user ");
    REQUIRE(begin != std::string::npos);
    CHECK((begin == 0 || log[begin - 1] == '\n'));
    server.signal(SIGTERM);
    CHECK(server.wait_for_end() == 0);
    const std::string all = server.wait_for_log();
    const std::string line = all.substr(begin, all.find('\n', begin) - begin);
    password = line.substr(line.rfind(' ') + 1);
    CHECK(password.size() >= 10);
    CHECK(all.rfind(password) == all.find(password));
  }
  StartedServer again(folder, a_free_port + a_group);
  REQUIRE(again.wait_until_ready() > 0);
  again.signal(SIGTERM);
  CHECK(again.wait_for_end() == 0);
  CHECK_FALSE(has(again.wait_for_log(), "first user"));
  CHECK_FALSE(has(folder.content("server.db"), password));
}

TEST_CASE("A configuration that is wrong ends the program with one line and the status 2") {
  const TemporaryDirectory folder;
  const std::string file = (folder.path() / "server.toml").string();
  const auto check = [&](const std::string& text, const std::string& said) {
    for (const auto& words : std::vector<std::vector<std::string>>{{}, {"--check"}}) {
      const Run run(folder, text, words);
      CHECK(run.status == 2);
      CHECK(run.output.empty());
      CHECK(run.log == file + said + "\n");
    }
  };
  check(a_group + "lines = 11\n", ":3: group.lines: expected 10 or 20, not 11");
  check(a_free_port, ":1: group: expected at least one table, [[group]]");
  check("store = \"postgresql://amy:se@cret@host/studio\"\n" + a_group,
        ":1: store: expected \"sqlite:\" and a file, or \"postgresql://user@host/database\", with "
        "%40 for \"@\" and the like in a password");
  check("[tls]\ncertificate = \"none.crt\"\nkey = \"none.key\"\n" + a_group,
        ":2: tls.certificate: expected a certificate in PEM form; " +
            (folder.path() / "none.crt").string() + ": No such file or directory");
  CHECK(folder.names() == std::vector<std::string>{"server.toml"});
}

TEST_CASE("--check tells what would be done and does nothing") {
  const TemporaryDirectory folder;
  const Run run(folder, "listen = \"0.0.0.0:2001\"\n" + a_group, {"--check"});
  CHECK(run.status == 0);
  CHECK(run.log.empty());
  CHECK(run.output.starts_with("listens on 0.0.0.0:2001 by TLS, with "));
  CHECK(folder.names() == std::vector<std::string>{"server.toml"});
}

TEST_CASE("The example of a configuration is one") {
  std::ifstream example(LINEWEIR_PACKAGING "/server.toml");
  REQUIRE(example);
  std::ostringstream text;
  text << example.rdbuf();
  const TemporaryDirectory folder;
  const Run run(folder, text.str(), {"--check"});
  CHECK(run.status == 0);
  CHECK(run.log.empty());
  // With all that it only shows it is one too.
  std::string shown;
  std::istringstream lines(text.str());
  for (std::string line; std::getline(lines, line);) {
    shown += (line.starts_with("#") && !line.starts_with("# ") ? line.substr(1) : line) + "\n";
  }
  CHECK(shown != text.str());
  platform::make_certificate(folder.path() / "server.crt", folder.path() / "server.key",
                             platform::names_of_this_machine());
  const Run whole(folder, shown, {"--check"});
  CHECK(whole.log.empty());
  CHECK(whole.status == 0);
}

TEST_CASE("Nothing listens beyond the loopback unless told, and nothing more than was told") {
  const TemporaryDirectory folder;
  StartedServer server(folder, a_free_port + "metrics = \"127.0.0.1:0\"\n" + a_group);
  REQUIRE(server.wait_until_ready() > 0);
  CHECK(listening(server.process()) == std::set<std::string>{"0100007F"});
}

TEST_CASE("Beyond the loopback a server shows the certificate that it has made, and keeps it") {
  const TemporaryDirectory folder;
  const std::string configuration = "listen = [\"0.0.0.0:0\", \"127.0.0.1:0\"]\n" + a_group;
  std::string shown;
  for (int start = 0; start < 2; ++start) {
    StartedServer server(folder, configuration);
    const int port = server.wait_until_ready();
    REQUIRE(port > 0);
    CHECK(server.wait_for_output("\n").starts_with("ready 0.0.0.0:"));
    const platform::TlsIdentity made(folder.path() / "server.crt", folder.path() / "server.key");
    CHECK(has(server.wait_for_log("fingerprint"), "SHA-256 " + made.fingerprint() + "\n"));
    if (start == 1) CHECK(made.fingerprint() == shown);
    shown = made.fingerprint();
    // Who doesn't speak TLS is closed at once.
    Peer plain = connect(port);
    plain.write("GET / HTTP/1.0\r\n\r\n");
    CHECK(is_closed(plain));
    CHECK(has(server.wait_for_log("No TLS"), "warning: No TLS with 127.0.0.1: "));
    CHECK(has(server.wait_for_log(" in plain text"), " in plain text\n"));
  }
}

TEST_CASE("Plain text beyond the loopback has to be told, in the file or on the command line") {
  const TemporaryDirectory folder;
  const std::string everywhere = "listen = \"0.0.0.0:0\"\n";
  SUBCASE("in the file") {
    StartedServer server(folder, everywhere + "plain_text_network = true\n" + a_group);
    REQUIRE(server.wait_until_ready() > 0);
    CHECK(has(server.wait_for_log("listens"), " in plain text"));
  }
  SUBCASE("on the command line") {
    StartedServer server(folder, everywhere + a_group, {"--plain-text-network"});
    REQUIRE(server.wait_until_ready() > 0);
    CHECK(has(server.wait_for_log("listens"), " in plain text"));
  }
  CHECK_FALSE(std::filesystem::exists(folder.path() / "server.crt"));
}

TEST_CASE("SIGHUP reads certificates and groups anew, and drops nobody") {
  const TemporaryDirectory folder;
  const std::string tls = "shutdown_seconds = 0\nlisten = [\"127.0.0.1:0\"]\n[tls]\n";
  StartedServer server(folder, tls + a_group);
  const int port = server.wait_until_ready();
  REQUIRE(port > 0);
  // Its handshake has begun, and isn't over.
  Peer peer = connect(port);
  server.wait_for_log("fingerprint");

  write_configuration(folder, tls + a_group + "colour = 1\n");
  server.signal(SIGHUP);
  CHECK(has(server.wait_for_log("nothing of the configuration"),
            "error: " + (folder.path() / "server.toml").string() + ":6: group.colour: expected "));

  write_configuration(folder, "metrics = \"127.0.0.1:0\"\n" + tls + a_group + "name = \"Two\"\n");
  server.signal(SIGHUP);
  const std::string& log = server.wait_for_log("read the configuration anew");
  CHECK(has(log, "notice: read the configuration anew"));
  CHECK(has(log, "warning: what has changed in metrics waits for the next start\n"));
  CHECK(is_open(peer));
  server.signal(SIGTERM);
  CHECK(server.wait_for_end() == 0);
}

TEST_CASE("A second signal ends a server that gives its seats time") {
  const TemporaryDirectory folder;
  StartedServer server(folder, some_port + "shutdown_seconds = 3600\n" + a_group);
  REQUIRE(server.wait_until_ready() > 0);
  server.signal(SIGTERM);
  CHECK(has(server.wait_for_log("ends in"), "notice: ends in 3600 seconds\n"));
  server.signal(SIGTERM);
  CHECK(server.wait_for_end() == 0);
}

TEST_CASE(
    "A server whose last records neither the store nor the journal takes says so at its end") {
  const TemporaryDirectory folder;
  StartedServer server(folder, some_port + a_group);
  REQUIRE(server.wait_until_ready() > 0);
  std::filesystem::rename(folder.path() / "server.db", folder.path() / "away.db");
  std::filesystem::create_directory(folder.path() / "server.db.waiting");
  server.signal(SIGTERM);
  CHECK(server.wait_for_end() == 1);
  CHECK(has(server.wait_for_log(), " are lost, but for those that the journal holds"));
}

TEST_CASE("A server that can't listen says why in one line") {
  const TemporaryDirectory folder;
  StartedServer server(folder, a_free_port + a_group);
  const int port = server.wait_until_ready();
  REQUIRE(port > 0);
  SUBCASE("since its port is taken") {
    const TemporaryDirectory other;
    const std::string address = "127.0.0.1:" + std::to_string(port);
    const Run run(other, "listen = \"" + address + "\"\n" + a_group);
    CHECK(run.status == 1);
    CHECK(run.output.empty());
    CHECK(run.log == "lineweir-server: Can't listen on " + address + ": Address already in use\n");
  }
  SUBCASE("since another server has its folder") {
    const Run run(folder, a_free_port + a_group);
    CHECK(run.status == 1);
    CHECK(run.log == "lineweir-server: Can't listen on " + (folder.path() / "admin.sock").string() +
                         ": another process uses it\n");
  }
  Peer peer = connect(port);
  CHECK(is_open(peer));
}

TEST_CASE("A second server leaves the store of the first one alone") {
  const TemporaryDirectory folder;
  StartedServer first(folder, a_free_port + a_group);
  REQUIRE(first.wait_until_ready() > 0);
  const Run second(folder, "admin_socket = \"other.sock\"\n" + a_free_port + a_group);
  CHECK(second.status == 1);
  CHECK(has(second.log, "another server works on the store"));
  CHECK(lines_in(second.log) == 1);
  // The lock goes with the process, in whatever way that ends.
  first.signal(SIGKILL);
  first.wait_for_end();
  StartedServer third(folder, a_free_port + a_group);
  CHECK(third.wait_until_ready() > 0);
}

TEST_CASE("Figures are told at the address that the log names") {
  const TemporaryDirectory folder;
  StartedServer server(folder, a_free_port + a_group, {"--metrics"});
  REQUIRE(server.wait_until_ready() > 0);
  const std::string& log = server.wait_for_log("metrics 127.0.0.1:");
  const std::size_t place = log.find("metrics 127.0.0.1:");
  REQUIRE(place != std::string::npos);
  Peer peer = connect(std::stoi(log.substr(place + 18)));
  peer.write("GET /metrics HTTP/1.1\r\n\r\n");
  ::fcntl(peer.socket(), F_SETFL, 0);
  const std::string figures = peer.read();
  CHECK(figures.starts_with("HTTP/1.1 200 OK\r\n"));
  CHECK(has(figures, "\nlineweir_seats{group=\"1\"} 0\n"));
}

TEST_CASE("A log that nobody reads doesn't hold the server up") {
  const TemporaryDirectory folder;
  StartedServer server(folder, a_free_port + a_group);
  const int port = server.wait_until_ready();
  REQUIRE(port > 0);
  // Each of these writes two lines, which nobody reads here: more than a pipe holds.
  write_configuration(folder, a_group + std::string(40, 'x') + " = 1\n");
  for (int i = 0; i < 400; ++i) {
    server.signal(SIGHUP);
    Peer peer = connect(port);
    peer.write("no frame");
    CHECK(is_closed(peer));
  }
  server.signal(SIGTERM);
  CHECK(server.wait_for_end() == 0);
}

TEST_CASE("No file of the server's takes the place of a log that was closed before its start") {
  const TemporaryDirectory folder;
  StartedServer server(folder, a_free_port + a_group, {}, StartedServer::Log::Closed);
  REQUIRE(server.wait_until_ready() > 0);
  const std::string log = "/proc/" + std::to_string(server.process()) + "/fd/2";
  CHECK(std::filesystem::read_symlink(log) == "/dev/null");
}

TEST_CASE("Whoever asks a server that waits for its store is told so") {
  const TemporaryDirectory folder;
  const std::string configuration = a_free_port + a_group;
  { REQUIRE(StartedServer(folder, configuration).wait_until_ready() > 0); }
  sqlite3* other = nullptr;
  REQUIRE(sqlite3_open((folder.path() / "server.db").c_str(), &other) == SQLITE_OK);
  REQUIRE(sqlite3_exec(other, "PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE", nullptr, nullptr,
                       nullptr) == SQLITE_OK);
  {
    StartedServer server(folder, configuration);
    server.wait_for_log("in use by another program");
    const std::string answer = (folder.path() / "answer").string();
    const std::string command = LINEWEIR_ADMIN " --socket '" +
                                (folder.path() / "admin.sock").string() + "' seats 2> '" + answer +
                                "'";
    CHECK(std::system(command.c_str()) != 0);  // NOLINT(concurrency-mt-unsafe)
    std::ifstream file(answer);
    const std::string told((std::istreambuf_iterator<char>(file)), {});
    CHECK(told == "lineweir-admin: The server waits for its store, which can't be read.\n");
    server.signal(SIGKILL);
  }
  sqlite3_close(other);
}
