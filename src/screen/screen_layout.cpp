#include "screen/screen_layout.h"

#include "core/console.h"
#include "core/guard.h"
#include "screen/panel_layout.h"
#include "screen/row_layout.h"

namespace lineweir {

ScreenLayout::ScreenLayout(Console& console) : console_(console) {
  console.Lineweir.Line20Mode.on_click = [this] { Line20Mode_Click(); };
}

void ScreenLayout::RedefineScreen() {
  MainForm& form = console_.Lineweir;
  const bool was_visible = form.visible;
  guard(console_, "Lineweir_RedefineScreen", [&] { redefine(); });
  if (was_visible) form.visible = true;
}

void ScreenLayout::redefine() {
  MainForm& form = console_.Lineweir;
  console_.lines.resize(console_.lines.LineCount);
  load_rows();
  if (count_rows()) put_at_design_size();
  console_.window.give_target_size();

  const int visible = console_.program.VisibleLines;
  scale_ = design_scale(form.width, form.height, visible, form.Options.visible);
  // The digital clock has no room beside more rows.
  if (visible > lines_of_small_layout) console_.clock_menu.show_dials();

  console_.faces.load_pictures();
  console_.faces.show_pictures();
  console_.faces.lay_out(scale_);
  lay_out_headings(console_, scale_);
  lay_out_rows(console_, scale_);
  lay_out_columns(console_, scale_);
  lay_out_panel(form, visible, scale_);
  lay_out_clocks(form, visible, scale_);
  console_.panel.fit_center_buttons();
  console_.panel.SetEnabledDisabled();
  SetLabels();

  console_.faces.SetPictureAutoOff();
  console_.faces.CheckTopSize();
  console_.rows.DrawMark();
  console_.window.give_target_state();
}

bool ScreenLayout::count_rows() {
  const int former = console_.program.VisibleLines;
  console_.program.VisibleLines = console_.visible_rows.count();
  return console_.program.VisibleLines != former;
}

void ScreenLayout::put_at_design_size() {
  console_.Lineweir.hide();
  console_.Standby.hide();
  console_.window.SetToRoot(0);
  console_.faces.SetPictureAutoOn();
}

void ScreenLayout::load_rows() {
  MainForm& form = console_.Lineweir;
  const int wanted = console_.lines.LineCount;
  for (int line = form.DataRow.upper_bound() - 1; line >= wanted; --line) {
    console_.rows.hide_marks(line);
    form.unload_row(line);
  }
  for (int line = form.DataRow.upper_bound(); line < wanted; ++line) {
    form.load_row(line);
    form.show_idle(line);
  }
  console_.visible_rows.load_line_boxes();
}

void ScreenLayout::set_line_count(int line_count) {
  console_.lines.resize(line_count);
  load_rows();
}

void ScreenLayout::lay_out_drop_buttons() {
  ::lineweir::lay_out_drop_buttons(console_.Lineweir, console_.program.VisibleLines, scale_);
  SetLabels();
}

void ScreenLayout::SetLabels() {
  for (const PanelButton& laid : console_.Lineweir.panel_buttons()) {
    laid.image.move(0, 0, laid.button.width, laid.button.height);
    laid.label.move(0, 0, laid.button.width, laid.button.height);
  }
  console_.panel.place_drop_labels();
}

void ScreenLayout::Line20Mode_Click() {
  guard(console_, "Lineweir_Line20Mode_Click", [&] {
    MenuItem& item = console_.Lineweir.Line20Mode;
    item.checked = !item.checked;
  });
}

}  // namespace lineweir
