#pragma once

#include <deque>
#include <optional>
#include <string_view>

#include "callcontrol/line_commands.h"

namespace lineweir {

class PhoneCommands;
class Links;
class StudioLink;
struct ConsoleState;

// What DialForm does: seizes a line, keys digits on it and drops it. The words of the digits wait
// in a queue from which each tick of Timer5 sends one, so that fast keying can't outrun the
// equipment. The form follows the line's state as the equipment reports it.
class DialPad {
 public:
  DialPad(ConsoleState& state, const Links& links, PhoneCommands& phone);

  // The words not yet sent, the next one first.
  std::deque<CommandWord> DialCollection;

 private:
  void Dial_Click();
  void DialButton_Click(int Index);

  void Form_Load();
  void Form_Unload();
  void Form_KeyPress(int& KeyAscii);
  void SSCommand1_Click();
  void SSCommand2_Click();
  void TheDrop_Click();
  void Timer5_Timer();
  void Text1_KeyPress(int& KeyAscii);

  // Passive mode: a pad that was open stays to be looked at, and its keys do nothing.
  bool locked() const;
  bool talent() const;
  bool conference_chosen() const;
  int chosen_line() const;
  // A blank for a line that the table doesn't have.
  char letter_of(int line) const;
  bool dialling_on(int line) const;
  int first_line_talked_on() const;
  void fill_lists();
  void begin_on(int line);
  std::optional<CommandWord> seize_word(int line) const;
  void send_next_word();
  void let_go();
  void watch_chosen_line();
  // The lamp of a line that this seat talks on.
  std::string_view lamp_of_seat() const;
  void show_lamp(std::string_view picture);

  // What was keyed for one studio group's lines, or on one way to them, is nothing to another's.
  void leave_former_place();
  // The list goes by the number of lines, which may change while the pad is open.
  void follow_line_count();

  struct Place {
    const StudioLink* way = nullptr;
    int group = 0;
    bool operator==(const Place&) const = default;
  };
  Place present_place() const;

  ConsoleState& state_;
  const Links& links_;
  PhoneCommands& phone_;
  Place place_;
  // The line was dropped by hand: the next tick takes the digits away.
  bool digits_are_done_ = false;
};

}  // namespace lineweir
