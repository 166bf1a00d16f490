#pragma once

#include <QObject>
#include <QPointF>
#include <QRect>
#include <span>

class QMouseEvent;
class QWidget;

namespace lineweir {

class ElementWidget;
class FormCanvas;

// What a finger hits without looking twice, in logical pixels.
inline constexpr int finger_pixels = 40;

// Where a finger presses a key: where the key is drawn and, where that is smaller than a finger, of
// the room around it that no neighbour stands in. A gap between two keys belongs to each by half.
QRect touch_area(const QRect& key, std::span<const QRect> other_keys,
                 std::span<const QRect> other_targets, const QRect& form);

// Leads a finger that comes down beside a small key of the form onto the key. A mouse has to meet
// what is drawn.
class FingerReach final : public QObject {
 public:
  // Belongs to the window, in which the canvas stands.
  FingerReach(QWidget& window, FormCanvas& canvas);

  // The area of a key of the form as it stands now, in pixels of the canvas.
  QRect area_of(const ElementWidget& key) const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // From there to the middle of the key that is reached from there; nowhere for none.
  QPointF way_to_key(QPointF from) const;

  QWidget& window_;
  FormCanvas& canvas_;
  // How far from the finger its press acts, until it is lifted.
  QPointF way_;
  bool leading_ = false;
};

}  // namespace lineweir
