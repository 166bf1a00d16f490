#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace lineweir {

// The main form's geometry at design size. All numbers are twips; tops of elements that stand on
// the panel are relative to ScreenBottom.

inline constexpr int menu_bar_height = 285;
inline constexpr int row_pitch = 315;

struct Place {
  int left;
  int top;
  int width;
  int height;
};

// What stands at the same place for a whole range of row counts.
struct LayoutRange {
  // The highest number of visible rows of the range.
  int last_row_count;
  int form_width;
  int first_row_top;
  int caption_top;
  Place main_heading;
  Place conference_heading;
  int main_button_left;
  int conference_button_left;
  int strip_left;
  int strip_width;
  int drop_left;
  int second_drop_left;
  Place next_button;
  Place next_to_conf_button;
  Place dial;
  // Whether the three buttons above stand on the form; otherwise on the panel.
  bool buttons_on_form;
  Place options_button;
  Place time_clock;
  Place show_clock;
  bool clocks_on_form;
  Place lamp;
  bool lamp_on_form;
};

const LayoutRange& layout_range(int visible_lines);

// The places of the message display and of the link's label above it, on the panel.
Place message_place(int visible_lines);
Place link_label_place(int visible_lines);

// The band of two lines at the lower edge of the panel, and one of the two.
Place band_place(int visible_lines);
Place band_line_place(int visible_lines, int band_line);

// The places of texts that share a line: each has room by its length, and none is left with little.
std::vector<Place> parted(const Place& line, const std::vector<std::size_t>& lengths);

// The row's top and the panel's.
int row_top(int visible_lines, int row);
int panel_top(int visible_lines);

// The form without and with its menu bar.
int content_height(int visible_lines);
int root_width(int visible_lines);
int root_height(int visible_lines, bool menu_bar);

// The height that a reset gives the form; it differs from root_height for some counts, and those
// differences are to be kept.
int reset_height(int visible_lines, bool menu_bar);

// The cover of the corner beside 18 rows; nothing for other counts.
std::optional<Place> low_cover_place(int visible_lines);

}  // namespace lineweir
