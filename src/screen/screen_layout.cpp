#include "screen/screen_layout.h"

#include "clocks/clock_menu.h"
#include "screen/button_panel.h"
#include "screen/display_options.h"
#include "screen/panel_layout.h"
#include "screen/row_display.h"
#include "screen/row_layout.h"
#include "screen/screen_faces.h"
#include "screen/visible_rows.h"
#include "screen/window_size.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {

ScreenLayout::ScreenLayout(ConsoleState& state, ClockMenu& clock_menu, VisibleRows& visible_rows,
                           RowDisplay& rows, DisplayOptions& display, ButtonPanel& panel,
                           ScreenFaces& faces, WindowSize& window)
    : state_(state),
      clock_menu_(clock_menu),
      visible_rows_(visible_rows),
      rows_(rows),
      display_(display),
      panel_(panel),
      faces_(faces),
      window_(window) {}

void ScreenLayout::RedefineScreen() {
  MainForm& form = state_.Lineweir;
  const bool was_visible = form.visible;
  guard(state_.trace, "Lineweir_RedefineScreen", [&] { redefine(); });
  if (was_visible) form.visible = true;
}

void ScreenLayout::redefine() {
  MainForm& form = state_.Lineweir;
  state_.lines.resize(state_.lines.LineCount);
  load_rows();
  if (count_rows()) put_at_design_size();
  window_.give_target_size();

  const int visible = state_.program.VisibleLines;
  state_.scale = design_scale(form.width, form.height, visible, form.Options.visible);
  // The digital clock has no room beside more rows.
  if (visible > lines_of_small_layout) clock_menu_.show_dials();

  faces_.load_pictures();
  faces_.show_pictures();
  faces_.lay_out(state_.scale);
  lay_out_headings(state_);
  lay_out_rows(state_, visible_rows_, rows_);
  lay_out_columns(state_, visible_rows_, display_);
  lay_out_panel(form, visible, state_.scale);
  lay_out_clocks(form, visible, state_.scale);
  panel_.fit_center_buttons();
  if (on_buttons_placed) on_buttons_placed();
  SetLabels();

  faces_.SetPictureAutoOff();
  faces_.CheckTopSize();
  rows_.DrawMark();
  window_.give_target_state();
}

bool ScreenLayout::count_rows() {
  const int former = state_.program.VisibleLines;
  state_.program.VisibleLines = visible_rows_.count();
  return state_.program.VisibleLines != former;
}

void ScreenLayout::put_at_design_size() {
  state_.Lineweir.hide();
  state_.Standby.hide();
  window_.SetToRoot(0);
  faces_.SetPictureAutoOn();
}

void ScreenLayout::load_rows() {
  MainForm& form = state_.Lineweir;
  const int wanted = state_.lines.LineCount;
  for (int line = form.DataRow.upper_bound() - 1; line >= wanted; --line) {
    rows_.hide_marks(line);
    form.unload_row(line);
  }
  for (int line = form.DataRow.upper_bound(); line < wanted; ++line) {
    form.load_row(line);
    form.show_idle(line);
  }
  visible_rows_.load_line_boxes();
}

void ScreenLayout::set_line_count(int line_count) {
  state_.lines.resize(line_count);
  load_rows();
}

void ScreenLayout::lay_out_drop_buttons() {
  ::lineweir::lay_out_drop_buttons(state_.Lineweir, state_.program.VisibleLines, state_.scale);
  SetLabels();
}

void ScreenLayout::SetLabels() {
  for (const PanelButton& laid : state_.Lineweir.panel_buttons()) {
    laid.image.move(0, 0, laid.button.width, laid.button.height);
    laid.label.move(0, 0, laid.button.width, laid.button.height);
  }
  panel_.place_drop_labels();
}

}  // namespace lineweir
