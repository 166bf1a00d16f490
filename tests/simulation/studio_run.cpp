#include "simulation/studio_run.h"

#include <array>

#include "simulation/studio_told.h"

namespace lineweir::simulation {
namespace {

using namespace std::chrono_literals;

constexpr Milliseconds step = 250ms;
constexpr Milliseconds mean_between_fates = 25s;
constexpr Milliseconds longest_away = 20s;
constexpr Milliseconds quiet = 4s;
constexpr Milliseconds longest_settling = 10min;
// All that is told behind a login has come by then.
constexpr Milliseconds rest = 2s;

constexpr Weather bad_weather = {.stalled = 0.02,
                                 .longest_stall = 60'000ms,
                                 .refused = 0.1,
                                 .late = 0.1,
                                 .cut = 0.5,
                                 .longest_life = 60'000,
                                 .cut_unseen = 0.4};
constexpr Weather fair_weather = {.stalled = 0, .refused = 0, .late = 0, .cut = 0};

constexpr std::array users = {"anna", "bob", "carla", "dora"};
constexpr int groups = 2;

enum class Part : std::uint64_t { Run = 1, Network, Exchange, Store, Seats, Operators = 1000 };

std::uint64_t seed_of(std::uint64_t seed, Part part, std::size_t number = 0) {
  return seed * 1'000'003 + static_cast<std::uint64_t>(part) * 131 + number;
}

server::ServerOptions server_options() {
  server::ServerOptions options;
  for (int number = 1; number <= groups; ++number) {
    server::GroupOptions group;
    group.number = number;
    group.name = "Studio " + std::to_string(number);
    options.groups.push_back(group);
  }
  // Every other seat is let in by where it is.
  for (int seat = 0; seat < 40; seat += 2) {
    options.fixed_seats.push_back(
        {"seat " + std::to_string(seat), users[static_cast<std::size_t>(seat) % users.size()]});
  }
  return options;
}

// Most studios have a few seats; some have many.
int seat_count(exchange::Dice& dice) {
  return dice.below(25) == 0 ? 10 + dice.below(31) : 3 + dice.below(4);
}

}  // namespace

StudioRun::StudioRun(const StudioRunOptions& options)
    : options_(options),
      dice_(seed_of(options.seed, Part::Run)),
      network_(loop_, transcript_, bad_weather, seed_of(options.seed, Part::Network)),
      site_(loop_, network_, transcript_, network_address(server_host, server_port),
            server_options(), {users.begin(), users.end()}, seed_of(options.seed, Part::Exchange)) {
  const int count = seat_count(dice_);
  for (int number = 0; number < count; ++number) {
    const auto place = static_cast<std::size_t>(number);
    SeatIdentity identity;
    identity.user = users[place % users.size()];
    identity.password = seat_password;
    identity.group = dice_.below(4) == 0 ? 2 : 1;
    people_.add(identity, count, dice_, seed_of(options.seed, Part::Seats, place),
                seed_of(options.seed, Part::Operators, place));
  }
}

StudioRun::~StudioRun() = default;

void StudioRun::run() {
  pass(options_.bad_weather);
  begin_fair_weather();
  if (comes_to_rest()) {
    for (const auto& seat : people_.seats()) look_at(*seat);
  } else {
    for (const auto& seat : people_.seats()) {
      if (!seat->linked()) fault(seat->name() + " has found no way back to the server");
    }
  }
  end_all_calls();
  check_calls();
  for (const std::string& what : site_.faults()) faults_.push_back(what);
}

void StudioRun::befall() {
  const auto victim =
      static_cast<std::size_t>(dice_.below(static_cast<int>(people_.seats().size())));
  switch (dice_.below(5)) {
    case 0:
      people_.lose_power(victim);
      return;
    case 1:
      people_.quit(victim);
      return;
    case 2:
      // What wasn't written yet would be lost with the machine.
      if (!site_.is_up() || !site_.has_written_all()) return;
      site_.crash();
      // A console may be waiting for it, and time passes in that wait.
      loop_.schedule(dice_.between(1s, longest_away), [this] { site_.start(); });
      return;
    case 3:
      transcript_.add("store", "stalls");
      site_.store().stall(true);
      return heal_store_later();
    default:
      transcript_.add("store", "misbehaves");
      site_.store().misbehave(seed_of(options_.seed, Part::Store), 0.5, 2s);
      return heal_store_later();
  }
}

void StudioRun::heal_store_later() {
  loop_.schedule(dice_.between(1s, 30s), [this] {
    site_.store().stall(false);
    site_.store().behave();
  });
}

// Between the steps no handler runs, so that a console may go and another come.
void StudioRun::tend() {
  if (!people_.hands_rest() && loop_.now() >= next_fate_) {
    next_fate_ = loop_.now() + dice_.exponential(mean_between_fates);
    befall();
  }
  people_.tend();
}

void StudioRun::pass(Milliseconds time) {
  for (const Milliseconds end = loop_.now() + time; loop_.now() < end;) {
    loop_.advance(step);
    tend();
  }
}

void StudioRun::begin_fair_weather() {
  transcript_.add("run", "fair weather, and all hands rest");
  network_.set_weather(fair_weather);
  site_.quieten();
  people_.rest();
  // Connections that stand may still be cut, and what stalls still comes.
  pass(2min);
}

bool StudioRun::comes_to_rest() {
  const Milliseconds latest = loop_.now() + longest_settling;
  Milliseconds settled_since = loop_.now();
  while (loop_.now() - settled_since < rest) {
    if (loop_.now() >= latest) return false;
    pass(step);
    if (!is_settled()) settled_since = loop_.now();
  }
  return true;
}

bool StudioRun::is_settled() { return site_.is_up() && people_.are_settled(); }

// A connection may still be cut while the probe asks.
void StudioRun::look_at(Seat& seat) {
  for (;;) {
    const int group = seat.console().program.GroupNumber;
    const StudioTold told = ask_studio(loop_, site_.server(), users[0], seat_password, group);
    if (is_settled()) {
      for (const std::string& what : differences(seat, told, rows_compared_)) fault(what);
      return;
    }
    if (!comes_to_rest()) return fault(seat.name() + " has found no rest");
  }
}

void StudioRun::end_all_calls() {
  for (int group = 1; group <= groups; ++group) {
    exchange::SimulatedExchange& exchange = site_.exchange(group);
    for (int line = 0; line < exchange.line_count(); ++line) exchange.leave(line);
  }
  pass(30s);
}

void StudioRun::check_calls() {
  std::vector<platform::CallRecord> calls;
  site_.store().calls({}, [&](auto found) { calls = found.value(); });
  loop_.advance(1s);
  calls_ = calls.size();
  for (const platform::CallRecord& call : calls) {
    std::string steps;
    for (const platform::CallStep& step_of : call.steps) steps += ' ' + step_of.action;
    transcript_.add("store",
                    "call on line " + std::to_string(call.line + 1) + " of group " +
                        std::to_string(call.group) + " from " +
                        exchange::format_seconds(call.began - platform::ScriptedWallClock::begins) +
                        ":" + steps);
  }
  if (calls.size() != site_.calls_seen()) {
    fault("the store has " + std::to_string(calls.size()) + " calls of " +
          std::to_string(site_.calls_seen()));
  }
  for (const platform::CallRecord& call : calls) {
    if (call.ended < call.began) fault("a call ended before it began");
  }
}

void StudioRun::fault(const std::string& what) {
  transcript_.add("fault", what);
  faults_.push_back(exchange::format_seconds(loop_.now()) + ' ' + what);
}

}  // namespace lineweir::simulation
