#pragma once

#include <bitset>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>

#include "lines/line_table.h"

namespace lineweir {

class CallerDataEntry;
class DisplayOptions;
class LineSteps;
struct ConsoleState;
struct LineReport;
struct LineRule;

// The status text as a connection begins: nobody is on the lines.
inline constexpr std::string_view status_text_of_free_lines = "F00F01F02F03F04F05F06F07F08F09";
// The characters of a line's item in a status text.
inline constexpr std::size_t status_item_length = 3;

// Applies the server's status text to the line table, to the rows and to the call log.
class LineEvents {
 public:
  LineEvents(ConsoleState& state, DisplayOptions& display, CallerDataEntry& caller_data,
             LineSteps& line_steps);

  // One item of three characters a line, in line order; only the first character, the letter, is
  // read. Whoever writes into it enables Timer4.
  std::string TheStatusText{status_text_of_free_lines};

  // Nobody is on the lines until a server tells of them.
  void expect_free_lines();

  // Takes a text whole, for the next pass.
  void take(std::string_view status_text);
  // Takes a text whole, or the item of a line: it is applied when Timer4 ticks.
  void apply_soon(std::string_view status_text);
  void apply_item_soon(int line, std::string_view item);
  // What waits for the line is applied at once where it changes it: for what was told behind it.
  // What waits for other lines goes on waiting.
  void apply_change_of(int line);

  // The lines are those of another studio group from now on: the rows are blank until its server
  // tells of them.
  void leave_group();

 private:
  // One pass over all lines that were told. A step that fails is tried again, then reported, and
  // the next goes on. A pass before anything was told is none: it would end the calls of a console
  // that comes back, and use up the restoring pass.
  void Timer4_Timer();
  // Whether the line is free only because nothing was told of it since the connection began.
  bool is_untold(int line) const;
  // The restoring pass is over, but for calls of which nothing was told yet: those of a console
  // that comes back to its group, and those whose times came ahead.
  void end_restoring();
  // A step has failed and waits for its next try, during which events run: what they bring waits
  // for the next pass, as no step of theirs would be done.
  bool a_step_waits() const;
  // Restores the line where the pass for that has gone by before it was told.
  void apply_letter(int line, char letter);
  void apply_report(int line, char letter);
  // The letter of a line's item; 0 where the text has none.
  char reported_letter(int line) const;
  std::set<int> reported_lines() const;
  // A held caller with data counts as screened where the equipment is of kind 2.
  bool counts_as_screened(int line) const;
  // With equipment of kind 2 a ring that follows hold counts when it is seen in two passes running.
  bool ring_held_back(int line, char letter);
  bool is_ring_after_hold(int line, char letter) const;
  const LineRule& rule_of(char letter) const;
  void process_change(int line, char letter, char old_letter);
  void free_busy_line(int line);
  void carry_out(const LineRule& rule, const LineReport& report);
  void show_words_again(int line, char letter);
  LineReport report_of(int line, char letter, char old_letter) const;

  ConsoleState& state_;
  DisplayOptions& display_;
  CallerDataEntry& caller_data_;
  LineSteps& line_steps_;
  // Whether the text is one that was taken whole.
  bool told_ = false;
  // The lines of which nothing was told since free ones were expected.
  std::bitset<lines_of_large_layout> untold_;
  // Those of them whose calls are still to be restored.
  std::bitset<lines_of_large_layout> unrestored_;
};

}  // namespace lineweir
