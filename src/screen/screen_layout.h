#pragma once

#include "screen/design_scale.h"

namespace lineweir {

struct Console;

// Puts every element of the main form in its place for the rows shown and the form's size.
class ScreenLayout {
 public:
  explicit ScreenLayout(Console& console);

  // Brings the arrays, the rows and the number of visible rows in line with LineCount and the line
  // boxes, then places everything. Where the number of visible rows has changed the form is put at
  // its design size first.
  void RedefineScreen();

  // Load20: makes the rows' elements up to LineCount, and unmakes those above.
  void load_rows();

  // Changes the number of lines, with the table's arrays and the rows' elements. The screen follows
  // at the next RedefineScreen.
  void set_line_count(int line_count);

  // Places the drop and hold buttons, whose size is another in each mode.
  void lay_out_drop_buttons();

  // Lays what lies on the panel's buttons over them.
  void SetLabels();

  // The scale of the last rebuild: in it stands everything that is on the form.
  const DesignScale& scale() const { return scale_; }

 private:
  void redefine();
  // Whether the number of visible rows has changed.
  bool count_rows();
  void put_at_design_size();

  void Line20Mode_Click();

  Console& console_;
  DesignScale scale_;
};

}  // namespace lineweir
