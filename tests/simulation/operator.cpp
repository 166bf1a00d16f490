#include "simulation/operator.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "driver/hands.h"
#include "driver/refusal.h"

namespace lineweir::simulation {
namespace {

constexpr int alt = 4;
constexpr int lines_worked = 10;
constexpr int name_entry = 1;
constexpr int clicks_tried = 20;
constexpr Milliseconds settled{500};

// What an operator's random hand keeps away from: it would end the program, leave the studio, set
// the clocks, make a show plan that holds no times, at which each tick of the clocks would end, or
// enter a caller under another name than the operator knows.
constexpr std::array<std::string_view, 12> untouched_elements = {
    "ExitMenu", "Com1",        "Com2",     "Com3",       "Com4",    "NetworkConnectionOption",
    "Off",      "WinsockMenu", "StudioGr", "MemoryFill", "TheText", "Command3D1"};
constexpr std::array<std::string_view, 2> untouched_forms = {"Form2", "Form3"};

constexpr std::string_view keys_of_screener = "AEEADRHI";
constexpr std::string_view keys_of_host = "NXNDRHLI";

template <class Names>
bool holds(const Names& names, std::string_view name) {
  return std::ranges::find(names, name) != names.end();
}

// Whether it was done; what is not on the screen, or doesn't react, is passed over.
template <class Action>
bool tried(Action&& action) {
  try {
    action();
    return true;
  } catch (const driver::Refusal&) {
  }
  return false;
}

int digit_key(int line) { return '0' + (line + 1) % 10; }

}  // namespace

Operator::Operator(Seat& seat, int seats, std::uint64_t seed)
    : seat_(seat), seats_(seats), dice_(seed) {}

void Operator::act() {
  if (!seat_.running()) return;
  const int choice = dice_.below(100);
  if (choice < 55) return press_line_key();
  if (choice < 75) return enter_caller();
  if (choice < 90) return click_anything();
  if (choice < 95) return type_anything();
  close_a_window();
}

void Operator::quit() {
  tried([&] {
    Console& console = seat_.console();
    driver::click(console, {console.Lineweir, console.Lineweir.ExitMenu});
  });
}

void Operator::press_line_key() {
  Console& console = seat_.console();
  if (dice_.below(4) == 0) return press_key(digit_key(dice_.below(lines_worked)), 0);
  const std::string_view keys =
      console.Lineweir.ScreenerMode.checked ? keys_of_screener : keys_of_host;
  press_key(keys[static_cast<std::size_t>(dice_.below(static_cast<int>(keys.size())))], 0);
}

void Operator::enter_caller() {
  const int line = line_to_enter();
  if (line == no_line) return;
  Console& console = seat_.console();
  press_key(digit_key(line), alt);
  if (console.Form4.caption.get() != "Caller Data - Line " + std::to_string(line + 1)) return;
  const std::string name =
      "Caller " + std::to_string(seat_.number()) + "-" + std::to_string(++entered_);
  const bool typed =
      tried([&] { driver::replace_text(console, console.Form4.TheText(name_entry), name); });
  if (!typed) return;
  tried([&] { driver::click(console, {console.Form4, console.Form4.Command3D1}); });
  seat_.note("enters " + name + " on line " + std::to_string(line + 1));
  if (trimmed(console.lines.CallerData(line)[CallerField::CallerName]) == name) {
    seat_.entered.push_back(name);
  }
}

// A line that is this seat's to enter. At a box that is one with a caller who isn't known yet. What
// is on its way from the server would cross what is entered: the console passes over its own data
// that come back, so that the older text would stay in the row.
int Operator::line_to_enter() {
  Console& console = seat_.console();
  const int line = dice_.below(lines_worked);
  if (seat_.link() == SeatLink::Server) {
    const bool crosses = seat_.linked() && seat_.socket().silence() < settled;
    return !crosses && line % seats_ == seat_.number() ? line : no_line;
  }
  const bool unknown =
      !is_empty(console.lines.StatusLetter(line)) && !console.lines.CallerData(line).holds_data();
  return unknown ? line : no_line;
}

void Operator::click_anything() {
  Console& console = seat_.console();
  for (int i = 0; i < clicks_tried; ++i) {
    Form& form = shown_form();
    if (holds(untouched_forms, form.name()) || form.elements().empty()) continue;
    const auto place =
        static_cast<std::size_t>(dice_.below(static_cast<int>(form.elements().size())));
    Element& element = *form.elements()[place];
    if (holds(untouched_elements, element.name())) continue;
    const std::string what = "clicks " + form.name() + "." + element.name();
    if (tried([&] { driver::click(console, {form, element}); })) return seat_.note(what);
  }
}

void Operator::type_anything() {
  Console& console = seat_.console();
  Form& form = shown_form();
  std::vector<TextBox*> boxes;
  for (Element* element : form.elements()) {
    auto* box = dynamic_cast<TextBox*>(element);
    if (box != nullptr && !holds(untouched_elements, box->name())) boxes.push_back(box);
  }
  if (boxes.empty() || holds(untouched_forms, form.name())) return;
  TextBox& box = *boxes[static_cast<std::size_t>(dice_.below(static_cast<int>(boxes.size())))];
  std::string text;
  for (int i = dice_.below(8); i >= 0; --i) text += static_cast<char>(dice_.below(256));
  if (tried([&] { driver::type(console, {form, box}, text); })) {
    seat_.note("types into " + form.name() + "." + box.name() + " \"" + text + '"');
  }
}

void Operator::close_a_window() {
  Console& console = seat_.console();
  for (Form* form : console.forms()) {
    if (form == &console.Lineweir || !form->visible) continue;
    const std::string what = "closes " + form->name();
    if (tried([&] { driver::close(console, *form); })) return seat_.note(what);
  }
}

void Operator::press_key(int code, int shift) {
  if (tried([&] { driver::key(seat_.console(), code, shift); })) {
    seat_.note("presses " + std::string(shift == alt ? "Alt+" : "") + static_cast<char>(code));
  }
}

Form& Operator::shown_form() {
  std::vector<Form*> shown;
  for (Form* form : seat_.console().forms()) {
    if (form->visible) shown.push_back(form);
  }
  if (shown.empty()) return seat_.console().Lineweir;
  return *shown[static_cast<std::size_t>(dice_.below(static_cast<int>(shown.size())))];
}

}  // namespace lineweir::simulation
