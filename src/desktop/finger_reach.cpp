#include "desktop/finger_reach.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <vector>

#include "desktop/element_widget.h"
#include "desktop/form_canvas.h"

namespace lineweir {
namespace {

bool is_key(const ElementWidget& widget) {
  const Look look = widget.element_look().look;
  return look == Look::RowKey || look == Look::PanelKey || look == Look::NextKey;
}

// What else answers a finger.
bool is_other_target(const ElementWidget& widget) {
  const Look look = widget.element_look().look;
  return look == Look::Strip || look == Look::Message || look == Look::Entry;
}

QRect place_on(const FormCanvas& canvas, const ElementWidget& widget) {
  return {canvas.origin_of(widget), widget.size()};
}

// One side's room along a line: from the key's edge to what is nearest there.
class Room {
 public:
  Room(int to_low_edge, int to_high_edge) : low_(to_low_edge), high_(to_high_edge) {}

  // Something lies from `low` to `high` of the key's own `from` and `to`; of a gap to it the key
  // has that part, and the odd pixel is the lower one's.
  void bound(int low, int high, int from, int to, int part) {
    if (high <= from) low_ = std::min(low_, (from - high + part - 1) / part);
    if (low >= to) high_ = std::min(high_, (low - to) / part);
  }

  // Both sides by as much as is missing, one for the other where that has less.
  std::pair<int, int> shares(int missing) const {
    const int half = (missing + 1) / 2;
    const int low = std::min(low_, std::max(half, missing - high_));
    const int high = std::min(high_, std::max(half, missing - low));
    return {low, high};
  }

 private:
  int low_;
  int high_;
};

}  // namespace

QRect touch_area(const QRect& key, std::span<const QRect> other_keys,
                 std::span<const QRect> other_targets, const QRect& form) {
  QRect area = key;
  const auto widen = [&](bool across) {
    const auto low = [&](const QRect& place) { return across ? place.left() : place.top(); };
    const auto high = [&](const QRect& place) {
      return across ? place.left() + place.width() : place.top() + place.height();
    };
    const int missing = finger_pixels - (high(area) - low(area));
    if (missing <= 0) return;
    Room room(low(area) - low(form), high(form) - high(area));
    const auto bound = [&](const QRect& other, int part) {
      const QRect beside = across ? QRect(other.left(), area.top(), other.width(), area.height())
                                  : QRect(area.left(), other.top(), area.width(), other.height());
      if (beside.intersects(other)) {
        room.bound(low(other), high(other), low(area), high(area), part);
      }
    };
    for (const QRect& other : other_keys) bound(other, 2);
    for (const QRect& other : other_targets) bound(other, 1);
    const auto [before, behind] = room.shares(missing);
    area = across ? area.adjusted(-before, 0, behind, 0) : area.adjusted(0, -before, 0, behind);
  };
  widen(true);
  widen(false);
  return area;
}

FingerReach::FingerReach(QWidget& window, FormCanvas& canvas)
    : QObject(&window), window_(window), canvas_(canvas) {
  window.winId();
  window.windowHandle()->installEventFilter(this);
}

QRect FingerReach::area_of(const ElementWidget& key) const {
  std::vector<QRect> keys;
  std::vector<QRect> targets;
  for (const ElementWidget* widget : canvas_.element_widgets()) {
    if (widget == &key || !widget->isVisible()) continue;
    if (is_key(*widget)) keys.push_back(place_on(canvas_, *widget));
    if (is_other_target(*widget)) targets.push_back(place_on(canvas_, *widget));
  }
  return touch_area(place_on(canvas_, key), keys, targets, canvas_.rect());
}

QPointF FingerReach::way_to_key(QPointF from) const {
  const QPoint at = canvas_.mapFrom(&window_, from.toPoint());
  for (const ElementWidget* widget : canvas_.element_widgets()) {
    if (!is_key(*widget) || !widget->isVisible()) continue;
    const QRect drawn = place_on(canvas_, *widget);
    if (drawn.contains(at)) return {};
    if (!area_of(*widget).contains(at)) continue;
    return canvas_.mapTo(&window_, drawn.center()) - from;
  }
  return {};
}

bool FingerReach::eventFilter(QObject* watched, QEvent* event) {
  if (leading_ || !event->isPointerEvent()) return false;
  const auto* mouse = dynamic_cast<const QMouseEvent*>(event);
  if (mouse == nullptr || mouse->pointerType() != QPointingDevice::PointerType::Finger) {
    return false;
  }
  const bool press =
      mouse->type() == QEvent::MouseButtonPress || mouse->type() == QEvent::MouseButtonDblClick;
  if (press) way_ = way_to_key(mouse->scenePosition());
  if (way_.isNull()) return false;
  QMouseEvent led(mouse->type(), mouse->position() + way_, mouse->scenePosition() + way_,
                  mouse->globalPosition() + way_, mouse->button(), mouse->buttons(),
                  mouse->modifiers(), mouse->pointingDevice());
  if (mouse->type() == QEvent::MouseButtonRelease) way_ = {};
  leading_ = true;
  QCoreApplication::sendEvent(watched, &led);
  leading_ = false;
  return true;
}

}  // namespace lineweir
