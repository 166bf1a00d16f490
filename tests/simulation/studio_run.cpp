#include "simulation/studio_run.h"

#include <array>

#include "base/text.h"
#include "driver/hands.h"
#include "driver/refusal.h"
#include "lines/status_letters.h"
#include "messages/conversation.h"

namespace lineweir::simulation {
namespace {

using namespace std::chrono_literals;

constexpr Milliseconds step = 250ms;
constexpr Milliseconds mean_between_acts = 3s;
constexpr int acts_a_message = 20;
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

// What a seat that comes in anew is told: the truth.
struct StudioRun::Told {
  std::string letters;
  std::array<std::optional<CallerDetails>, 10> data;
  int next_call = no_line;
  std::string message;
};

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
    seats_.push_back(std::make_unique<Seat>(loop_, network_, transcript_, number, SeatLink::Server,
                                            seed_of(options.seed, Part::Seats, place), identity));
    operators_.push_back(std::make_unique<Operator>(*seats_.back(), count,
                                                    seed_of(options.seed, Part::Operators, place)));
    starts_at_.push_back(dice_.between(0s, 5s));
    busy_.push_back(false);
    let_hands_act(place);
  }
}

StudioRun::~StudioRun() = default;

void StudioRun::run() {
  pass(options_.bad_weather);
  begin_fair_weather();
  if (comes_to_rest()) {
    for (const auto& seat : seats_) look_at(*seat);
  } else {
    for (const auto& seat : seats_) {
      if (!seat->linked()) fault(seat->name() + " has found no way back to the server");
    }
  }
  end_all_calls();
  check_calls();
  for (const std::string& what : site_.faults()) faults_.push_back(what);
}

void StudioRun::let_hands_act(std::size_t number) {
  loop_.schedule(dice_.exponential(mean_between_acts), [this, number] {
    let_hands_act(number);
    Seat& seat = *seats_[number];
    // Nobody does a second thing while the console is busy with the first.
    if (!seat.running() || busy_[number]) return;
    busy_[number] = true;
    if (!tend_link(seat) && !hands_rest_) {
      if (dice_.below(acts_a_message) == 0) {
        write_message(seat);
      } else {
        operators_[number]->act();
      }
    }
    busy_[number] = false;
  });
}

void StudioRun::write_message(Seat& seat) {
  constexpr int key_of_quick_line = 117;
  const std::string text = "Message " + std::to_string(++messages_);
  try {
    MainForm& form = seat.console().Lineweir;
    driver::key(seat.console(), key_of_quick_line, 0);
    driver::replace_text(seat.console(), form.Text2, text);
    driver::type(seat.console(), {form, form.Text2}, "\r");
    seat.note("writes " + text);
  } catch (const driver::Refusal&) {
  }
}

// Who has no link does what a person would: types the password, tries again. Whether there was
// something to do.
bool StudioRun::tend_link(Seat& seat) {
  Console& console = seat.console();
  const auto press = [&](Form& form, Element& element) {
    try {
      driver::click(console, {form, element});
      seat.note("presses " + form.name() + "." + element.name());
      return true;
    } catch (const driver::Refusal&) {
      return false;
    }
  };
  if (console.LoginForm.visible) {
    try {
      driver::replace_text(console, console.LoginForm.PasswordTextBox, seat_password);
    } catch (const driver::Refusal&) {
    }
    if (press(console.LoginForm, console.LoginForm.ConnectButton)) return true;
  }
  const bool must_act = console.WinsockOptions.visible || console.LoginForm.visible ||
                        (console.MyMsgbox.ReconnectButton.visible && console.MyMsgbox.visible);
  if (must_act && dice_.below(2) == 0 && close_what_is_in_the_way(seat)) return true;
  if (console.WinsockOptions.visible) {
    return press(console.WinsockOptions, console.WinsockOptions.SockConnect);
  }
  if (console.MyMsgbox.ReconnectButton.visible && console.MyMsgbox.visible) {
    return press(console.MyMsgbox, console.MyMsgbox.ReconnectButton);
  }
  const bool red = console.Lineweir.Shape1.fill_color == color_red;
  if (!seat.linked() || (red && dice_.below(4) == 0)) {
    console.Lineweir.WinsockMenu.on_click();
    return true;
  }
  return false;
}

// Windows that a hand has opened before.
bool StudioRun::close_what_is_in_the_way(Seat& seat) {
  Console& console = seat.console();
  for (Form* form : console.forms()) {
    const bool is_wanted = form == &console.Lineweir || form == &console.LoginForm ||
                           form == &console.MyMsgbox || form == &console.WinsockOptions;
    if (is_wanted || !form->visible) continue;
    try {
      driver::close(console, *form);
      return true;
    } catch (const driver::Refusal&) {
    }
  }
  return false;
}

