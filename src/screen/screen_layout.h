#pragma once

namespace lineweir {

struct Console;

// Puts every element of the main form in its place for the rows shown and the form's size.
class ScreenLayout {
 public:
  explicit ScreenLayout(Console& console);

  void RedefineScreen();

  // Load20: makes the rows' elements up to LineCount, and unmakes those above.
  void load_rows();

  // Changes the number of lines, with the table's arrays and the rows' elements.
  void set_line_count(int line_count);

  // The drop and hold buttons and what lies on all buttons: the first two are wide in producer mode
  // and cover the others.
  void lay_out_drop_buttons();

  // Lays the columns in use one after the other along the rows, and hides the others.
  void lay_out_columns();

 private:
  void lay_out_backgrounds();
  void lay_out_headings();
  void lay_out_rows();
  void lay_out_panel();
  void lay_out_clocks();
  void SetLabels();

  int scaled_x(int design) const;
  int scaled_y(int design) const;

  Console& console_;
  double ratio_x_ = 1;
  double ratio_y_ = 1;
};

}  // namespace lineweir
