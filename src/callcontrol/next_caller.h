#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "callcontrol/longest_wait.h"

namespace lineweir {

class CallerDataEntry;
class ClockEngine;
class PhoneCommands;
class RowDisplay;
class Links;
struct ConsoleState;

// The next caller: the ready line that has waited longest, unless a hand or a server has pinned
// another; and the two buttons that take callers by their turn. With equipment of kind 4 the server
// chooses, and the buttons only ask for it.
class NextCaller {
 public:
  NextCaller(ConsoleState& state, const Links& links, PhoneCommands& phone, RowDisplay& rows,
             CallerDataEntry& caller_data, ClockEngine& clocks);

  // Chooses anew. Where the choice doesn't change, nothing is sent or drawn.
  void FindNext();

  // Whether the button would do anything now.
  bool NextButton_finds_work() const;
  bool NextToConf_finds_work() const;

  // Whether the line is at this console's handset, from which the producer's READY key takes it.
  bool at_handset(int line) const;
  // Does for one line what that key does for each.
  void mark_ready(int line);

  // The producer's conference button of a row. On the serial link the line is pinned at once; a
  // server is asked, and answers with its own choice.
  void pick_by_hand(int line);

  // A server has chosen this line; one that this console doesn't have is passed over.
  void pin(int line);

  // CBClientClass_ReturnNextCall: the server's call-back. The line counts from 1; 0 is none, which
  // changes nothing.
  void ReturnNextCall(int TheNextCall, int TheMessageGroupVal);

 private:
  void NextButton_Click();
  void NextToConf_Click();

  // Holds until the next change of a row, or the next call.
  const std::vector<LineWait>& waits() const;
  void move_to(int line);
  void restore_former_row(int line);
  void unmark(int line);

  void ask_server(std::string_view handler, bool conference);

  // The line that can be put on air next, and the lines at this console's handset.
  std::optional<int> line_for_air() const;
  std::vector<int> lines_at_handset() const;
  void mark_ready();
  void answer_next();
  void put_next_on_air(char word_letter, int bank);

  ConsoleState& state_;
  const Links& links_;
  PhoneCommands& phone_;
  RowDisplay& rows_;
  CallerDataEntry& caller_data_;
  // Kept, so that no tick of the clocks takes memory.
  mutable std::vector<LineWait> waits_;
};

}  // namespace lineweir
