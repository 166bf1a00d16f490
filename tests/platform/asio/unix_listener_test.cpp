#include <doctest/doctest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <fstream>

#include "platform/asio/loop_peer.h"
#include "platform/asio/unix_listener.h"
#include "platform/temporary_directory.h"
#include "platform/waiting.h"

using namespace lineweir;
using namespace lineweir::platform;
using lineweir::test::Peer;

namespace {

struct UnixFixture {
  TemporaryDirectory directory;
  std::string path = directory.path() / "admin.sock";
  AsioLoop loop;
  std::vector<std::unique_ptr<Connection>> connections;

  std::unique_ptr<UnixListener> listen() {
    auto listener = std::make_unique<UnixListener>(loop, path);
    listener->on_connection = [this](std::unique_ptr<Connection> came) {
      connections.push_back(std::move(came));
    };
    listener->accept();
    return listener;
  }
};

}  // namespace

TEST_CASE_FIXTURE(UnixFixture,
                  "A socket of the file system is its owner's alone and carries bytes") {
  const auto listener = listen();
  struct stat found {};
  REQUIRE(::stat(path.c_str(), &found) == 0);
  CHECK((found.st_mode & 0777U) == 0600U);
  Peer peer = Peer::local(path);
  REQUIRE(wait_until(loop, [&] { return !connections.empty(); }));
  CHECK(connections[0]->peer() == "local");
  std::string received;
  connections[0]->on_bytes = [&](std::string_view bytes) { received += bytes; };
  peer.write("question");
  REQUIRE(wait_until(loop, [&] { return received == "question"; }));
  connections[0]->send("answer");
  connections[0]->close_when_sent();
  connections.clear();
  std::string got;
  REQUIRE(wait_until(loop, [&] {
    got += peer.read();
    return peer.ended();
  }));
  CHECK(got == "answer");
}

TEST_CASE_FIXTURE(UnixFixture,
                  "A socket that was left there is replaced, and goes with its owner") {
  {
    // As a process leaves it that was killed.
    const int left = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un there{};
    there.sun_family = AF_UNIX;
    path.copy(there.sun_path, sizeof there.sun_path - 1);
    REQUIRE(::bind(left, reinterpret_cast<const sockaddr*>(&there), sizeof there) == 0);
    ::close(left);
  }
  auto listener = listen();
  const Peer peer = Peer::local(path);
  CHECK(wait_until(loop, [&] { return !connections.empty(); }));
  listener.reset();
  CHECK(directory.names().empty());
}

TEST_CASE_FIXTURE(UnixFixture, "A socket in use, another file and too long a path are refused") {
  SUBCASE("in use") {
    const auto listener = listen();
    CHECK_THROWS_WITH(listen(), ("Can't listen on " + path + ": another process uses it").c_str());
    // The first one still works.
    const Peer peer = Peer::local(path);
    CHECK(wait_until(loop, [&] { return !connections.empty(); }));
  }
  SUBCASE("another file") {
    std::ofstream(path) << "precious";
    CHECK_THROWS_WITH(listen(),
                      ("Can't listen on " + path + ": there is a file of another kind").c_str());
    CHECK(directory.content("admin.sock") == "precious");
  }
  SUBCASE("too long") {
    path = directory.path() / std::string(120, 'x');
    CHECK_THROWS_WITH(listen(), ("Can't listen on " + path + ": the path is too long").c_str());
  }
  SUBCASE("no folder") {
    path = directory.path() / "none" / "admin.sock";
    CHECK_THROWS_WITH(listen(),
                      ("Can't listen on " + path + ": No such file or directory").c_str());
  }
}

TEST_CASE_FIXTURE(UnixFixture, "A listener leaves another one's socket where it is") {
  auto listener = listen();
  ::unlink(path.c_str());
  const auto other = listen();
  listener.reset();
  CHECK(directory.names() == std::vector<std::string>{"admin.sock"});
}

// Only root can become somebody else.
TEST_CASE_FIXTURE(UnixFixture, "Another user is not let in, even where the file lets him" *
                                   doctest::skip(::geteuid() != 0)) {
  const auto listener = listen();
  ::chmod(path.c_str(), 0777);
  ::chmod(directory.path().c_str(), 0777);
  const pid_t child = ::fork();
  if (child == 0) {
    if (::setuid(65534) != 0) ::_exit(2);
    try {
      const Peer peer = Peer::local(path);
      char byte = 0;
      ::fcntl(peer.socket(), F_SETFL, 0);
      ::_exit(::recv(peer.socket(), &byte, 1, 0) == 0 ? 0 : 1);
    } catch (const std::exception&) {
      ::_exit(3);
    }
  }
  int status = -1;
  CHECK(wait_until(loop, [&] { return ::waitpid(child, &status, WNOHANG) == child; }));
  CHECK(WIFEXITED(status));
  CHECK(WEXITSTATUS(status) == 0);
  CHECK(connections.empty());
}
