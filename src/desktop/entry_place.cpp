#include "desktop/entry_place.h"

#include <QScreen>
#include <QWindow>
#include <cstdlib>
#include <utility>
#include <vector>

#include "desktop/element_widget.h"
#include "desktop/main_window.h"
#include "desktop/place_beside.h"
#include "desktop/screen_room.h"

namespace lineweir {
namespace {

// What a pixel of it matters to somebody who types a caller's data. The keys that come next in the
// screener's work are worth more than all the rest of the window together.
double weight_of(Look look) {
  switch (look) {
    case Look::NextKey:
      return 10'000;
    case Look::PanelKey:
    case Look::RowKey:
      return 30;
    case Look::Strip:
      return 20;
    case Look::Lamp:
    case Look::Message:
    case Look::PanelWarning:
      return 5;
    default:
      return 0;
  }
}

std::vector<CoveredPart> parts_of(const MainWindow& main) {
  constexpr double weight_of_the_rest = 1;
  // What is to be typed may be read there.
  constexpr double weight_of_the_band = 100;
  std::vector<CoveredPart> parts = {{main.frameGeometry(), weight_of_the_rest}};
  if (const QWidget* band = main.band()) {
    parts.push_back({QRect(band->mapToGlobal(QPoint(0, 0)), band->size()), weight_of_the_band});
  }
  for (const ElementWidget* widget : main.canvas().element_widgets()) {
    const double weight = weight_of(widget->element_look().look);
    if (weight == 0 || !widget->isVisible()) continue;
    parts.push_back({QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size()), weight});
  }
  return parts;
}

// The strips and the keys beside them.
QRect rows_of(const MainWindow& main) {
  QRect rows;
  for (const ElementWidget* widget : main.canvas().element_widgets()) {
    if (widget->element_look().look != Look::Strip || !widget->isVisible()) continue;
    rows = rows.united(QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size()));
  }
  return rows.isNull() ? main.frameGeometry() : rows;
}

}  // namespace

bool EntryPlace::moved_by_user(const QWidget& window) const {
  if (!given_) return false;
  // Some window managers put the frame where the content was wanted.
  const MainWindow* main = main_window_();
  const QMargins frame = main == nullptr ? QMargins() : main->windowHandle()->frameMargins();
  const QPoint by = window.geometry().topLeft() - *given_;
  const QPoint corner(frame.left(), frame.top());
  return !by.isNull() && by != corner && by != -corner;
}

void EntryPlace::place(QWidget& window) {
  const MainWindow* main = main_window_();
  if (main == nullptr || !main->isVisible() || moved_by_user(window)) return;
  const QMargins frame = main->windowHandle()->frameMargins();
  const QPoint place =
      place_beside(window.size().grownBy(frame), main->screen()->availableGeometry(),
                   rows_of(*main), parts_of(*main)) +
      QPoint(frame.left(), frame.top());
  window.move(window.pos() + place - window.geometry().topLeft());
  keep_on_screen(window);
  given_ = window.geometry().topLeft();
}

}  // namespace lineweir
