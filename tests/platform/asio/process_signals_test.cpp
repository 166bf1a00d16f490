#include <doctest/doctest.h>

#include <csignal>
#include <vector>

#include "platform/asio/process_signals.h"
#include "platform/waiting.h"

using namespace lineweir;
using namespace lineweir::platform;

TEST_CASE("Signals to end and to read anew are told from the loop, each in turn") {
  AsioLoop loop;
  std::vector<int> told;
  const ProcessSignals signals(loop, [&](int signal) { told.push_back(signal); });
  for (const int signal : {SIGHUP, SIGTERM, SIGHUP, SIGINT}) {
    const std::size_t before = told.size();
    std::raise(signal);
    CHECK(told.size() == before);
    REQUIRE(wait_until(loop, [&] { return told.size() > before; }));
    CHECK(told.back() == signal);
  }
}
