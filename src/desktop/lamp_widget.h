#pragma once

#include "desktop/element_widget.h"
#include "desktop/text_painter.h"

namespace lineweir {

class Shape;

// The lamp of the link. A link that stands is told by the element's colour: green and plain while
// all is well, any other with a stroke besides, so that it isn't told by colour alone. At its left
// stands what it is linked to; which of several servers that is the mouse on it tells. While there
// is no link the lamp is a hollow ring, and "No link" stands there.
class LampWidget final : public ElementWidget {
 public:
  LampWidget(FormCanvas& canvas, Shape& shape, const ElementLook& look);

  // The words belong to it.
  QRect device_place() const override;
  bool placed_by_link() const override { return true; }
  void element_changed() override;
  void look_changed() override { place(); }
  QString shown_caption() const override;
  QString tool_tip() const override;

 protected:
  void paint(QPainter& painter, const QRect& face) override;

 private:
  bool linked() const;
  TextLine words() const;
  // From the words' left end to the lamp, and above and below the lamp, in pixels of the device.
  int room_for_words() const;
  int room_above() const;
  QColor lamp_color() const;
  void paint_stroke(QPainter& painter, const QPointF& middle, double radius,
                    const QColor& color) const;
};

}  // namespace lineweir
