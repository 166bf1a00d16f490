#include "serverlink/heartbeat.h"

#include <doctest/doctest.h>

namespace lineweir {
namespace {

using namespace std::chrono_literals;
using platform::Milliseconds;

bool proved_by(std::initializer_list<Milliseconds> beats) {
  Heartbeat heartbeat;
  for (const Milliseconds moment : beats) heartbeat.beat(moment);
  return heartbeat.steady();
}

TEST_CASE("a heartbeat is proved by three seconds of times at most a second and a half apart") {
  CHECK_FALSE(proved_by({}));
  CHECK_FALSE(proved_by({5s}));
  CHECK_FALSE(proved_by({5s, 6s, 7s}));
  CHECK_FALSE(proved_by({5s, 6s, 7s, 7999ms}));
  CHECK(proved_by({5s, 6s, 7s, 8s}));
  CHECK(proved_by({5s, 6500ms, 8s}));
  CHECK_FALSE(proved_by({5s, 6501ms, 8s}));
}

TEST_CASE("a pause begins the proof anew, and answers to the regular poll prove nothing") {
  CHECK_FALSE(proved_by({5s, 6s, 7s, 9s, 10s, 11s}));
  CHECK(proved_by({5s, 6s, 7s, 9s, 10s, 11s, 12s}));
  CHECK_FALSE(proved_by({10s, 20s, 30s, 40s, 50s}));
}

TEST_CASE("what was proved stays so, and one known to be its own proves it alone") {
  CHECK(proved_by({5s, 6s, 7s, 8s, 60s}));
  Heartbeat heartbeat;
  heartbeat.beat(1s, true);
  CHECK(heartbeat.steady());
}

}  // namespace
}  // namespace lineweir
