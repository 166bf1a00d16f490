#pragma once

namespace lineweir {

class DisplayOptions;
class RowDisplay;
class ScreenLayout;
class VisibleRows;
struct ConsoleState;

// What the user does on DisplayOptionForm about the lines that have a row.
class RowChoice {
 public:
  RowChoice(ConsoleState& state, const VisibleRows& visible_rows, RowDisplay& rows,
            DisplayOptions& display, ScreenLayout& layout);

  // TextWrit_RefreshVisibleRows: counts the checked lines into VisibleLines and arranges the rows.
  // Another count is another layout of the whole form.
  void RefreshVisibleRows();

 private:
  void linecheck_Click(int Index);

  ConsoleState& state_;
  const VisibleRows& visible_rows_;
  RowDisplay& rows_;
  DisplayOptions& display_;
  ScreenLayout& layout_;
};

}  // namespace lineweir
