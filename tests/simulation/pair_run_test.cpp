#include "simulation/pair_run.h"

#include <doctest/doctest.h>

#include <cstdlib>

namespace lineweir::simulation {
namespace {

// The nightly run plays more.
std::uint64_t seeds_to_play() {
  const char* wanted = std::getenv("LINEWEIR_PAIR_SEEDS");
  return wanted == nullptr ? 100 : std::strtoull(wanted, nullptr, 10);
}

TEST_CASE("whatever befalls a studio's two servers, one at a time serves, and nothing is lost") {
  long leads = 0;
  long frames = 0;
  long compared = 0;
  std::size_t calls = 0;
  for (std::uint64_t seed = 1; seed <= seeds_to_play(); ++seed) {
    CAPTURE(seed);
    PairRun run({.seed = seed});
    run.run();
    for (const std::string& fault : run.faults()) FAIL_CHECK(fault);
    leads += run.leads();
    frames += run.frames();
    compared += run.compared();
    calls += run.calls();
  }
  // So that none of it is empty talk.
  CHECK(leads > 500);
  CHECK(frames > 100'000);
  CHECK(compared > 2'000);
  CHECK(calls > 1'000);
}

TEST_CASE("two runs of a pair's seed give the same transcript") {
  const auto transcript_of = [](std::uint64_t seed) {
    PairRun run({.seed = seed, .bad_times = std::chrono::minutes(2)});
    run.run();
    return run.transcript();
  };
  const bool same = transcript_of(7) == transcript_of(7);
  CHECK(same);
}

}  // namespace
}  // namespace lineweir::simulation
