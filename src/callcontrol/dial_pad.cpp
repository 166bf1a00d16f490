#include "callcontrol/dial_pad.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/text.h"
#include "callcontrol/dial_words.h"
#include "callcontrol/phone_command.h"
#include "callcontrol/row_words.h"
#include "elements/key_characters.h"
#include "forms/picture_names.h"
#include "link/links.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto dial_handler = "DialForm_SSCommand2_Click";
constexpr std::string_view line_prefix = "Line ";
constexpr std::string_view main_text = "Main";
constexpr std::string_view conference_text = "Conf";

// No character is entered. Tab and Escape are no characters: they lead on and out.
void swallow(int& key) {
  if (key != tab_key && key != escape_key) key = 0;
}

}  // namespace

DialPad::DialPad(ConsoleState& state, const Links& links, PhoneCommands& phone)
    : state_(state), links_(links), phone_(phone) {
  wire(state.Lineweir.Dial.on_click, state_.trace, "Lineweir_Dial_Click", [this] { Dial_Click(); });
  DialPadForm& form = state.DialForm;
  wire(form.on_load, state_.trace, "DialForm_Form_Load", [this] { Form_Load(); });
  wire(form.on_unload, state_.trace, "DialForm_Form_Unload", [this] { Form_Unload(); });
  wire(form.on_key_press, state_.trace, "DialForm_Form_KeyPress",
       [this](int& key) { Form_KeyPress(key); });
  form.DialButton.wire_each([this](Button& button) {
    wire(button.on_click, state_.trace, "DialForm_DialButton_Click",
         [this, key = button.index()] { DialButton_Click(key); });
  });
  wire(form.SSCommand1.on_click, state_.trace, "DialForm_SSCommand1_Click",
       [this] { SSCommand1_Click(); });
  wire(form.SSCommand2.on_click, state_.trace, dial_handler, [this] { SSCommand2_Click(); });
  wire(form.TheDrop.on_click, state_.trace, "DialForm_TheDrop_Click", [this] { TheDrop_Click(); });
  wire(form.Timer5.on_timer, state_.trace, "DialForm_Timer5_Timer", [this] { Timer5_Timer(); });
  wire(form.Combo1.on_key_press, state_.trace, "DialForm_Combo1_KeyPress", swallow);
  wire(form.Combo2.on_key_press, state_.trace, "DialForm_Combo2_KeyPress", swallow);
  wire(form.Text1.on_key_press, state_.trace, "DialForm_Text1_KeyPress",
       [this](int& key) { Text1_KeyPress(key); });
}

void DialPad::Dial_Click() { state_.DialForm.show(); }

void DialPad::Form_Load() {
  DialPadForm& form = state_.DialForm;
  DialCollection.clear();
  place_ = present_place();
  digits_are_done_ = false;
  form.Text1.text = "";
  show_lamp(pictures::GreyPic);
  fill_lists();
  begin_on(first_line_talked_on());
  form.Timer5.enabled = true;
  form.Text1.set_focus();
}

void DialPad::Form_Unload() {
  state_.DialForm.Timer5.enabled = false;
  DialCollection.clear();
}

void DialPad::fill_lists() {
  DialPadForm& form = state_.DialForm;
  std::vector<std::string> lines;
  for (int line = 1; line <= state_.lines.LineCount; ++line) {
    lines.push_back(std::string(line_prefix) + std::to_string(line));
  }
  form.Combo1.list = lines;
  form.Combo2.list = std::vector{std::string(main_text), std::string(conference_text)};
  form.Combo1.list_index = 0;
  form.Combo2.list_index = 0;
}

void DialPad::begin_on(int line) {
  state_.dial.DialLine = line;
  state_.dial.DialSeizeLine = no_line;
  if (line == no_line) return;
  DialPadForm& form = state_.DialForm;
  form.Combo1.list_index = line;
  if (letter_of(line) == 'C') form.Combo2.list_index = 1;
  show_lamp(lamp_of_seat());
}

void DialPad::leave_former_place() {
  const Place place = present_place();
  if (place == place_) return;
  place_ = place;
  DialCollection.clear();
  let_go();
}

DialPad::Place DialPad::present_place() const {
  return {&links_.in_use(), state_.program.GroupNumber};
}

void DialPad::follow_line_count() {
  const auto count = state_.DialForm.Combo1.list_count();
  if (count == state_.lines.LineCount) return;
  const int line = chosen_line();
  const int hybrid = state_.DialForm.Combo2.list_index;
  fill_lists();
  state_.DialForm.Combo2.list_index = hybrid;
  if (line < state_.lines.LineCount) state_.DialForm.Combo1.list_index = line;
}

