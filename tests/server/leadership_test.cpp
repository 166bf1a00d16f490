#include "server/leadership.h"

#include <doctest/doctest.h>

#include <memory>
#include <random>
#include <vector>

#include "platform/scripted/scripted_lease.h"
#include "support/process_loop.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using platform::Epoch;
using platform::Milliseconds;

// A process that would lead, as long as it lives.
struct Candidate {
  Candidate(platform::VirtualEventLoop& world, platform::LeaseOffice& office, double rate)
      : loop(world, rate), lease(office, loop), leadership(loop, lease) {
    leadership.on_lead = [this](Epoch epoch) { epochs.push_back(epoch); };
    leadership.on_lost = [this] { ++losses; };
    leadership.start();
  }

  test::ProcessLoop loop;
  platform::ScriptedLease lease;
  Leadership leadership;
  std::vector<Epoch> epochs;
  int losses = 0;
};

struct Machines {
  platform::VirtualEventLoop world;
  platform::LeaseOffice office{world};
  std::vector<std::unique_ptr<Candidate>> candidates;

  Candidate& add(double rate = 1) {
    candidates.push_back(std::make_unique<Candidate>(world, office, rate));
    return *candidates.back();
  }
  int leaders() const {
    int count = 0;
    for (const auto& candidate : candidates) {
      count += candidate != nullptr && candidate->leadership.leads() ? 1 : 0;
    }
    return count;
  }
  void wait(Milliseconds span) {
    world.advance(span, [this] { REQUIRE(leaders() <= 1); });
  }
  // Until that one leads.
  Milliseconds takeover(const Candidate& candidate) {
    const Milliseconds begin = world.now();
    while (!candidate.leadership.leads() && world.now() - begin < 10s) wait(1ms);
    return world.now() - begin;
  }
};

}  // namespace

