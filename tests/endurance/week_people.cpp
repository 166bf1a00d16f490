#include "endurance/week_people.h"

#include "driver/hands.h"
#include "driver/refusal.h"
#include "lines/status_letters.h"

namespace lineweir::endurance {
namespace {

constexpr int name_entry = 1;
constexpr int number_entry = 6;
// Of so many callers one hangs up while it rings, and one while he waits for his turn.
constexpr std::int64_t impatient_at_ringing = 10;
constexpr std::int64_t impatient_on_hold = 15;

// Whether it could be done now.
template <class Action>
bool tried(Action action) {
  try {
    action();
    return true;
  } catch (const driver::Refusal&) {
    return false;
  }
}

bool click(Console& console, Form& form, Element& element) {
  return tried([&] { driver::click(console, {form, element}); });
}

}  // namespace

void WeekPeople::act() {
  if (turn_ % turns_a_call == 0) let_call();
  if (turn_ % turns_a_call == 5) let_lose_patience();
  if (turn_ % turns_in_a_role == 0) change_role();
  if (turn_ / turns_in_a_role % 2 == 0) {
    screen();
  } else {
    be_host();
  }
  ++turn_;
}

void WeekPeople::end_all_calls() {
  for (int line = 0; line < week_lines; ++line) studio_.leave(line);
}

void WeekPeople::let_call() {
  for (int tries = 0; tries < week_lines; ++tries) {
    const int line = static_cast<int>((calls_ + tries) % week_lines);
    if (studio_.letter(line) != exchange::idle_letter) continue;
    if (!studio_.ring(line, "555 " + std::to_string(calls_ + 1))) continue;
    call_on_.at(static_cast<std::size_t>(line)) = ++calls_;
    return;
  }
  ++without_line_;
}

void WeekPeople::let_lose_patience() {
  for (int line = 0; line < week_lines; ++line) {
    const std::int64_t call = call_on_.at(static_cast<std::size_t>(line));
    const char letter = studio_.letter(line);
    const bool at_ringing = letter == ringing_letter && call % impatient_at_ringing == 0;
    const bool on_hold = letter == ready_letter && call % impatient_on_hold == 1;
    if (at_ringing || on_hold) studio_.leave(line);
  }
}

void WeekPeople::change_role() {
  MainForm& form = studio_.desk().console->Lineweir;
  const bool screens = turn_ / turns_in_a_role % 2 == 0;
  form.MitelPhone1.on_click();
  (screens ? form.ScreenerMode : form.StudioMode).on_click();
}

void WeekPeople::screen() {
  Console& console = *studio_.desk().console;
  MainForm& form = console.Lineweir;
  const int line = line_with('P');
  if (line == no_line) {
    // Who has waited for no second yet is not the next to be answered.
    click(console, form, form.NextToConfButton);
  } else if (noted_call_.at(static_cast<std::size_t>(line)) !=
             call_on_.at(static_cast<std::size_t>(line))) {
    type_caller(line);
  } else {
    click(console, form, form.NextButton);
  }
}

void WeekPeople::type_caller(int line) {
  Console& console = *studio_.desk().console;
  constexpr int alt = 4;
  if (!tried([&] { driver::key(console, '0' + (line + 1) % 10, alt); })) return;
  CallerDataForm& form = console.Form4;
  if (form.caption.get() != "Caller Data - Line " + std::to_string(line + 1)) return;
  const std::int64_t call = call_on_.at(static_cast<std::size_t>(line));
  const std::string name = "Caller " + std::to_string(call);
  const bool typed = tried([&] {
    driver::replace_text(console, form.TheText(name_entry), name);
    driver::replace_text(console, form.TheText(number_entry), "555 " + std::to_string(call));
  });
  if (!typed || !click(console, form, form.Command3D1)) return;
  noted_call_.at(static_cast<std::size_t>(line)) = call;
  noted_.push_back(name);
}

void WeekPeople::be_host() {
  Console& console = *studio_.desk().console;
  MainForm& form = console.Lineweir;
  click(console, form, line_with('N') == no_line ? form.NextButton : form.Drop1);
}

int WeekPeople::line_with(char letter) const {
  for (int line = 0; line < week_lines; ++line) {
    if (studio_.desk().console->lines.StatusLetter(line) == letter) return line;
  }
  return no_line;
}

}  // namespace lineweir::endurance
