#pragma once

#include "desktop/element_widget.h"
#include "desktop/text_painter.h"

namespace lineweir {

class Label;

// A line of text on the face, on a row's strip or in a clock. Its colour is that of what it stands
// on.
class LabelWidget final : public ElementWidget {
 public:
  LabelWidget(FormCanvas& canvas, Label& label, const ElementLook& look);

  QRect device_place() const override;
  QString shown_caption() const override;
  bool caption_fits() const override;

 protected:
  void paint(QPainter& painter, const QRect& face) override;

 private:
  const Label* label() const;
  bool in_column() const;
  // Whether the text becomes smaller before it loses its end: half a time or half a state is none.
  bool stays_whole() const;
  // The text as the place has room for it.
  TextLine line() const;
  QColor text_color() const;
  // The part of the widget's place that is left for the text.
  QRect text_box(const QRect& face) const;
};

}  // namespace lineweir
