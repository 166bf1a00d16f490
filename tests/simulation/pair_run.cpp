#include "simulation/pair_run.h"

#include <algorithm>
#include <utility>

#include "server/rights_templates.h"
#include "simulation/server_site.h"

namespace lineweir::simulation {
namespace {

using namespace std::chrono_literals;

constexpr Milliseconds step = 250ms;
constexpr Milliseconds looked_every = 50ms;
constexpr Milliseconds mean_between_fates = 12s;
constexpr Milliseconds longest_fate = 20s;
constexpr Milliseconds longest_store_harm = 60s;
// What the store was asked for in vain has been asked for again by then.
constexpr Milliseconds store_recovers_within = 4s;
constexpr Milliseconds longest_settling = 10min;
constexpr Milliseconds rest = 2s;
constexpr Milliseconds longest_takeover = 5s;
constexpr Milliseconds farthest_set = 10s;

constexpr Weather bad_weather = {.stalled = 0.01,
                                 .longest_stall = 5'000ms,
                                 .refused = 0.05,
                                 .late = 0.05,
                                 .cut = 0.2,
                                 .longest_life = 40'000,
                                 .cut_unseen = 0.4};
constexpr Weather fair_weather = {.stalled = 0, .refused = 0, .late = 0, .cut = 0};

constexpr std::array users = {"anna", "bob", "carla"};
constexpr std::array hosts = {"studio-1", "studio-2"};
constexpr int group = 1;

enum class Part : std::uint64_t {
  Run = 1,
  Network,
  Exchange,
  Store,
  Machines,
  Seats = 100,
  Operators = 200
};

std::uint64_t seed_of(std::uint64_t seed, Part part, std::size_t number = 0) {
  return seed * 1'000'033 + static_cast<std::uint64_t>(part) * 137 + number;
}

server::ServerOptions server_options() {
  server::ServerOptions options;
  options.groups = {{.number = group, .name = "Studio 1"}};
  // Every other seat is let in by where it is.
  for (std::size_t seat = 0; seat < 10; seat += 2) {
    options.fixed_seats.push_back({"seat " + std::to_string(seat), users[seat % users.size()]});
  }
  return options;
}

exchange::SimulatedExchangeOptions exchange_options(std::uint64_t seed) {
  return {.callers = {15s, 40s, 90s}, .seed = seed};
}

}  // namespace

PairRun::PairRun(const PairRunOptions& options)
    : options_(options),
      dice_(seed_of(options.seed, Part::Run)),
      network_(loop_, transcript_, bad_weather, seed_of(options.seed, Part::Network)),
      room_(loop_, exchange_options(seed_of(options.seed, Part::Exchange))),
      server_options_(server_options()),
      clocks_differ_(dice_.below(5) == 0 ? 60'000ms : 300ms),
      witness_(std::make_unique<TakeoverWitness>(
          ledger_, loop_, clocks_differ_ < 1s ? clocks_differ_ : 2 * clocks_differ_)) {
  room_.on_change = [this](exchange::LineChange change, char before) {
    transcript_.add("exchange", std::string(1, before) + " to " + change.letter + " on line " +
                                    std::to_string(change.line + 1));
    ledger_.note(loop_.now(), change, before);
  };
  platform::ScriptedPasswordHash passwords(loop_);
  for (const char* user : users) {
    passwords.hash(seat_password, [this, user](const std::string& hash) {
      platform::Account account;
      account.name = user;
      account.password_hash = hash;
      account.rights[0] = server::rights_of(server::RightsTemplate::Engineer);
      store_.content().accounts[user] = account;
    });
  }
  loop_.advance(100ms);
  build_machines();
  const int count = 3 + dice_.below(2);
  for (int number = 0; number < count; ++number) {
    const auto place = static_cast<std::size_t>(number);
    SeatIdentity identity;
    identity.user = users[place % users.size()];
    identity.password = seat_password;
    identity.servers = std::string(hosts[0]) + "," + hosts[1];
    people_.add(identity, count, dice_, seed_of(options.seed, Part::Seats, place),
                seed_of(options.seed, Part::Operators, place));
  }
  look();
}

PairRun::~PairRun() = default;

void PairRun::build_machines() {
  const StudioGround ground{loop_, network_, transcript_, office_, store_, room_, server_options_};
  for (std::size_t i = 0; i < machines_.size(); ++i) {
    const double rate = 1 + 0.01 * (2 * dice_.fraction() - 1);
    machines_[i] =
        std::make_unique<ServerMachine>(ground, hosts[i], network_address(hosts[i], server_port),
                                        rate, seed_of(options_.seed, Part::Machines, i));
    machines_[i]->clock().move(dice_.between(0ms, clocks_differ_));
    machines_[i]->on_sent = [this](ServerMachine& machine, const ServerPacket& packet) {
      witness_->sent(machine, packet);
    };
    machines_[i]->on_received = [this](ServerMachine&, const ServerPacket& packet) {
      if (packet.CMD == static_cast<std::uint8_t>(ClientCommand::CmdSetNextCall)) ++choices_;
      witness_->received(packet);
    };
    machines_[i]->on_lead_began = [this](ServerMachine& machine) {
      ++leads_;
      for (const auto& other : machines_) {
        const bool both = machine.believes_to_lead() && other->believes_to_lead();
        if (other.get() != &machine && other->serves() && both) {
          fault(machine.name() + " begins to serve, and " + other->name() + " does");
        }
      }
    };
    machines_[i]->start();
  }
}

void PairRun::run() {
  pass(options_.bad_times);
  mend_all();
  pass(2min);
  if (comes_to_rest()) {
    look_at_consoles();
    look_at_takeover();
  } else {
    fault(leader() == nullptr ? "nobody leads in the end" : "not all are settled in the end");
  }
  for (int line = 0; line < room_.exchange().line_count(); ++line) room_.exchange().leave(line);
  pass(30s);
  check_store();
}

void PairRun::look() {
  ServerMachine* const leads = leader();
  // Once the lease is another's the store takes no more of one that may still serve for a second.
  const bool may_write = leads != nullptr && leads->epoch() == office_.epoch();
  ledger_.look(loop_.now(), may_write && leads->serves_well() && !store_is_harmed_ &&
                                loop_.now() >= store_well_from_);
  for (const std::string& what : witness_->take_faults()) {
    transcript_.add("fault", what);
    faults_.push_back(what);
  }
  loop_.schedule(looked_every, [this] { look(); });
}

void PairRun::befall() {
  ServerMachine& machine = any_machine();
  const auto seat = static_cast<std::size_t>(dice_.below(static_cast<int>(people_.seats().size())));
  switch (dice_.below(13)) {
    case 0:
    case 1:
      machine.kill();
      return later(longest_fate, [&machine] { machine.start(); });
    case 2:
      machine.end_in_order();
      return later(longest_fate, [&machine] { machine.start(); });
    case 3:
    case 4:
      machine.stop();
      return later(longest_fate, [&machine] { machine.go_on(); });
    case 5:
      return cut(machine.name() + " and the lease", machine.lease_cable);
    case 6:
      return cut(machine.name() + " and the store", machine.store_cable);
    case 7:
      // As a network is that is cut: both at once.
      cut(machine.name() + " and the lease", machine.lease_cable);
      return cut(machine.name() + " and the store", machine.store_cable);
    case 8:
      return cut(machine.name() + " and the exchange", machine.exchange_cable);
    case 9:
      return part_console(seat);
    case 10:
      return harm_store();
    case 11:
      // A firewall that forgets, say: the office takes the leader's session for ended, and the
      // leader hears nothing more of it.
      transcript_.add("lease", "the holder's connection is reset");
      office_.reset_holder();
      if (leader() != nullptr) cut(leader()->name() + " and the lease", leader()->lease_cable);
      return;
    default:
      if (clocks_differ_ > 1s) machine.clock().move(dice_.between(-farthest_set, farthest_set));
      people_.lose_power(seat);
  }
}

void PairRun::cut(const std::string& what, Cable& cable) {
  const int direction = dice_.below(4);
  transcript_.add("cable", what + (direction == 0   ? ": nothing goes there"
                                   : direction == 1 ? ": nothing comes back"
                                                    : ": cut"));
  cable.there = direction == 1;
  cable.back = direction == 0;
  if (dice_.below(6) == 0) {
    cable = {.there = true, .back = true, .way = dice_.between(50ms, 600ms)};
  }
  for (const auto& machine : machines_) machine->plug();
  later(longest_fate, [this, what, &cable] {
    transcript_.add("cable", what + ": mended");
    cable = {};
    store_well_from_ = loop_.now() + store_recovers_within;
    for (const auto& machine : machines_) machine->plug();
  });
}

void PairRun::part_console(std::size_t seat) {
  const std::string& place = people_.seats()[seat]->name();
  const std::string& address = any_machine().address();
  const int direction = dice_.below(3);
  transcript_.add("network", place + " and " + address + " are parted");
  if (direction != 1) network_.part(place, address);
  if (direction != 0) network_.part(address, place);
  later(longest_fate, [this] {
    transcript_.add("network", "is mended");
    network_.mend();
  });
}

void PairRun::harm_store() {
  store_is_harmed_ = true;
  const auto heal = [this] {
    transcript_.add("store", "is well");
    store_.stall(false);
    store_.fail(false);
    store_.refuse_writes(false);
    store_.behave();
    store_.take(0ms);
    office_.start();
    store_is_harmed_ = false;
    store_well_from_ = loop_.now() + store_recovers_within;
  };
  switch (dice_.below(5)) {
    case 0:
      transcript_.add("store", "is away, and the lease with it");
      office_.stop();
      store_.fail(true);
      break;
    case 1:
      transcript_.add("store", "stalls");
      store_.stall(true);
      break;
    case 2:
      transcript_.add("store", "takes no writes");
      store_.refuse_writes(true);
      break;
    case 3:
      transcript_.add("store", "is slow");
      store_.take(dice_.between(100ms, 3s));
      break;
    default:
      transcript_.add("store", "misbehaves");
      store_.misbehave(seed_of(options_.seed, Part::Store), 0.5, 2s);
  }
  later(longest_store_harm, heal);
}

void PairRun::later(Milliseconds longest, std::function<void()> mend) {
  loop_.schedule(dice_.between(500ms, longest), std::move(mend));
}

// What is still to be mended by itself is so within a minute. One that was told to end may have
// done so only behind the time at which it was to start again.
void PairRun::mend_all() {
  transcript_.add("run", "all is mended, and all hands rest");
  network_.set_weather(fair_weather);
  network_.mend();
  room_.exchange().quieten();
  people_.rest();
  for (const auto& machine : machines_) {
    loop_.schedule(longest_store_harm + longest_fate, [&machine] { machine->start(); });
  }
}

void PairRun::pass(Milliseconds time) {
  for (const Milliseconds end = loop_.now() + time; loop_.now() < end;) {
    loop_.advance(step);
    if (!people_.hands_rest() && loop_.now() >= next_fate_) {
      next_fate_ = loop_.now() + dice_.exponential(mean_between_fates);
      befall();
    }
    people_.tend();
  }
}

bool PairRun::comes_to_rest() {
  const Milliseconds latest = loop_.now() + longest_settling;
  Milliseconds settled_since = loop_.now();
  while (loop_.now() - settled_since < rest) {
    if (loop_.now() >= latest) return false;
    pass(step);
    if (!is_settled()) settled_since = loop_.now();
  }
  return true;
}

bool PairRun::is_settled() {
  const ServerMachine* const leads = leader();
  return leads != nullptr && leads->serves_well() && people_.are_settled();
}

ServerMachine* PairRun::leader() {
  for (const auto& machine : machines_) {
    if (machine->serves() && machine->believes_to_lead()) return machine.get();
  }
  return nullptr;
}

ServerMachine& PairRun::any_machine() {
  ServerMachine* const leads = leader();
  // The one that leads has more to lose.
  if (leads != nullptr && dice_.below(3) > 0) return *leads;
  return *machines_[static_cast<std::size_t>(dice_.below(2))];
}

void PairRun::look_at_consoles() {
  const StudioTold told = ask_studio(loop_, leader()->server(), users[0], seat_password, group);
  if (told.letters != room_.letters()) {
    fault("the lines are told as " + told.letters + " and are " + room_.letters());
  }
  for (const auto& seat : people_.seats()) {
    for (const std::string& what : differences(*seat, told, rows_compared_)) fault(what);
  }
  check_workers();
}

// In a studio at rest a server that falls is missed by nobody.
void PairRun::look_at_takeover() {
  ServerMachine& first = *leader();
  const StudioTold before = ask_studio(loop_, first.server(), users[0], seat_password, group);
  const Milliseconds asked_at = loop_.now();
  const long choices = choices_;
  first.kill();
  const Milliseconds killed_at = loop_.now();
  while (leader() == nullptr && loop_.now() - killed_at < longest_takeover) loop_.advance(10ms);
  if (leader() == nullptr) return fault("nobody has taken over");
  transcript_.add("run",
                  "taken over after " + std::to_string((loop_.now() - killed_at).count()) + " ms");
  first.start();
  if (!comes_to_rest()) return fault("not all are settled behind the last takeover");
  look_at_consoles();
  const StudioTold after = ask_studio(loop_, leader()->server(), users[0], seat_password, group);
  const auto compare = [this](const std::string& what, bool same) {
    if (!same) fault(what + " other behind the last takeover");
  };
  compare("the letters are", before.letters == after.letters);
  compare("the message is", before.message == after.message);
  // A console may choose another one by itself.
  compare("the next call is", choices_ != choices || before.next_call == after.next_call);
  for (std::size_t line = 0; line < before.data.size(); ++line) {
    const std::string of_line = " of line " + std::to_string(line + 1);
    const auto& old_data = before.data[line];
    const auto& new_data = after.data[line];
    // What somebody enters for a line that is free is no call's.
    compare("the caller data" + of_line + " are",
            before.letters[line] == 'F' || (old_data.has_value() == new_data.has_value() &&
                                            (!old_data || old_data->fields == new_data->fields)));
    const auto passed = std::chrono::duration_cast<std::chrono::seconds>(loop_.now() - asked_at);
    const auto& old_clock = before.clocks.at(line);
    const auto& new_clock = after.clocks.at(line);
    const auto differ = 2 * clocks_differ_ / 1s + 3;
    const bool same_clock =
        old_clock.has_value() == new_clock.has_value() &&
        (!old_clock || std::abs(*new_clock - *old_clock - passed.count()) <= differ);
    compare("the clock" + of_line + " is", same_clock);
  }
}

// Who works which line is what the store says of the calls that stand.
void PairRun::check_workers() {
  const std::vector<std::string> told = workers_told(loop_, leader()->server(), group);
  std::vector<std::string> kept(told.size());
  for (const auto& [id, call] : store_.content().calls) {
    if (call.ended != platform::Moment{0}) continue;
    std::string& user = kept.at(static_cast<std::size_t>(call.line));
    for (const platform::CallStep& of_call : call.steps) {
      if (!of_call.user.empty() && of_call.action != "data") user = of_call.user;
    }
  }
  for (std::size_t line = 0; line < told.size(); ++line) {
    if (told[line] == kept[line]) continue;
    fault("line " + std::to_string(line + 1) + " is worked by \"" + told[line] +
          "\" and in the store by \"" + kept[line] + '"');
  }
}

void PairRun::check_store() {
  std::vector<platform::CallRecord> calls;
  for (const auto& [id, call] : store_.content().calls) {
    calls.push_back(call);
    std::string steps;
    for (const platform::CallStep& of_call : call.steps) {
      steps += ' ' + of_call.action + (of_call.user.empty() ? "" : '(' + of_call.user + ')');
    }
    const platform::Moment begins = platform::ScriptedWallClock::begins;
    transcript_.add("store", "call on line " + std::to_string(call.line + 1) + " from " +
                                 exchange::format_seconds(call.began - begins) + " to " +
                                 exchange::format_seconds(call.ended - begins) + ":" + steps);
    if (call.ended == platform::Moment{0}) fault("a call has no end");
    if (call.ended < call.began) fault("a call has ended before it began");
    if (!std::ranges::is_sorted(call.steps, {}, &platform::CallStep::at)) {
      fault("the steps of a call are in no order");
    }
    const auto is_end = [](const platform::CallStep& of_call) {
      return of_call.action == "hang up" || of_call.action == "drop" ||
             of_call.action == "ended while the server was away";
    };
    if (std::ranges::count_if(call.steps, is_end) != 1 || !is_end(call.steps.back())) {
      fault("a call doesn't end once");
    }
  }
  if (clocks_differ_ < 1s) {
    for (const std::string& what :
         ledger_.wrong_in(calls, platform::ScriptedWallClock::begins, clocks_differ_ + 1500ms)) {
      fault(what);
    }
  }
  if (store_.content().verdict().first_wrong != 0) fault("the audit is not whole");
}

void PairRun::fault(const std::string& what) {
  transcript_.add("fault", what);
  faults_.push_back(exchange::format_seconds(loop_.now()) + ' ' + what);
}

}  // namespace lineweir::simulation