TEST_SUITE("server/leadership") {
  TEST_CASE("the first one leads at once, the others stand by") {
    Machines machines;
    Candidate& first = machines.add();
    Candidate& second = machines.add();
    machines.wait(10s);
    CHECK(first.leadership.leads());
    CHECK(first.epochs == std::vector<Epoch>{1});
    CHECK(first.losses == 0);
    CHECK(second.epochs.empty());
  }

  TEST_CASE("one that ends in good order is followed at once") {
    Machines machines;
    Candidate& first = machines.add();
    Candidate& second = machines.add();
    machines.wait(5s);
    first.leadership.end();
    CHECK_FALSE(first.leadership.leads());
    CHECK(machines.takeover(second) <= 250ms);
    CHECK(second.epochs == std::vector<Epoch>{2});
    CHECK(first.losses == 0);
  }

  TEST_CASE("one that stands by and ends never leads") {
    Machines machines;
    Candidate& first = machines.add();
    Candidate& second = machines.add();
    machines.wait(5s);
    second.leadership.end();
    first.leadership.end();
    machines.wait(5s);
    CHECK(machines.leaders() == 0);
    CHECK(second.epochs.empty());
    CHECK(machines.office.epoch() == 1);
  }

  TEST_CASE("whoever looks at a proof that has run out keeps nobody from the lead") {
    Machines machines;
    Candidate& only = machines.add();
    machines.wait(5s);
    only.lease.reaches = false;
    machines.wait(1100ms);
    CHECK(only.losses == 1);
    only.lease.reaches = true;
    for (int i = 0; i < 50; ++i) {
      machines.wait(100ms);
      only.leadership.look_at_proof();
    }
    CHECK(only.leadership.leads());
    CHECK(only.losses == 1);
  }

  TEST_CASE("one that was stopped before it could begin to lead doesn't begin") {
    // Its loop runs late what was due; the first of it is the beginning.
    Machines machines;
    Candidate& first = machines.add();
    machines.wait(5s);
    Candidate& second = machines.add();
    machines.candidates[0].reset();
    while (machines.office.epoch() == 1) machines.wait(1ms);
    machines.wait(3ms);
    second.loop.stop();
    machines.wait(1500ms);
    CHECK(second.epochs.empty());
    second.loop.go_on();
    machines.wait(5ms);
    CHECK(second.epochs.empty());
    CHECK(second.losses == 0);
    CHECK(machines.takeover(second) <= 3s);
    static_cast<void>(first);
  }

  TEST_CASE("one that is killed is followed when its last proof has run out") {
    Machines machines;
    machines.add();
    Candidate& second = machines.add();
    machines.wait(5s);
    machines.candidates[0].reset();
    const Milliseconds taken = machines.takeover(second);
    CHECK(taken >= 700ms);
    CHECK(taken <= 1300ms);
  }

  TEST_CASE("one that is stopped, or cut off in whatever direction, is followed within 3 seconds") {
    for (int fault = 0; fault < 4; ++fault) {
      CAPTURE(fault);
      Machines machines;
      Candidate& first = machines.add();
      Candidate& second = machines.add();
      machines.wait(5s);
      if (fault == 0) first.loop.stop();
      if (fault == 1 || fault == 2) first.lease.reaches = false;
      if (fault == 1 || fault == 3) first.lease.hears = false;
      CHECK(machines.takeover(second) <= 3s);
      // What the stopped one would send first is not sent.
      first.loop.go_on();
      CHECK_FALSE(first.leadership.leads());
      first.lease.reaches = true;
      first.lease.hears = true;
      machines.wait(5s);
      CHECK(second.leadership.leads());
      CHECK(first.losses == 1);
      CHECK(first.epochs == std::vector<Epoch>{1});
      CHECK(second.epochs == std::vector<Epoch>{2});
    }
  }

  TEST_CASE(
      "one that hears nothing more behind the grant leads as long as that proves, no longer") {
    Machines machines;
    Candidate& one = machines.add();
    const Milliseconds asked_at = machines.world.now();
    machines.takeover(one);
    one.lease.hears = false;
    machines.wait(asked_at + platform::proof_holds - 2ms - machines.world.now());
    CHECK(one.leadership.leads());
    machines.wait(4ms);
    CHECK_FALSE(one.leadership.leads());
    CHECK(one.losses == 1);
  }

  TEST_CASE("one that was cut off alone leads again when it can prove it") {
    Machines machines;
    Candidate& only = machines.add();
    machines.wait(5s);
    only.lease.reaches = false;
    machines.wait(1s);
    CHECK_FALSE(only.leadership.leads());
    only.lease.reaches = true;
    CHECK(machines.takeover(only) <= 3s);
    CHECK(only.epochs == std::vector<Epoch>{1, 2});
    CHECK(only.losses == 1);
  }

  TEST_CASE("a database that ends ends the lead, and its return brings one back") {
    Machines machines;
    Candidate& first = machines.add();
    machines.add();
    machines.wait(5s);
    machines.office.stop();
    machines.wait(700ms);
    CHECK(first.leadership.leads());
    machines.wait(350ms);
    CHECK(machines.leaders() == 0);
    machines.wait(10s);
    machines.office.start();
    machines.wait(2s);
    CHECK(machines.leaders() == 1);
  }

  TEST_CASE("never do two lead, whatever fails, and one does as soon as it can") {
    for (std::uint32_t seed = 1; seed <= 300; ++seed) {
      CAPTURE(seed);
      std::mt19937 dice(seed);
      const auto roll = [&](int sides) {
        return static_cast<int>(dice() % static_cast<unsigned>(sides));
      };
      Machines machines;
      for (const double rate : {0.99, 1.0, 1.01}) machines.add(rate);
      for (int step = 0; step < 60; ++step) {
        Candidate& one = *machines.candidates[static_cast<std::size_t>(roll(3))];
        switch (roll(9)) {
          case 0:
            one.loop.stop();
            break;
          case 1:
          case 2:
            one.loop.go_on();
            break;
          case 3:
            one.lease.reaches = !one.lease.reaches;
            break;
          case 4:
            one.lease.hears = !one.lease.hears;
            break;
          case 5:
            one.lease.way = Milliseconds(roll(2) == 0 ? 1 : roll(600));
            break;
          case 6:
            if (roll(2) == 0) machines.office.stop();
            break;
          case 7:
            machines.office.start();
            break;
          default:
            break;
        }
        machines.wait(Milliseconds(roll(2500)));
      }
      machines.office.start();
      for (const auto& candidate : machines.candidates) {
        candidate->lease.reaches = true;
        candidate->lease.hears = true;
        candidate->lease.way = 1ms;
        candidate->loop.go_on();
      }
      machines.wait(5s);
      CHECK(machines.leaders() == 1);
    }
  }
}

}  // namespace lineweir::server
