#include "simulation/show.h"

#include <doctest/doctest.h>

namespace lineweir::simulation {
namespace {

using namespace std::chrono_literals;

std::string transcript_of(std::uint64_t seed, Milliseconds length) {
  Show show({.seed = seed});
  show.run(length);
  return show.transcript();
}

TEST_CASE("two runs of a seed give the same transcript, and another seed another one") {
  const std::string once = transcript_of(3, 30min);
  CHECK(once.size() > 100'000);
  // Not in one CHECK, which would print both.
  const bool same = transcript_of(3, 30min) == once;
  CHECK(same);
  const bool other = transcript_of(4, 30min) != once;
  CHECK(other);
}

TEST_CASE("through twenty hours of shows nobody's rows, clocks and log tell what isn't so") {
  constexpr std::uint64_t seeds = 20;
  long rows = 0;
  long texts = 0;
  long frames = 0;
  std::string letters;
  for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
    CAPTURE(seed);
    Show show({.seed = seed});
    show.run(1h);
    for (const std::string& fault : show.witness().faults()) FAIL_CHECK(fault);
    CHECK(show.server().malformed_frames() == 0);
    rows += show.witness().rows_compared;
    texts += show.witness().texts_compared;
    frames += show.server().frames();
    letters += show.witness().letters_seen;
    CHECK(show.witness().calls_logged() > 50);
  }
  // What was held against the exchange and against the server, so that none of it is empty talk.
  CHECK(rows > 1'000'000);
  CHECK(texts > 1'000'000);
  CHECK(frames > 10'000);
  for (const char letter : std::string(" RPOHSNCLK")) {
    CAPTURE(letter);
    CHECK(letters.find(letter) != std::string::npos);
  }
}

TEST_CASE("a connection that comes after the console has given it up doesn't stand") {
  platform::VirtualEventLoop loop;
  Transcript transcript(loop);
  Weather weather;
  weather.late = 1;
  weather.longest_delay = 6s;
  weather.refused = 0;
  weather.cut = 0;
  Network network(loop, transcript, weather, 1);
  ServerStandIn server(network, transcript, network_address(server_host, server_port));
  Seat seat(loop, network, transcript, 0, SeatLink::Server, 1);
  seat.start();
  CHECK(seat.socket().state() == platform::socket_closed);
  loop.advance(1min);
  CHECK(transcript.text().find("connection 1 to") != std::string::npos);
  CHECK(seat.socket().state() == platform::socket_closed);
  CHECK_FALSE(seat.linked());
  CHECK(server.frames() == 0);
}

}  // namespace
}  // namespace lineweir::simulation