void StudioRun::befall() {
  const auto victim = static_cast<std::size_t>(dice_.below(static_cast<int>(seats_.size())));
  switch (dice_.below(5)) {
    case 0:
      if (!seats_[victim]->running()) return;
      seats_[victim]->lose_power();
      starts_at_[victim] = loop_.now() + dice_.between(1s, longest_away);
      return;
    case 1:
      if (seats_[victim]->running()) loop_.run([&] { operators_[victim]->quit(); });
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
  if (!hands_rest_ && loop_.now() >= next_fate_) {
    next_fate_ = loop_.now() + dice_.exponential(mean_between_fates);
    befall();
  }
  for (std::size_t i = 0; i < seats_.size(); ++i) {
    if (seats_[i]->take_away_ended()) starts_at_[i] = loop_.now() + dice_.between(1s, longest_away);
    if (!seats_[i]->running() && loop_.now() >= starts_at_[i]) {
      seats_[i]->start("");
    }
  }
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
  hands_rest_ = true;
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

bool StudioRun::is_settled() {
  if (!site_.is_up()) return false;
  for (const auto& seat : seats_) {
    if (!seat->running() || !seat->linked() || seat->socket().silence() > 1500ms) return false;
    Console& console = seat->console();
    if (console.Lineweir.Timer4.enabled || console.LoginForm.visible) return false;
    if (console.Lineweir.Shape1.fill_color == color_red) return false;
  }
  return true;
}

// A connection may still be cut while the probe asks.
void StudioRun::look_at(Seat& seat) {
  for (;;) {
    const Told told = ask(seat.console().program.GroupNumber);
    if (is_settled()) return compare(seat, told);
    if (!comes_to_rest()) return fault(seat.name() + " has found no rest");
  }
}

StudioRun::Told StudioRun::ask(int group) {
  server::FrameConsole probe(loop_, site_.server(), "probe");
  probe.group = group;
  probe.log_in(users[0], seat_password);
  probe.join(group);
  Told told;
  for (const ServerPacket& packet : probe.take()) {
    switch (static_cast<ServerCommand>(packet.CMD)) {
      case ServerCommand::SrvFullStatus:
        for (std::size_t i = 0; i < packet.Buffer.size(); i += 3) told.letters += packet.Buffer[i];
        break;
      case ServerCommand::SrvCallerData:
        told.data.at(packet.LineNo) = decode_caller_data(packet.Buffer);
        break;
      case ServerCommand::SrvNextCall:
        told.next_call = packet.LineNo == no_value ? no_line : packet.LineNo;
        break;
      case ServerCommand::SrvFlashMessage:
        told.message = decode_text_message(packet.Buffer).value().text;
        break;
      default:
        break;
    }
  }
  return told;
}

void StudioRun::compare(Seat& seat, const Told& told) {
  Console& console = seat.console();
  for (int line = 0; line < static_cast<int>(told.letters.size()); ++line) {
    const auto place = static_cast<std::size_t>(line);
    const std::string row = " of row " + std::to_string(line + 1);
    ++rows_compared_;
    const char letter = console.lines.StatusLetter(line);
    const char truth = told.letters[place];
    expect(seat, "letter" + row, std::string(1, letter == ' ' ? 'F' : letter),
           std::string(1, truth));
    if (truth == 'F') continue;
    // Of a caller of whom nothing is told only the name is taken off the row.
    const CallerDetails data = told.data[place].value_or(CallerDetails{});
    expect(seat, "name" + row, std::string(trimmed(console.Lineweir.LineName(line).caption.get())),
           data.fields[0]);
    if (!told.data[place]) continue;
    expect(seat, "number" + row,
           std::string(
               trimmed(console.Lineweir.labels_of(CallerField::PhoneNumber)(line).caption.get())),
           data.fields[5]);
  }
  expect(seat, "next call", std::to_string(console.lines.TheNextCall),
         std::to_string(told.next_call));
  // A message of its own that didn't go out stands there until the next one comes.
  const bool has_unsent = console.Lineweir.Text1.tool_tip.get().ends_with("not sent");
  if (!told.message.empty() && !has_unsent) {
    expect(seat, "message", console.Lineweir.Text1.text, last_lines(shown_message(told.message)));
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

void StudioRun::expect(const Seat& seat, const std::string& what, const std::string& shown,
                       const std::string& told) {
  if (shown == told) return;
  fault(seat.name() + ": the " + what + " is \"" + shown + "\" and was told as \"" + told + '"');
}

void StudioRun::fault(const std::string& what) {
  transcript_.add("fault", what);
  faults_.push_back(exchange::format_seconds(loop_.now()) + ' ' + what);
}

}  // namespace lineweir::simulation
