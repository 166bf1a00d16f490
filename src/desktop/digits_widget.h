#pragma once

#include "desktop/element_widget.h"

namespace lineweir {

class TextBox;

// A box of the digital clock: its text fills the box.
class DigitsWidget final : public ElementWidget {
 public:
  DigitsWidget(FormCanvas& canvas, TextBox& box, const ElementLook& look);

  QString shown_caption() const override;
  void element_changed() override;

 protected:
  void paint(QPainter& painter, const QRect& face) override;
};

}  // namespace lineweir
