#include "simulation/studio_people.h"

#include "driver/hands.h"
#include "driver/refusal.h"

namespace lineweir::simulation {
namespace {

using namespace std::chrono_literals;

constexpr Milliseconds mean_between_acts = 3s;
constexpr int acts_a_message = 20;
constexpr Milliseconds longest_away = 20s;
constexpr Milliseconds longest_silence = 1500ms;

}  // namespace

void StudioPeople::add(const SeatIdentity& identity, int count, exchange::Dice& dice,
                       std::uint64_t seat_seed, std::uint64_t operator_seed) {
  dice_ = &dice;
  const std::size_t number = seats_.size();
  seats_.push_back(std::make_unique<Seat>(loop_, network_, transcript_, static_cast<int>(number),
                                          SeatLink::Server, seat_seed, identity));
  operators_.push_back(std::make_unique<Operator>(*seats_.back(), count, operator_seed));
  starts_at_.push_back(dice.between(0s, 5s));
  busy_.push_back(false);
  let_hands_act(number);
}

void StudioPeople::lose_power(std::size_t seat) {
  if (!seats_[seat]->running()) return;
  seats_[seat]->lose_power();
  come_back_later(seat);
}

void StudioPeople::quit(std::size_t seat) {
  if (seats_[seat]->running()) loop_.run([&] { operators_[seat]->quit(); });
}

void StudioPeople::tend() {
  for (std::size_t i = 0; i < seats_.size(); ++i) {
    if (seats_[i]->take_away_ended()) come_back_later(i);
    if (!seats_[i]->running() && loop_.now() >= starts_at_[i]) seats_[i]->start("");
  }
}

bool StudioPeople::are_settled() {
  for (const auto& seat : seats_) {
    if (!seat->running() || !seat->linked()) return false;
    if (seat->socket().silence() > longest_silence) return false;
    Console& console = seat->console();
    if (console.Lineweir.Timer4.enabled || console.LoginForm.visible) return false;
    if (console.Lineweir.Shape1.fill_color == color_red) return false;
  }
  return true;
}

void StudioPeople::come_back_later(std::size_t seat) {
  starts_at_[seat] = loop_.now() + dice_->between(1s, longest_away);
}

void StudioPeople::let_hands_act(std::size_t number) {
  loop_.schedule(dice_->exponential(mean_between_acts), [this, number] {
    let_hands_act(number);
    Seat& seat = *seats_[number];
    // Nobody does a second thing while the console is busy with the first.
    if (!seat.running() || busy_[number]) return;
    busy_[number] = true;
    if (!tend_link(seat) && !hands_rest_) {
      if (dice_->below(acts_a_message) == 0) {
        write_message(seat);
      } else {
        operators_[number]->act();
      }
    }
    busy_[number] = false;
  });
}

// Who has no link does what a person would: types the password, tries again. Whether there was
// something to do.
bool StudioPeople::tend_link(Seat& seat) {
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
      driver::replace_text(console, console.LoginForm.PasswordTextBox, seat.password());
    } catch (const driver::Refusal&) {
    }
    if (press(console.LoginForm, console.LoginForm.ConnectButton)) return true;
  }
  const bool must_act = console.WinsockOptions.visible || console.LoginForm.visible ||
                        (console.MyMsgbox.ReconnectButton.visible && console.MyMsgbox.visible);
  if (must_act && dice_->below(2) == 0 && close_what_is_in_the_way(seat)) return true;
  if (console.WinsockOptions.visible) {
    return press(console.WinsockOptions, console.WinsockOptions.SockConnect);
  }
  if (console.MyMsgbox.ReconnectButton.visible && console.MyMsgbox.visible) {
    return press(console.MyMsgbox, console.MyMsgbox.ReconnectButton);
  }
  const bool red = console.Lineweir.Shape1.fill_color == color_red;
  if (!seat.linked() || (red && dice_->below(4) == 0)) {
    console.Lineweir.WinsockMenu.on_click();
    return true;
  }
  return false;
}

// Windows that a hand has opened before.
bool StudioPeople::close_what_is_in_the_way(Seat& seat) {
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

void StudioPeople::write_message(Seat& seat) {
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

}  // namespace lineweir::simulation
