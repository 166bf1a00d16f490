#include "forms/layout.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace lineweir {
namespace {

constexpr int small_width = 9420;
constexpr int large_width = 12000;

constexpr std::array<LayoutRange, 4> ranges = {{
    {.last_row_count = 10,
     .form_width = small_width,
     .first_row_top = 420,
     .caption_top = 180,
     .main_heading = {680, 180, 575, 225},
     .conference_heading = {8910, 180, 465, 225},
     .main_button_left = 780,
     .conference_button_left = 8955,
     .strip_left = 1260,
     .strip_width = 7590,
     .drop_left = 300,
     .second_drop_left = 675,
     .next_button = {1500, 315, 1290, 500},
     .next_to_conf_button = {2850, 315, 1290, 500},
     .dial = {4200, 315, 1290, 500},
     .buttons_on_form = false,
     .options_button = {8010, 315, 1290, 500},
     .time_clock = {570, 950, 1695, 1740},
     .show_clock = {2345, 950, 1695, 1740},
     .clocks_on_form = false,
     .lamp = {9090, 60, 195, 195},
     .lamp_on_form = false},
    {.last_row_count = 18,
     .form_width = large_width,
     .first_row_top = 600,
     .caption_top = 150,
     .main_heading = {730, 150, 575, 225},
     .conference_heading = {9750, 150, 465, 225},
     .main_button_left = 830,
     .conference_button_left = 9795,
     .strip_left = 1310,
     .strip_width = 8380,
     .drop_left = 290,
     .second_drop_left = 665,
     .next_button = {1310, 305, 1290, 500},
     .next_to_conf_button = {2660, 305, 1290, 500},
     .dial = {4010, 305, 1290, 500},
     .buttons_on_form = false,
     .options_button = {9335, 305, 1290, 500},
     .time_clock = {10260, 300, 1695, 1740},
     .show_clock = {10260, 2100, 1695, 1740},
     .clocks_on_form = true,
     .lamp = {11700, 60, 195, 195},
     .lamp_on_form = true},
    {.last_row_count = 19,
     .form_width = large_width,
     .first_row_top = 600,
     .caption_top = 150,
     .main_heading = {730, 150, 575, 225},
     .conference_heading = {9750, 150, 465, 225},
     .main_button_left = 830,
     .conference_button_left = 9795,
     .strip_left = 1310,
     .strip_width = 8380,
     .drop_left = 290,
     .second_drop_left = 665,
     .next_button = {10340, 4805, 1560, 500},
     .next_to_conf_button = {10340, 5435, 1560, 500},
     .dial = {10340, 6065, 1560, 500},
     .buttons_on_form = true,
     .options_button = {10610, 1190, 1290, 500},
     .time_clock = {10260, 300, 1695, 1740},
     .show_clock = {10260, 2100, 1695, 1740},
     .clocks_on_form = true,
     .lamp = {11700, 60, 195, 195},
     .lamp_on_form = true},
    {.last_row_count = 20,
     .form_width = large_width,
     .first_row_top = 600,
     .caption_top = 150,
     .main_heading = {730, 150, 575, 225},
     .conference_heading = {9750, 150, 465, 225},
     .main_button_left = 830,
     .conference_button_left = 9795,
     .strip_left = 1310,
     .strip_width = 8380,
     .drop_left = 290,
     .second_drop_left = 665,
     .next_button = {10340, 5120, 1560, 500},
     .next_to_conf_button = {10340, 5745, 1560, 500},
     .dial = {10340, 6380, 1560, 500},
     .buttons_on_form = true,
     .options_button = {10610, 935, 1290, 500},
     .time_clock = {10260, 300, 1695, 1740},
     .show_clock = {10260, 2100, 1695, 1740},
     .clocks_on_form = true,
     .lamp = {11700, 60, 195, 195},
     .lamp_on_form = true},
}};

// Top and height of the message display with 11 to 20 rows; the width is the same for all.
struct MessagePlace {
  int top;
  int height;
};
constexpr std::array<MessagePlace, 10> message_places = {{{1230, 2650},
                                                          {1230, 2340},
                                                          {1230, 2020},
                                                          {1230, 1720},
                                                          {1230, 1390},
                                                          {1230, 1080},
                                                          {1230, 760},
                                                          {1115, 660},
                                                          {480, 880},
                                                          {485, 660}}};

}  // namespace

