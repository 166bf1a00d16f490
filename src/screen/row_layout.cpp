#include "screen/row_layout.h"

#include <array>
#include <vector>

#include "screen/column_room.h"
#include "screen/control_place.h"
#include "screen/display_options.h"
#include "screen/row_display.h"
#include "screen/strip_pictures.h"
#include "screen/visible_rows.h"
#include "state/console_state.h"
#include "state/design_scale.h"

namespace lineweir {
namespace {

constexpr int label_drop = 45;
constexpr int label_height = 225;
constexpr int row_button_width = 375;

void place_row(ConsoleState& state, RowDisplay& rows, int line, int row) {
  const DesignScale& scale = state.scale;
  MainForm& form = state.Lineweir;
  const int visible = state.program.VisibleLines;
  const LayoutRange& range = layout_range(visible);
  const int top = scale.down(row_top(visible, row));
  // From edge to edge, so that rows touch at any scale.
  const int height = scale.down(row_top(visible, row) + row_pitch) - top;
  const int strip_width = scale.across(range.strip_width);
  const int button_width = scale.across(row_button_width);
  form.DataRow(line).move(scale.across(range.strip_left), top, strip_width, height);
  form.DataRowImage(line).move(0, 0, strip_width, height);
  form.DataRowImage(line).picture = fitted_strip(form.DataRow(line).picture.get(), strip_width);
  form.OnHybrid1(line).move(scale.across(range.main_button_left), top, button_width, height);
  form.OnHybrid2(line).move(scale.across(range.conference_button_left), top, button_width, height);
  rows.SetCiconPosition1(line);
  rows.SetCiconPosition2(line);
}

void show_row(ConsoleState& state, RowDisplay& rows, int line, bool shown) {
  MainForm& form = state.Lineweir;
  const bool was_shown = form.OnHybrid1(line).visible;
  for (Picture* part : {&form.DataRow(line), &form.DataRowImage(line), &form.OnHybrid1(line),
                        &form.OnHybrid2(line)}) {
    part->visible = shown;
  }
  if (!shown) {
    form.CIcon1(line).visible = false;
    form.CIcon2(line).visible = false;
  } else if (!was_shown) {
    rows.show_icons(line);
  }
}

}  // namespace

void lay_out_headings(ConsoleState& state) {
  const DesignScale& scale = state.scale;
  const LayoutRange& range = layout_range(state.program.VisibleLines);
  place(state.Lineweir.Label10, scale.of(range.main_heading));
  place(state.Lineweir.Label9, scale.of(range.conference_heading));
}

void lay_out_rows(ConsoleState& state, const VisibleRows& visible_rows, RowDisplay& rows) {
  const std::vector<int> row_of_line = visible_rows.rows();
  for (int line = 0; line < state.lines.LineCount; ++line) {
    const int row = row_of_line[static_cast<std::size_t>(line)];
    if (row != no_row) place_row(state, rows, line, row);
    show_row(state, rows, line, row != no_row);
  }
}

void lay_out_columns(ConsoleState& state, const VisibleRows& visible_rows,
                     DisplayOptions& display) {
  const DesignScale& scale = state.scale;
  MainForm& form = state.Lineweir;
  const int visible = state.program.VisibleLines;
  const LayoutRange& range = layout_range(visible);
  const std::vector<int> rows = visible_rows.rows();

  std::array<bool, column_count> in_use{};
  int left = range.strip_left + first_column_gap;
  for (const int column : display.ColumnsInUse) {
    const int width = display.width_of(column);
    place(form.CaptionLabel(column), scale.of({left, range.caption_top, width, label_height}));
    for (int line = 0; line < state.lines.LineCount; ++line) {
      const int row = rows[static_cast<std::size_t>(line)];
      Label& label = form.column_labels(column)(line);
      label.width = scale.across(width);
      if (row == no_row) continue;
      place(label, scale.of({left, row_top(visible, row) + label_drop, width, label_height}));
    }
    in_use[static_cast<std::size_t>(column)] = width > 0;
    left += width;
  }
  for (int column = 0; column < column_count; ++column) {
    const bool used = in_use[static_cast<std::size_t>(column)];
    form.CaptionLabel(column).visible = used;
    for (int line = 0; line < state.lines.LineCount; ++line) {
      form.column_labels(column)(line).visible =
          used && rows[static_cast<std::size_t>(line)] != no_row;
    }
  }
  display.tell_room();
}

void SetFieldWidths(ConsoleState& state) {
  for (int column = 0; column < column_count; ++column) {
    const ControlArray<Label>& labels = state.Lineweir.column_labels(column);
    for (int line = 1; line < state.lines.LineCount; ++line) {
      labels(line).width = labels(0).width.get();
    }
  }
}

}  // namespace lineweir
