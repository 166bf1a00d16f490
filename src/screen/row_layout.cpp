#include "screen/row_layout.h"

#include <array>
#include <vector>

#include "core/console.h"
#include "screen/column_room.h"
#include "screen/design_scale.h"
#include "screen/strip_pictures.h"

namespace lineweir {
namespace {

constexpr int label_drop = 45;
constexpr int label_height = 225;
constexpr int row_button_width = 375;

void place(Control& control, const Place& at) {
  control.move(at.left, at.top, at.width, at.height);
}

void place_row(Console& console, const DesignScale& scale, int line, int row) {
  MainForm& form = console.Lineweir;
  const int visible = console.program.VisibleLines;
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
  console.rows.SetCiconPosition1(line);
  console.rows.SetCiconPosition2(line);
}

void show_row(Console& console, int line, bool shown) {
  MainForm& form = console.Lineweir;
  const bool was_shown = form.OnHybrid1(line).visible;
  for (Picture* part : {&form.DataRow(line), &form.DataRowImage(line), &form.OnHybrid1(line),
                        &form.OnHybrid2(line)}) {
    part->visible = shown;
  }
  if (!shown) {
    form.CIcon1(line).visible = false;
    form.CIcon2(line).visible = false;
  } else if (!was_shown) {
    console.rows.show_icons(line);
  }
}

}  // namespace

void lay_out_headings(Console& console, const DesignScale& scale) {
  const LayoutRange& range = layout_range(console.program.VisibleLines);
  place(console.Lineweir.Label10, scale.of(range.main_heading));
  place(console.Lineweir.Label9, scale.of(range.conference_heading));
}

void lay_out_rows(Console& console, const DesignScale& scale) {
  const std::vector<int> rows = console.visible_rows.rows();
  for (int line = 0; line < console.lines.LineCount; ++line) {
    const int row = rows[static_cast<std::size_t>(line)];
    if (row != no_row) place_row(console, scale, line, row);
    show_row(console, line, row != no_row);
  }
}

void lay_out_columns(Console& console, const DesignScale& scale) {
  MainForm& form = console.Lineweir;
  const int visible = console.program.VisibleLines;
  const LayoutRange& range = layout_range(visible);
  const std::vector<int> rows = console.visible_rows.rows();

  std::array<bool, column_count> in_use{};
  int left = range.strip_left + first_column_gap;
  for (const int column : console.display.ColumnsInUse) {
    const int width = console.display.width_of(column);
    place(form.CaptionLabel(column), scale.of({left, range.caption_top, width, label_height}));
    for (int line = 0; line < console.lines.LineCount; ++line) {
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
    for (int line = 0; line < console.lines.LineCount; ++line) {
      form.column_labels(column)(line).visible =
          used && rows[static_cast<std::size_t>(line)] != no_row;
    }
  }
  console.display.tell_room();
}

void SetFieldWidths(Console& console) {
  for (int column = 0; column < column_count; ++column) {
    const ControlArray<Label>& labels = console.Lineweir.column_labels(column);
    for (int line = 1; line < console.lines.LineCount; ++line) {
      labels(line).width = labels(0).width.get();
    }
  }
}

}  // namespace lineweir
