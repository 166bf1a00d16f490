#include <doctest/doctest.h>

#include <random>

#include "server/server_steps.h"

namespace lineweir::server {
namespace {

TEST_CASE("whatever comes, every console knows nothing but the truth about its own group") {
  std::mt19937 random(20260105);
  for (int run = 0; run < 150; ++run) {
    std::vector<std::uint8_t> bytes(400);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    // Mostly consoles that are let in and registered.
    for (std::size_t place = 0; place < 5; ++place) {
      const auto step = static_cast<std::uint8_t>(place * 16);
      bytes[1 + place * 5] = static_cast<std::uint8_t>(step + 1);
      bytes[2 + place * 5] = static_cast<std::uint8_t>(place % 3 * 32);
      bytes[3 + place * 5] = static_cast<std::uint8_t>(step + 2);
      bytes[4 + place * 5] = static_cast<std::uint8_t>(place / 2);
    }
    ServerSteps steps(bytes);
    CAPTURE(run);
    CHECK_MESSAGE(steps.play(), steps.fault());
  }
}

}  // namespace
}  // namespace lineweir::server
