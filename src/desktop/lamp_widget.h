#pragma once

#include "desktop/element_widget.h"

namespace lineweir {

class Shape;

// The lamp of the link: green and plain while it stands; any other colour also bears a stroke, so
// that it isn't told by colour alone.
class LampWidget final : public ElementWidget {
 public:
  LampWidget(FormCanvas& canvas, Shape& shape, const ElementLook& look);

 protected:
  void paint(QPainter& painter, const QRect& face) override;
};

}  // namespace lineweir
