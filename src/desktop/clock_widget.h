#pragma once

#include <string_view>

#include "desktop/element_widget.h"

namespace lineweir {

class Picture;

// A clock: the dial that stands in its picture, and the hands, which are lines of the picture.
class ClockWidget final : public ElementWidget {
 public:
  ClockWidget(FormCanvas& canvas, Picture& picture, const ElementLook& look);

 protected:
  void paint(QPainter& painter, const QRect& face) override;

 private:
  void paint_hand_line(QPainter& painter, const QRect& dial_place, const Control& dial,
                       std::string_view name, const DialColors& colors) const;
};

}  // namespace lineweir
