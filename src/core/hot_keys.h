#pragma once

namespace lineweir {

class CallerDataEntry;
class LineActions;
class NextCaller;
class QuickLine;
class Picture;
struct ConsoleState;
struct KeyRule;

// The hot keys of the main form. They are read before the form's controls see them.
class HotKeys {
 public:
  HotKeys(ConsoleState& state, CallerDataEntry& caller_data, NextCaller& next_caller,
          LineActions& line_actions, QuickLine& quick_line);

 private:
  // Key codes are those of a keyboard's letters and digits in capitals, 112 for F1 and so on.
  // `shift` is 0 plain, 1 shift, 2 control, 3 control and shift, 4 alt, 5 alt and shift. A key that
  // has run is swallowed.
  void Form_KeyDown(int& key_code, int shift);

  // False when the key finds nothing to act on.
  bool run(const KeyRule& rule, int code);
  bool press_row_button(Picture& button);
  bool open_caller_data(int row);

  ConsoleState& state_;
  CallerDataEntry& caller_data_;
  NextCaller& next_caller_;
  LineActions& line_actions_;
  QuickLine& quick_line_;
};

}  // namespace lineweir
