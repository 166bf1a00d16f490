#pragma once

namespace lineweir {

class MainForm;
struct DesignScale;

// Where the buttons, the lamp, the message boxes and the clocks of the main form stand for a number
// of rows. In the layouts of 19 and 20 rows the centre buttons leave the panel for the column at
// the right; from 11 rows on the clocks do.

void lay_out_panel(MainForm& form, int visible_lines, const DesignScale& scale);

// The band at the lower edge of the panel: notices stand on its lower line, and the notes of
// callers share what is left.
void lay_out_band(MainForm& form, int visible_lines, const DesignScale& scale);

// The drop and hold buttons: in producer mode the first two are wide and cover the others.
void lay_out_drop_buttons(MainForm& form, int visible_lines, const DesignScale& scale);

void lay_out_clocks(MainForm& form, int visible_lines, const DesignScale& scale);

}  // namespace lineweir
