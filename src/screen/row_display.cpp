#include "screen/row_display.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "forms/picture_names.h"
#include "lines/cadence.h"
#include "lines/equipment_kinds.h"
#include "screen/strip_pictures.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr int mark_width = 30;
constexpr int narrow_mark_width = 5;
constexpr int narrow_strip = 50;
// Column edges are held in ten-thousandths of the form's width.
constexpr int edge_scale = 10000;
constexpr int icon_width = 210;
constexpr int icon_height = 150;

// By the values 1 to 4 of HybridPictureSet.
constexpr std::array<std::string_view, 4> icons = {pictures::RedIcon, pictures::GreenIcon,
                                                   pictures::YellowIcon, pictures::BlueIcon};

// A row that isn't shown hides its icons too.
void set_icon(const Picture& button, Picture& icon, int color) {
  if (color == 0) {
    icon.visible = false;
  } else if (color >= 1 && color <= static_cast<int>(icons.size())) {
    icon.picture = icons[static_cast<std::size_t>(color - 1)];
    icon.visible = button.visible.get();
  }
}

void place_icon(const Picture& button, Picture& icon) {
  const bool pressed = button.picture == pictures::HybridNormDown;
  const IconOffset offset = icon_offset(button.height, pressed);
  icon.move(button.left + offset.left, button.top + offset.top);
}

}  // namespace

IconOffset icon_offset(int button_height, bool pressed) {
  const double left = 80.0 / 375 * button_height;
  const double top = 120.0 / 315 * button_height;
  // Whole, rounded to the nearest; no height puts it in the middle of two.
  const auto step = static_cast<int>(std::lround(20.0 / 375 * button_height));
  const auto twips = [](double length) { return static_cast<int>(std::lround(length)); };
  return pressed ? IconOffset{twips(step + left), twips(step + top)}
                 : IconOffset{twips(10 + left), twips(top)};
}

int mark_width_on(int strip_width) {
  return strip_width < narrow_strip ? narrow_mark_width : mark_width;
}

RowDisplay::RowDisplay(ConsoleState& state) : state_(state) {
  state.Lineweir.DataRow.wire_each([&state](Picture& strip) {
    wire(strip.on_change, state.trace, "Lineweir_DataRow_Change", [&state, &strip] {
      RowElements& rows = state.Lineweir;
      if (rows.DataRowImage.loaded(strip.index())) {
        rows.DataRowImage(strip.index()).picture = fitted_strip(strip.picture.get(), strip.width);
      }
    });
  });
  wire(state.Lineweir.MarkerPointTimer.on_timer, state_.trace, "Lineweir_MarkerPointTimer_Timer",
       [this] { MarkerPointTimer_Timer(); });
  state.Lineweir.CIcon1.wire_each([](Picture& icon) {
    icon.width = icon_width;
    icon.height = icon_height;
  });
  state.Lineweir.CIcon2.wire_each([](Picture& icon) {
    icon.width = icon_width;
    icon.height = icon_height;
  });
}

void RowDisplay::HybridPictureSet(int line, int color1, int color2) {
  MainForm& form = state_.Lineweir;
  set_icon(form.OnHybrid1(line), form.CIcon1(line), color1);
  set_icon(form.OnHybrid2(line), form.CIcon2(line), color2);
}

void RowDisplay::show_icons(int line) {
  const LineTable& lines = state_.lines;
  const LetterLook look = reported_look(
      lines.shown_letter(line),
      handset_is_on_conference(lines.ThePhoneFlag, state_.Lineweir.MitelPhone1.checked));
  HybridPictureSet(line, look.icon1, look.icon2);
}

void RowDisplay::SetStatusText(int line) {
  state_.Lineweir.LineStatus(line).caption = status_text_of(state_.lines.StatusLetter(line));
}

void RowDisplay::set_row_color(int line, RowColor color) {
  state_.Lineweir.DataRow(line).picture = strip_of(color).strip;
}

void RowDisplay::show_next(int line) {
  if (!state_.Lineweir.NextBarDisable.checked) set_row_color(line, RowColor::Green);
  state_.Lineweir.LineStatus(line).caption = next_caller_status;
}

void RowDisplay::DrawMark(int line) {
  MainForm& rows = state_.Lineweir;
  const Picture& strip = rows.DataRow(line);
  const double form_width = std::max(1, rows.width.get());
  for (int column = 0; column < column_count; ++column) {
    const int k = line * column_count + column;
    if (!rows.MyMark.loaded(k)) rows.MyMark.load(k);
    Picture& mark = rows.MyMark(k);
    const Label& label = rows.column_labels(column)(line);
    mark.picture = strip_of(color_of_strip(strip.picture.get()).value_or(RowColor::White)).mark;
    const double end = static_cast<double>(label.left) + label.width;
    const auto edge = std::lround(end * edge_scale / form_width);
    const auto left = std::lround(static_cast<double>(edge) * form_width / edge_scale);
    mark.move(static_cast<int>(left), strip.top, mark_width_on(strip.width), strip.height);
    mark.visible = strip.visible && label.visible;
  }
}

void RowDisplay::DrawMark() {
  for (int line = 0; line < state_.lines.LineCount; ++line) DrawMark(line);
}

void RowDisplay::hide_marks(int line) {
  const ControlArray<Picture>& marks = state_.Lineweir.MyMark;
  for (int k = line * column_count; k < (line + 1) * column_count; ++k) {
    if (marks.loaded(k)) marks(k).visible = false;
  }
}

void RowDisplay::MarkerPointTimer_Timer() {
  MainForm& form = state_.Lineweir;
  if (form.width == marked_width_ && form.height == marked_height_) return;
  marked_width_ = form.width;
  marked_height_ = form.height;
  for (int column = 0; column < column_count; ++column) {
    if (!form.MyMark.loaded(column)) continue;
    form.MyMark(column).width = mark_width_on(form.DataRow(0).width);
  }
}

void RowDisplay::SetCiconPosition1(int line) {
  place_icon(state_.Lineweir.OnHybrid1(line), state_.Lineweir.CIcon1(line));
}

void RowDisplay::SetCiconPosition2(int line) {
  place_icon(state_.Lineweir.OnHybrid2(line), state_.Lineweir.CIcon2(line));
}

std::string RowDisplay::GetCadence(int line) const {
  const MainForm& form = state_.Lineweir;
  const LineTable& lines = state_.lines;
  if (!lines.twenty_lines()) {
    if (!form.OnHybrid1(line).visible) return std::string(2, '\0');
    return cadence_pair(lines.StatusLetter(line),
                        handset_is_on_conference(lines.ThePhoneFlag, form.MitelPhone1.checked));
  }
  const int lower = line <= 9 ? line : line - 10;
  std::string cadence;
  for (const int paired : {lower, lower + 10}) {
    // The last button's line always counts as dark.
    const bool lit = paired < form.OnHybrid1.count() - 1 && form.OnHybrid1(paired).visible;
    cadence += lit ? cadence_byte(lines.StatusLetter(paired)) : '\0';
  }
  return cadence;
}

}  // namespace lineweir
