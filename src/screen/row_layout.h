#pragma once

namespace lineweir {

class DisplayOptions;
class RowDisplay;
class VisibleRows;
struct ConsoleState;

// Where the rows of the main form stand, and what stands in them. The j-th line that is shown
// stands in the j-th row; the others are hidden with all their elements.

void lay_out_headings(ConsoleState& state);

// Strips and row buttons with their icons.
void lay_out_rows(ConsoleState& state, const VisibleRows& visible_rows, RowDisplay& rows);

// Lays the columns in use one after the other along the rows, with the captions above them, and
// hides the others. A column of no width is hidden too.
void lay_out_columns(ConsoleState& state, const VisibleRows& visible_rows, DisplayOptions& display);

// Gives the labels of each line the widths of those of line 0.
void SetFieldWidths(ConsoleState& state);

}  // namespace lineweir
