#include "forms/dial_window.h"

#include <string>

#include "forms/pictures.h"

namespace lineweir {
namespace {

constexpr int margin = 240;
constexpr int key_width = 1080;
constexpr int key_height = 660;
constexpr int gap = 120;
constexpr int row_height = 375;
constexpr int keys_per_row = 3;
constexpr int inner_width = keys_per_row * key_width + (keys_per_row - 1) * gap;
constexpr int label_width = 780;
constexpr int keys_top = margin + 3 * (row_height + gap) + row_height + 2 * gap;

// The keys as they stand on a telephone, from the left and from the top.
constexpr std::array<int, dial_key_count> keys_in_place = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 0, 11};

constexpr int row_top(int row) { return margin + row * (row_height + gap); }

}  // namespace

DialWindow::DialWindow() : Form("DialForm") {
  caption = "Dial";
  Text1.move(margin, row_top(0), inner_width, row_height);
  Combo1.move(margin + label_width, row_top(1), inner_width - label_width, row_height);
  Combo2.move(margin + label_width, row_top(2), inner_width - label_width, row_height);
  SSCommand1.move(margin, row_top(3), inner_width, row_height);
  SSCommand1.picture = pictures::GreyPic;
  for (int place = 0; place < dial_key_count; ++place) {
    const int key = keys_in_place[static_cast<std::size_t>(place)];
    Button& button = key == 0 ? DialButton(0) : DialButton.load(key);
    button.caption = std::string(1, dial_keys[static_cast<std::size_t>(key)].character);
    button.move(margin + place % keys_per_row * (key_width + gap),
                keys_top + place / keys_per_row * (key_height + gap), key_width, key_height);
    button.visible = true;
  }
  const int below_keys = keys_top + dial_key_count / keys_per_row * (key_height + gap) + gap;
  const int half = (inner_width - gap) / 2;
  SSCommand2.move(margin, below_keys, half, row_height);
  TheDrop.move(margin + half + gap, below_keys, half, row_height);
  for (Picture* holder : {&GreyPic, &RedPic, &GreenPic}) {
    holder->picture = holder->name();
    holder->visible = false;
  }
  width = inner_width + 2 * margin;
  height = below_keys + row_height + gap;
}

}  // namespace lineweir
