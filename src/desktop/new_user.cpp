#include "desktop/new_user.h"

#include <algorithm>

#include "core/console.h"
#include "desktop/twips.h"
#include "forms/layout.h"

namespace lineweir {
namespace {

constexpr double part_of_height = 2.0 / 3;
// What is left of the screen's width beside the window, at least.
constexpr double part_of_width = 0.95;

}  // namespace

QSize first_size(QSize room, QSize design) {
  const double ratio = std::min(room.height() * part_of_height / design.height(),
                                room.width() * part_of_width / design.width());
  return design * std::max(1.0, ratio);
}

void welcome_new_user(Console& console, QSize room) {
  const int rows = console.lines.LineCount;
  const QSize design(root_width(rows), root_height(rows, true));
  const QSize form = first_size({twips_of(room.width()), twips_of(room.height())}, design);
  console.window.restore({form.height() - menu_bar_height, form.width(), window_normal});
  console.Lineweir.TextGrowToggle.on_click();
}

}  // namespace lineweir
