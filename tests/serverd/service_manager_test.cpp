#include "serverd/service_manager.h"

#include <doctest/doctest.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>

#include "platform/temporary_directory.h"

using namespace lineweir;
using namespace lineweir::serverd;

namespace {

struct Environment {
  ~Environment() {
    for (const char* name : {"NOTIFY_SOCKET", "WATCHDOG_USEC", "WATCHDOG_PID"}) ::unsetenv(name);
  }
};

}  // namespace

TEST_CASE("A service manager that listens is told the state") {
  const Environment environment;
  const TemporaryDirectory directory;
  const std::string path = directory.path() / "notify";
  const int manager = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK, 0);
  sockaddr_un here{};
  here.sun_family = AF_UNIX;
  path.copy(here.sun_path, sizeof here.sun_path - 1);
  REQUIRE(::bind(manager, reinterpret_cast<const sockaddr*>(&here), sizeof here) == 0);
  ::setenv("NOTIFY_SOCKET", path.c_str(), 1);
  ServiceManager().tell("READY=1");
  std::array<char, 100> told{};
  CHECK(::recv(manager, told.data(), told.size(), 0) == 7);
  CHECK(std::string(told.data()) == "READY=1");
  ::close(manager);
  // Nobody listens any more, or never has.
  ServiceManager().tell("STOPPING=1");
  ::unsetenv("NOTIFY_SOCKET");
  ServiceManager().tell("STOPPING=1");
}

TEST_CASE("A watchdog is this process's own and has a period") {
  const Environment environment;
  using std::chrono::milliseconds;
  CHECK_FALSE(ServiceManager().watchdog());
  ::setenv("WATCHDOG_USEC", "3000000", 1);
  CHECK(ServiceManager().watchdog() == milliseconds(3000));
  ::setenv("WATCHDOG_PID", std::to_string(::getpid()).c_str(), 1);
  CHECK(ServiceManager().watchdog() == milliseconds(3000));
  ::setenv("WATCHDOG_PID", "1", 1);
  CHECK_FALSE(ServiceManager().watchdog());
  ::unsetenv("WATCHDOG_PID");
  for (const char* junk : {"", "0", "-5", "soon", "3s"}) {
    ::setenv("WATCHDOG_USEC", junk, 1);
    CHECK_FALSE(ServiceManager().watchdog());
  }
}
