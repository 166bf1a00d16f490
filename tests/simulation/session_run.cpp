#include "simulation/session_run.h"

#include "base/text.h"
#include "driver/hands.h"
#include "driver/refusal.h"

namespace lineweir::simulation {
namespace {

using namespace std::chrono_literals;

constexpr Milliseconds step = 250ms;
constexpr Milliseconds settled = 600ms;
constexpr Milliseconds mean_between_acts = 4s;
constexpr Milliseconds fair_weather_lasts = 90s;
constexpr Milliseconds fair_look_lasts = 5s;
constexpr int most_tries = 4;

constexpr Weather bad_weather = {
    .refused = 0.15, .cut = 0.8, .longest_life = 12'000, .cut_unseen = 0.4};
constexpr Weather fair_weather = {.stalled = 0, .refused = 0, .late = 0, .cut = 0};

enum class Part : std::uint64_t { User = 1, Network, Server, Seat };

std::uint64_t seed_of(std::uint64_t seed, Part part) {
  return seed * 1'000'003 + static_cast<std::uint64_t>(part);
}

}  // namespace

SessionRun::SessionRun(std::uint64_t seed)
    : dice_(seed_of(seed, Part::User)),
      network_(loop_, transcript_, bad_weather, seed_of(seed, Part::Network)),
      server_(loop_, network_, transcript_, network_address(server_host, server_port),
              seed_of(seed, Part::Server)),
      seat_(loop_, network_, transcript_, 0, SeatLink::Server, seed_of(seed, Part::Seat)) {}

void SessionRun::run(int minutes) {
  seat_.start();
  seat_.console().Lineweir.DimLineNumMenu.checked = true;
  let_user_act();
  const auto pass = [this](Milliseconds time) {
    for (const Milliseconds end = loop_.now() + time; loop_.now() < end;) {
      loop_.advance(step);
      look();
    }
  };
  pass(std::chrono::minutes(minutes));
  network_.set_weather(fair_weather);
  server_.calm_down();
  // The connection that stands may still be cut, and a console whose trace is on asks but once a
  // minute whether its server is there.
  bool compared = false;
  for (int tries = 0; tries < most_tries && !compared; ++tries) {
    pass(fair_weather_lasts);
    const long before = comparisons_;
    pass(fair_look_lasts);
    compared = comparisons_ > before;
  }
  if (!compared) fault("nothing could be compared in fair weather");
}

void SessionRun::let_user_act() {
  loop_.schedule(dice_.exponential(mean_between_acts), [this] {
    let_user_act();
    Console& console = seat_.console();
    const auto press = [&](Form& form, Element& element) {
      try {
        seat_.note("presses " + form.name() + "." + element.name());
        driver::click(console, {form, element});
        return true;
      } catch (const driver::Refusal&) {
        return false;
      }
    };
    // Who gets no answer tries another way in the end.
    if (console.LoginForm.visible && dice_.below(5) == 0) console.LoginForm.unload();
    if (console.LoginForm.visible && press(console.LoginForm, console.LoginForm.ConnectButton)) {
      return;
    }
    if (console.WinsockOptions.visible) {
      press(console.WinsockOptions, console.WinsockOptions.SockConnect);
      return;
    }
    if (console.MyMsgbox.ReconnectButton.visible &&
        press(console.MyMsgbox, console.MyMsgbox.ReconnectButton)) {
      return;
    }
    const ControlArray<MenuItem>& groups = console.Lineweir.StudioGr;
    const int group = dice_.below(studio_count);
    if (dice_.below(6) == 0 && groups.loaded(group)) {
      press(console.Lineweir, groups(group));
      return;
    }
    // A red lamp is all that tells of a registration that was never answered.
    const bool red = console.Lineweir.Shape1.fill_color == color_red;
    if (!seat_.linked() || (red && dice_.below(4) == 0) || dice_.below(40) == 0) {
      console.Lineweir.WinsockMenu.on_click();
    }
  });
}

void SessionRun::look() {
  for (; failures_seen_ < seat_.failures().size(); ++failures_seen_) {
    const std::string& failure = seat_.failures()[failures_seen_];
    if (!failure.ends_with("The socket is not connected")) fault("a handler failed: " + failure);
  }
  const ToldState* told = server_.told();
  if (told == nullptr || !seat_.linked() || seat_.socket().silence() < settled) return;
  if (seat_.console().Lineweir.Timer4.enabled) return;
  ++comparisons_;
  compare(*told);
}

void SessionRun::compare(const ToldState& told) {
  Console& console = seat_.console();
  expect("group", std::to_string(console.program.GroupNumber), std::to_string(told.group));
  for (int line = 0; line < ToldState::line_count; ++line) {
    const auto place = static_cast<std::size_t>(line);
    const std::string row = " of row " + std::to_string(line + 1);
    // A line of which nothing was ever heard is free too.
    const char letter = console.lines.StatusLetter(line);
    expect("letter" + row, std::string(1, letter == ' ' ? free_letter : letter),
           std::string(1, told.letters[place]));
    const LetterLook* look = look_of(console.lines.StatusLetter(line));
    const std::string& words = console.Lineweir.LineStatus(line).caption;
    // A display that is built anew has none for a line that is locked and not on air.
    const bool left_out = words.empty() && letter == 'Y';
    if (look != nullptr && words != next_caller_status && !left_out) {
      expect("status" + row, words, std::string(look->status_text));
    }
    expect("name" + row, std::string(trimmed(console.Lineweir.LineName(line).caption.get())),
           told.callers[place]);
    expect("line name" + row, console.Lineweir.LineNumb(line).caption, told.line_names[place]);
  }
  const ComboBox& groups = console.DisplayOptionForm.MessageGroupSelector;
  if (groups.list.get() != told.groups) fault("the groups are not those told");
  expect("next event", console.clock_state.ServerEventText, told.show_times[2]);
}

void SessionRun::expect(std::string_view what, const std::string& shown, const std::string& told) {
  if (shown == told) return;
  fault("the " + std::string(what) + " is \"" + shown + "\" and was told as \"" + told + '"');
}

void SessionRun::fault(const std::string& what) {
  transcript_.add("fault", what);
  faults_.push_back(exchange::format_seconds(loop_.now()) + ' ' + what);
}

}  // namespace lineweir::simulation