void DialPad::DialButton_Click(int Index) {
  if (locked()) return;
  leave_former_place();
  const DialSeat seat{seat_of(state_), state_.Lineweir.ScreenerMode.checked,
                      conference_chosen() ? bank_conference : bank_main};
  const CommandWord word = dial_word(Index, seat);
  TextBox& digits = state_.DialForm.Text1;
  digits.text =
      std::string(trimmed(digits.text)) + dial_keys[static_cast<std::size_t>(Index)].character;
  const DialState& dial = state_.dial;
  if (dial.DialLine == no_line && dial.DialSeizeLine == no_line)
    state_.DialForm.SSCommand1.on_click();
  DialCollection.push_back(word);
}

void DialPad::SSCommand1_Click() {
  leave_former_place();
  follow_line_count();
  if (locked() || state_.dial.DialLine != no_line) return;
  const int line = chosen_line();
  if (const auto word = seize_word(line)) phone_.PhoneCommand(word->word, word->bank);
  state_.dial.DialSeizeLine = line;
}

std::optional<CommandWord> DialPad::seize_word(int line) const {
  if (!talent()) return main_row_word(state_, line);
  const MainForm& form = state_.Lineweir;
  const bool conference = conference_chosen();
  const bool open = conference ? form.OnHybrid2(line).enabled : form.OnHybrid1(line).enabled;
  const char letter = state_.lines.StatusLetter(line);
  if (!open || !may_be_commanded(letter, state_.program.EmptyLineOverride)) return std::nullopt;
  return conference ? CommandWord{numbered_word('C', line), bank_conference}
                    : CommandWord{numbered_word('N', line), bank_main};
}

void DialPad::SSCommand2_Click() {
  leave_former_place();
  if (locked() || phone_.refuse_locked_key()) return;
  if (state_.dial.DialLine == no_line) return;
  const std::string_view text = state_.DialForm.Combo1.text.get();
  const int line = leading_number(text.substr(std::min(text.size(), line_prefix.size()))) - 1;
  const int bank = conference_chosen() ? bank_conference : bank_main;
  links_.in_use().seize(dial_handler, line, talent() ? bank : bank_none);
}

void DialPad::TheDrop_Click() {
  if (locked()) return;
  MainForm& main = state_.Lineweir;
  (talent() && conference_chosen() ? main.Drop2 : main.Drop1).on_click();
  digits_are_done_ = true;
  state_.DialForm.Timer5.enabled = true;
}

void DialPad::Timer5_Timer() {
  leave_former_place();
  follow_line_count();
  send_next_word();
  if (digits_are_done_) state_.DialForm.Text1.text = "";
  digits_are_done_ = false;
  const int line = state_.dial.DialLine;
  if (line != no_line && dialling_on(line)) show_lamp(lamp_of_seat());
  if (line != no_line && !dialling_on(line)) let_go();
  if (state_.dial.DialLine == no_line) watch_chosen_line();
}

void DialPad::send_next_word() {
  if (DialCollection.empty()) return;
  const CommandWord next = DialCollection.front();
  DialCollection.pop_front();
  phone_.PhoneCommand(next.word, next.bank);
}

void DialPad::let_go() {
  show_lamp(pictures::GreyPic);
  state_.dial.DialLine = no_line;
  state_.dial.DialSeizeLine = no_line;
  state_.DialForm.Text1.text = "";
}

void DialPad::watch_chosen_line() {
  const int line = chosen_line();
  show_lamp(dial_lamp(letter_of(line), talent(), state_.lines.ThePhoneFlag,
                      state_.program.ConsoleNumber));
  if (!dialling_on(line)) return;
  state_.dial.DialLine = line;
  state_.dial.DialSeizeLine = no_line;
}

void DialPad::Form_KeyPress(int& KeyAscii) {
  const int key = dial_key_of(KeyAscii);
  if (key < 0) return;
  const Button& button = state_.DialForm.DialButton(key);
  if (button.visible && button.enabled) button.on_click();
  KeyAscii = 0;
}

void DialPad::Text1_KeyPress(int& KeyAscii) {
  if (KeyAscii == enter_key) state_.DialForm.SSCommand2.on_click();
  swallow(KeyAscii);
}

bool DialPad::locked() const {
  return state_.Lineweir.PassiveMode.checked || state_.Lineweir.Dial.withheld;
}

bool DialPad::talent() const { return state_.Lineweir.StudioMode.checked; }

bool DialPad::conference_chosen() const { return state_.DialForm.Combo2.text == conference_text; }

int DialPad::chosen_line() const {
  return leading_number(right_part(state_.DialForm.Combo1.text.get(), 2)) - 1;
}

char DialPad::letter_of(int line) const {
  return line >= 0 && line < state_.lines.LineCount ? state_.lines.StatusLetter(line) : ' ';
}

bool DialPad::dialling_on(int line) const { return talks_on(letter_of(line), talent()); }

int DialPad::first_line_talked_on() const {
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    if (dialling_on(line)) return line;
  }
  return no_line;
}

std::string_view DialPad::lamp_of_seat() const {
  return talent() ? pictures::RedPic : pictures::GreenPic;
}

void DialPad::show_lamp(std::string_view picture) { state_.DialForm.SSCommand1.picture = picture; }

}  // namespace lineweir