const LayoutRange& layout_range(int visible_lines) {
  for (const LayoutRange& range : ranges) {
    if (visible_lines <= range.last_row_count) return range;
  }
  return ranges.back();
}

Place message_place(int visible_lines) {
  if (visible_lines <= 10) return {4395, 1295, 4465, 1145};
  const auto& place = message_places[static_cast<std::size_t>(std::min(visible_lines, 20) - 11)];
  return {1310, place.top, 8440, place.height};
}

Place link_label_place(int visible_lines) {
  if (visible_lines <= 10) return {4395, 1005, 4465, 255};
  if (visible_lines >= 19) return {1310, 210, 8440, 255};
  // The message display beside 18 rows leaves less room above it.
  return {1310, 960, 8440, visible_lines == 18 ? 150 : 255};
}

Place band_place(int visible_lines) {
  constexpr int clocks_end = 2690;
  constexpr int left = 300;
  constexpr int highest = 640;
  constexpr int gap = 20;
  const Place message = message_place(visible_lines);
  const bool clocks_beside = !layout_range(visible_lines).clocks_on_form;
  const int upper = (clocks_beside ? clocks_end : message.top + message.height) + gap;
  const int lower = content_height(visible_lines) - panel_top(visible_lines) - gap;
  // Beside 19 and 20 rows the setup key stands at the right of the band.
  const bool key_beside = layout_range(visible_lines).buttons_on_form;
  const int right = clocks_beside ? small_width - left
                    : key_beside  ? layout_range(visible_lines).options_button.left - left / 2
                                  : large_width - left;
  return {left, upper, right - left, std::min(highest, lower - upper)};
}

Place band_line_place(int visible_lines, int band_line) {
  constexpr int gap = 30;
  const Place band = band_place(visible_lines);
  const int height = (band.height - gap) / 2;
  return {band.left, band.top + band_line * (height + gap), band.width, height};
}

std::vector<Place> parted(const Place& line, const std::vector<std::size_t>& lengths) {
  constexpr int gap = 30;
  const int cells = static_cast<int>(lengths.size());
  if (cells == 0) return {};
  const int room = line.width - gap * (cells - 1);
  // Half of the room is shared alike.
  const int sure = room / (2 * cells);
  const std::size_t all =
      std::max<std::size_t>(1, std::accumulate(lengths.begin(), lengths.end(), std::size_t{0}));
  std::vector<Place> places;
  int left = line.left;
  for (const std::size_t length : lengths) {
    const bool last = static_cast<int>(places.size()) + 1 == cells;
    const int by_length =
        static_cast<int>(static_cast<std::size_t>(room - sure * cells) * length / all);
    const int width = last ? line.left + line.width - left : sure + by_length;
    places.push_back({left, line.top, width, line.height});
    left += width + gap;
  }
  return places;
}

int row_top(int visible_lines, int row) {
  return layout_range(visible_lines).first_row_top + row_pitch * row;
}

int panel_top(int visible_lines) { return row_top(visible_lines, visible_lines); }

int content_height(int visible_lines) {
  return visible_lines <= 10 ? visible_lines * row_pitch + 3820 : 8595;
}

int root_width(int visible_lines) { return layout_range(visible_lines).form_width; }

int root_height(int visible_lines, bool menu_bar) {
  if (visible_lines == 0) return 7005;
  return content_height(visible_lines) + (menu_bar ? menu_bar_height : 0);
}

int reset_height(int visible_lines, bool menu_bar) {
  if (visible_lines == 0) return 7255;
  if (visible_lines <= 10) return root_height(visible_lines, menu_bar);
  if (visible_lines == 17) return menu_bar ? 8865 : 8580;
  return menu_bar ? 8881 : 8595;
}

std::optional<Place> low_cover_place(int visible_lines) {
  if (visible_lines != 18) return std::nullopt;
  return Place{10200, 3870, 1800, 2400};
}

}  // namespace lineweir
