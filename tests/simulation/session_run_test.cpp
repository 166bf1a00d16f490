#include "simulation/session_run.h"

#include <doctest/doctest.h>

namespace lineweir::simulation {
namespace {

TEST_CASE("through all that a network and a server can do, the console shows what it was told") {
  constexpr std::uint64_t seeds = 200;
  long comparisons = 0;
  long frames = 0;
  for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
    CAPTURE(seed);
    SessionRun session(seed);
    session.run(3);
    for (const std::string& fault : session.faults()) FAIL_CHECK(fault);
    comparisons += session.comparisons();
    frames += session.frames_sent();
  }
  CHECK(comparisons > 10'000);
  CHECK(frames > 50'000);
}

TEST_CASE("two runs of a session's seed give the same transcript") {
  const auto transcript_of = [](std::uint64_t seed) {
    SessionRun session(seed);
    session.run(2);
    return session.transcript();
  };
  const bool same = transcript_of(5) == transcript_of(5);
  CHECK(same);
}

}  // namespace
}  // namespace lineweir::simulation
