#include "callcontrol/dial_pad.h"

#include <algorithm>
#include <string>
#include <vector>

#include "callcontrol/dial_words.h"
#include "callcontrol/socket_trap.h"
#include "core/console.h"
#include "core/guard.h"
#include "core/text.h"

namespace lineweir {
namespace {

constexpr std::string_view dial_handler = "DialForm_SSCommand2_Click";
constexpr std::string_view line_prefix = "Line ";
constexpr std::string_view main_text = "Main";
constexpr std::string_view conference_text = "Conf";

constexpr int key_tab = 9;
constexpr int key_enter = 13;
constexpr int key_escape = 27;

// No character is entered. Tab and Escape are no characters: they lead on and out.
void swallow(int& key) {
  if (key != key_tab && key != key_escape) key = 0;
}

}  // namespace

DialPad::DialPad(Console& console) : console_(console) {
  console.Lineweir.Dial.on_click = [this] { Dial_Click(); };
  DialWindow& form = console.DialForm;
  form.on_load = [this] { Form_Load(); };
  form.on_unload = [this] { Form_Unload(); };
  form.on_key_press = [this](int& key) { Form_KeyPress(key); };
  form.DialButton.wire([this](Button& button) {
    button.on_click = [this, key = button.index()] { DialButton_Click(key); };
  });
  form.SSCommand1.on_click = [this] { SSCommand1_Click(); };
  form.SSCommand2.on_click = [this] { SSCommand2_Click(); };
  form.TheDrop.on_click = [this] { TheDrop_Click(); };
  form.Timer5.on_timer = [this] { Timer5_Timer(); };
  form.Combo1.on_key_press = [this](int& key) { Combo_KeyPress(key); };
  form.Combo2.on_key_press = [this](int& key) { Combo_KeyPress(key); };
  form.Text1.on_key_press = [this](int& key) { Text1_KeyPress(key); };
}

void DialPad::Dial_Click() {
  guard(console_, "Lineweir_Dial_Click", [&] { console_.DialForm.show(); });
}

void DialPad::Form_Load() {
  guard(console_, "DialForm_Form_Load", [&] {
    DialWindow& form = console_.DialForm;
    DialCollection.clear();
    digits_are_done_ = false;
    form.Text1.text = "";
    show_lamp(pictures::GreyPic);
    fill_lists();
    begin_on(first_line_talked_on());
    form.Timer5.enabled = true;
    form.Text1.set_focus();
  });
}

void DialPad::Form_Unload() {
  console_.DialForm.Timer5.enabled = false;
  DialCollection.clear();
}

void DialPad::fill_lists() {
  DialWindow& form = console_.DialForm;
  std::vector<std::string> lines;
  for (int line = 1; line <= console_.lines.LineCount; ++line) {
    lines.push_back(std::string(line_prefix) + std::to_string(line));
  }
  form.Combo1.list = lines;
  form.Combo2.list = std::vector{std::string(main_text), std::string(conference_text)};
  form.Combo1.list_index = 0;
  form.Combo2.list_index = 0;
}

void DialPad::begin_on(int line) {
  console_.dial.DialLine = line;
  console_.dial.DialSeizeLine = no_line;
  if (line == no_line) return;
  DialWindow& form = console_.DialForm;
  form.Combo1.list_index = line;
  if (letter_of(line) == 'C') form.Combo2.list_index = 1;
  show_lamp(lamp_of_seat());
}

void DialPad::DialButton_Click(int Index) {
  guard(console_, "DialForm_DialButton_Click", [&] {
    if (locked()) return;
    const DialSeat seat{console_.line_actions.seat(), console_.Lineweir.ScreenerMode.checked,
                        conference_chosen() ? bank_conference : bank_main};
    const CommandWord word = dial_word(Index, seat);
    TextBox& digits = console_.DialForm.Text1;
    digits.text =
        std::string(trimmed(digits.text)) + dial_keys[static_cast<std::size_t>(Index)].character;
    const DialState& dial = console_.dial;
    if (dial.DialLine == no_line && dial.DialSeizeLine == no_line) SSCommand1_Click();
    DialCollection.push_back(word);
  });
}

void DialPad::SSCommand1_Click() {
  guard(console_, "DialForm_SSCommand1_Click", [&] {
    if (locked() || console_.dial.DialLine != no_line) return;
    const int line = chosen_line();
    if (const auto word = seize_word(line)) console_.phone.PhoneCommand(word->word, word->bank);
    console_.dial.DialSeizeLine = line;
  });
}

std::optional<CommandWord> DialPad::seize_word(int line) const {
  if (!talent()) return console_.line_actions.main_row_word(line);
  const MainForm& form = console_.Lineweir;
  const bool conference = conference_chosen();
  const bool open = conference ? form.OnHybrid2(line).enabled : form.OnHybrid1(line).enabled;
  const char letter = console_.lines.StatusLetter(line);
  if (!open || !may_be_commanded(letter, console_.program.EmptyLineOverride)) return std::nullopt;
  return conference ? CommandWord{line_word('C', line), bank_conference}
                    : CommandWord{line_word('N', line), bank_main};
}

void DialPad::SSCommand2_Click() {
  guard(console_, dial_handler, [&] {
    if (locked() || !console_.Lineweir.WinsockMenu.checked) return;
    if (console_.dial.DialLine == no_line) return;
    const std::string_view text = console_.DialForm.Combo1.text.get();
    const int line = leading_number(text.substr(std::min(text.size(), line_prefix.size()))) - 1;
    const int bank = conference_chosen() ? bank_conference : bank_main;
    socket_trap(console_, dial_handler, [&] {
      ServerPacket packet = console_.server.packet(ClientCommand::CmdDialSeize);
      packet.LineNo = field_byte(line);
      packet.Bank = field_byte(talent() ? bank : bank_none);
      console_.server.send(packet);
    });
  });
}

void DialPad::TheDrop_Click() {
  guard(console_, "DialForm_TheDrop_Click", [&] {
    if (locked()) return;
    if (talent() && conference_chosen()) {
      console_.line_actions.Drop2_Click();
    } else {
      console_.line_actions.Drop1_Click();
    }
    digits_are_done_ = true;
    console_.DialForm.Timer5.enabled = true;
  });
}

void DialPad::Timer5_Timer() {
  guard(console_, "DialForm_Timer5_Timer", [&] {
    send_next_word();
    if (digits_are_done_) console_.DialForm.Text1.text = "";
    digits_are_done_ = false;
    const int line = console_.dial.DialLine;
    if (line != no_line && dialling_on(line)) show_lamp(lamp_of_seat());
    if (line != no_line && !dialling_on(line)) let_go();
    if (console_.dial.DialLine == no_line) watch_chosen_line();
  });
}

void DialPad::send_next_word() {
  if (DialCollection.empty()) return;
  const CommandWord next = DialCollection.front();
  DialCollection.pop_front();
  console_.phone.PhoneCommand(next.word, next.bank);
}

void DialPad::let_go() {
  show_lamp(pictures::GreyPic);
  console_.dial.DialLine = no_line;
  console_.dial.DialSeizeLine = no_line;
  console_.DialForm.Text1.text = "";
}

void DialPad::watch_chosen_line() {
  const int line = chosen_line();
  show_lamp(dial_lamp(letter_of(line), talent(), console_.lines.ThePhoneFlag,
                      console_.program.ConsoleNumber));
  if (!dialling_on(line)) return;
  console_.dial.DialLine = line;
  console_.dial.DialSeizeLine = no_line;
}

void DialPad::Form_KeyPress(int& KeyAscii) {
  const int key = dial_key_of(KeyAscii);
  if (key < 0) return;
  const Button& button = console_.DialForm.DialButton(key);
  if (button.visible && button.enabled) DialButton_Click(key);
  KeyAscii = 0;
}

void DialPad::Combo_KeyPress(int& KeyAscii) { swallow(KeyAscii); }

void DialPad::Text1_KeyPress(int& KeyAscii) {
  if (KeyAscii == key_enter) SSCommand2_Click();
  swallow(KeyAscii);
}

bool DialPad::locked() const { return console_.Lineweir.PassiveMode.checked; }

bool DialPad::talent() const { return console_.Lineweir.StudioMode.checked; }

bool DialPad::conference_chosen() const { return console_.DialForm.Combo2.text == conference_text; }

int DialPad::chosen_line() const {
  return leading_number(right_part(console_.DialForm.Combo1.text.get(), 2)) - 1;
}

char DialPad::letter_of(int line) const {
  return line >= 0 && line < console_.lines.LineCount ? console_.lines.StatusLetter(line) : ' ';
}

bool DialPad::dialling_on(int line) const { return talks_on(letter_of(line), talent()); }

int DialPad::first_line_talked_on() const {
  for (int line = 0; line < console_.lines.LineCount; ++line) {
    if (dialling_on(line)) return line;
  }
  return no_line;
}

std::string_view DialPad::lamp_of_seat() const {
  return talent() ? pictures::RedPic : pictures::GreenPic;
}

void DialPad::show_lamp(std::string_view picture) {
  console_.DialForm.SSCommand1.picture = picture;
}

}  // namespace lineweir
