#include "screen/visible_rows.h"

#include <algorithm>
#include <string>

#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {
namespace {

constexpr int boxes_in_column = 10;
// In the frame.
constexpr int box_left = 100;
constexpr int box_top = 250;
constexpr int box_width = 1300;
constexpr int box_height = 300;
constexpr int box_pitch_across = 1400;
constexpr int box_pitch_down = 330;

}  // namespace

VisibleRows::VisibleRows(ConsoleState& state) : state_(state) { load_line_boxes(); }

int VisibleRows::count() const {
  const std::vector<int> by_line = rows();
  return static_cast<int>(by_line.size() -
                          static_cast<std::size_t>(std::ranges::count(by_line, no_row)));
}

std::vector<int> VisibleRows::rows() const {
  const ControlArray<CheckBox>& boxes = state_.DisplayOptionForm.LineCheck;
  std::vector<int> by_line;
  int row = 0;
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    const bool shown = boxes.loaded(line) && boxes(line).value == 1;
    by_line.push_back(shown ? row++ : no_row);
  }
  return by_line;
}

int VisibleRows::first_line() const {
  const std::vector<int> by_line = rows();
  const auto first = std::ranges::find(by_line, 0);
  return first == by_line.end() ? no_line : static_cast<int>(first - by_line.begin());
}

void VisibleRows::load_line_boxes() {
  ControlArray<CheckBox>& boxes = state_.DisplayOptionForm.LineCheck;
  const int wanted = state_.lines.LineCount;
  for (int line = boxes.upper_bound() - 1; line >= std::max(1, wanted); --line) {
    if (boxes.loaded(line)) boxes.unload(line);
  }
  for (int line = 0; line < wanted; ++line) {
    if (boxes.loaded(line)) continue;
    CheckBox& box = boxes.load(line);
    box.set_container(&state_.DisplayOptionForm.DisplayPhoneLineFrame);
    box.caption = "Line " + std::to_string(line + 1);
    box.value = 1;
    box.enabled = true;
  }
  RedefineDisplaySreen();
}

void VisibleRows::RedefineDisplaySreen() {
  guard(state_.trace, "DisplayOptionForm_RedefineDisplaySreen", [&] {
    ControlArray<CheckBox>& boxes = state_.DisplayOptionForm.LineCheck;
    int place = 0;
    for (int line = 0; line < boxes.upper_bound(); ++line) {
      if (!boxes.loaded(line)) continue;
      CheckBox& box = boxes(line);
      box.visible = box.enabled.get();
      if (!box.enabled) continue;
      box.move(box_left + box_pitch_across * (place / boxes_in_column),
               box_top + box_pitch_down * (place % boxes_in_column), box_width, box_height);
      ++place;
    }
  });
}

}  // namespace lineweir
