#include "simulation/studio_run.h"

#include <doctest/doctest.h>

#include <cstdlib>

namespace lineweir::simulation {
namespace {

// The nightly run plays more.
std::uint64_t seeds_to_play() {
  const char* wanted = std::getenv("LINEWEIR_STUDIO_SEEDS");
  return wanted == nullptr ? 200 : std::strtoull(wanted, nullptr, 10);
}

TEST_CASE("through all that befalls a studio, every seat ends with the server's truth") {
  long rows = 0;
  long frames = 0;
  std::size_t calls = 0;
  std::size_t most_seats = 0;
  for (std::uint64_t seed = 1; seed <= seeds_to_play(); ++seed) {
    CAPTURE(seed);
    StudioRun run({.seed = seed});
    run.run();
    for (const std::string& fault : run.faults()) FAIL_CHECK(fault);
    rows += run.rows_compared();
    frames += run.frames();
    calls += run.calls();
    most_seats = std::max(most_seats, run.seats());
  }
  // So that none of it is empty talk.
  CHECK(rows > 5'000);
  CHECK(frames > 100'000);
  CHECK(calls > 1'000);
  CHECK(most_seats > 20);
}

TEST_CASE("two runs of a studio's seed give the same transcript") {
  const auto transcript_of = [](std::uint64_t seed) {
    StudioRun run({.seed = seed, .bad_weather = std::chrono::minutes(2)});
    run.run();
    return run.transcript();
  };
  const bool same = transcript_of(7) == transcript_of(7);
  CHECK(same);
}

}  // namespace
}  // namespace lineweir::simulation
