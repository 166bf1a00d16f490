#include "screen/screen_layout.h"

#include <array>
#include <cmath>

#include "core/console.h"
#include "screen/layout.h"
#include "screen/pictures.h"

namespace lineweir {
namespace {

constexpr int first_column_gap = 60;
constexpr int label_drop = 45;
constexpr int label_height = 225;
constexpr int row_button_width = 375;
constexpr int small_button = 375;
constexpr int large_button_width = 750;
constexpr int drop_top = 105;
constexpr int hold_top = 510;
constexpr Place panel_digits_time = {570, 950, 3470, 560};
constexpr Place panel_digits_count = {570, 1530, 3470, 560};
constexpr Place panel_digits_status = {570, 2110, 3470, 560};
constexpr int clock_caption_top = 2720;

}  // namespace

ScreenLayout::ScreenLayout(Console& console) : console_(console) {}

int ScreenLayout::scaled_x(int design) const {
  return static_cast<int>(std::lround(design * ratio_x_));
}

int ScreenLayout::scaled_y(int design) const {
  return static_cast<int>(std::lround(design * ratio_y_));
}

void ScreenLayout::load_rows() {
  MainForm& form = console_.Lineweir;
  const int wanted = console_.lines.LineCount;
  for (int line = form.DataRow.upper_bound() - 1; line >= wanted; --line) form.unload_row(line);
  for (int line = form.DataRow.upper_bound(); line < wanted; ++line) {
    form.load_row(line);
    form.show_idle(line);
  }
}

void ScreenLayout::set_line_count(int line_count) {
  console_.lines.resize(line_count);
  console_.program.VisibleLines = line_count;
  load_rows();
}

void ScreenLayout::RedefineScreen() {
  const MainForm& form = console_.Lineweir;
  const int visible = console_.program.VisibleLines;
  ratio_x_ = static_cast<double>(form.width) / root_width(visible);
  ratio_y_ = static_cast<double>(form.height) / root_height(visible, form.Options.visible);

  lay_out_backgrounds();
  lay_out_headings();
  lay_out_rows();
  lay_out_columns();
  lay_out_panel();
  lay_out_clocks();
  SetLabels();
  console_.panel.SetEnabledDisabled();
  console_.rows.DrawMark();
}

void ScreenLayout::lay_out_backgrounds() {
  MainForm& form = console_.Lineweir;
  const int visible = console_.program.VisibleLines;
  const int top_height = layout_range(visible).first_row_top;
  const int panel = panel_top(visible);
  form.ScreenTop.move(0, 0, form.width, scaled_y(top_height));
  form.ScreenTopImage.move(0, 0, form.width, scaled_y(top_height));
  const int panel_height = scaled_y(content_height(visible)) - scaled_y(panel);
  form.ScreenBottom.move(0, scaled_y(panel), form.width, panel_height);
  form.ScreenBottomImage.move(0, 0, form.width, panel_height);
}

void ScreenLayout::lay_out_headings() {
  MainForm& form = console_.Lineweir;
  const LayoutRange& range = layout_range(console_.program.VisibleLines);
  const auto place = [&](Label& label, const Place& at) {
    label.move(scaled_x(at.left), scaled_y(at.top), scaled_x(at.width), scaled_y(at.height));
  };
  place(form.Label10, range.main_heading);
  place(form.Label9, range.conference_heading);
}

void ScreenLayout::lay_out_rows() {
  MainForm& form = console_.Lineweir;
  const int visible = console_.program.VisibleLines;
  const LayoutRange& range = layout_range(visible);
  for (int line = 0; line < console_.lines.LineCount; ++line) {
    const bool shown = line < visible;
    const int top = scaled_y(row_top(visible, line));
    const int height = scaled_y(row_top(visible, line) + row_pitch) - top;
    form.DataRow(line).move(scaled_x(range.strip_left), top, scaled_x(range.strip_width), height);
    form.DataRowImage(line).move(0, 0, scaled_x(range.strip_width), height);
    form.OnHybrid1(line).move(scaled_x(range.main_button_left), top, scaled_x(row_button_width),
                              height);
    form.OnHybrid2(line).move(scaled_x(range.conference_button_left), top,
                              scaled_x(row_button_width), height);
    for (Picture* part : {&form.DataRow(line), &form.DataRowImage(line), &form.OnHybrid1(line),
                          &form.OnHybrid2(line)}) {
      part->visible = shown;
    }
    console_.rows.SetCiconPosition1(line);
    console_.rows.SetCiconPosition2(line);
  }
}

void ScreenLayout::lay_out_columns() {
  MainForm& form = console_.Lineweir;
  const int visible = console_.program.VisibleLines;
  const LayoutRange& range = layout_range(visible);

  std::array<bool, column_count> in_use{};
  int left = range.strip_left + first_column_gap;
  for (const int column : console_.display.ColumnsInUse) {
    const int width = console_.display.width_of(column);
    form.CaptionLabel(column).move(scaled_x(left), scaled_y(range.caption_top), scaled_x(width),
                                   scaled_y(label_height));
    for (int line = 0; line < console_.lines.LineCount; ++line) {
      form.column_labels(column)(line).move(scaled_x(left),
                                            scaled_y(row_top(visible, line) + label_drop),
                                            scaled_x(width), scaled_y(label_height));
    }
    in_use[static_cast<std::size_t>(column)] = true;
    left += width;
  }
  for (int column = 0; column < column_count; ++column) {
    const bool used = in_use[static_cast<std::size_t>(column)];
    form.CaptionLabel(column).visible = used;
    for (int line = 0; line < console_.lines.LineCount; ++line) {
      form.column_labels(column)(line).visible = used && line < visible;
    }
  }
}

void ScreenLayout::lay_out_panel() {
  MainForm& form = console_.Lineweir;
  const int visible = console_.program.VisibleLines;
  const LayoutRange& range = layout_range(visible);
  const auto place = [&](Control& control, const Place& at) {
    control.move(scaled_x(at.left), scaled_y(at.top), scaled_x(at.width), scaled_y(at.height));
  };

  lay_out_drop_buttons();
  Control* const buttons_parent = range.buttons_on_form ? nullptr : &form.ScreenBottom;
  for (Picture* button : {&form.NextButton, &form.NextToConfButton, &form.Dial}) {
    button->set_container(buttons_parent);
  }
  place(form.NextButton, range.next_button);
  place(form.NextToConfButton, range.next_to_conf_button);
  place(form.Dial, range.dial);
  place(form.OptionsButton, range.options_button);
  place(form.Label1, link_label_place(visible));
  place(form.Text1, message_place(visible));
  place(form.Text2, message_place(visible));
  form.Shape1.set_container(range.lamp_on_form ? nullptr : &form.ScreenBottom);
  place(form.Shape1, range.lamp);

  const auto cover = low_cover_place(visible);
  form.LowCover.visible = cover.has_value();
  if (cover) place(form.LowCover, *cover);
}

void ScreenLayout::lay_out_drop_buttons() {
  MainForm& form = console_.Lineweir;
  const int visible = console_.program.VisibleLines;
  const LayoutRange& range = layout_range(visible);
  const int panel = panel_top(visible);
  const auto place = [&](Picture& button, int left, int top, int width) {
    button.move(scaled_x(left), scaled_y(panel + top), scaled_x(width), scaled_y(small_button));
  };
  const int first_width = form.ScreenerMode.checked ? large_button_width : small_button;
  place(form.Drop1, range.drop_left, drop_top, first_width);
  place(form.Hold1, range.drop_left, hold_top, first_width);
  place(form.Drop2, range.second_drop_left, drop_top, small_button);
  place(form.Hold2, range.second_drop_left, hold_top, small_button);
  SetLabels();
}

void ScreenLayout::lay_out_clocks() {
  MainForm& form = console_.Lineweir;
  const int visible = console_.program.VisibleLines;
  const LayoutRange& range = layout_range(visible);
  const auto place = [&](Control& control, const Place& at) {
    control.move(scaled_x(at.left), scaled_y(at.top), scaled_x(at.width), scaled_y(at.height));
  };
  Control* const parent = range.clocks_on_form ? nullptr : &form.ScreenBottom;
  form.picRealTimeClock.set_container(parent);
  form.picShowTimeClock.set_container(parent);
  place(form.picRealTimeClock, range.time_clock);
  place(form.picShowTimeClock, range.show_clock);
  place(form.RealTime2, panel_digits_time);
  place(form.CountDownTime2, panel_digits_count);
  place(form.StatusText2, panel_digits_status);
  place(form.lblTime, range.clocks_on_form
                          ? Place{10260, 60, 1695, 225}
                          : Place{570, panel_top(visible) + clock_caption_top, 3470, 255});
}

void ScreenLayout::SetLabels() {
  MainForm& form = console_.Lineweir;
  for (const PanelButton& laid : form.panel_buttons()) {
    laid.image.move(0, 0, laid.button.width, laid.button.height);
    laid.label.move(0, 0, laid.button.width, laid.button.height);
  }
  console_.panel.place_drop_labels();
}

}  // namespace lineweir
