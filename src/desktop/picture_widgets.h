#pragma once

#include "desktop/element_widget.h"

namespace lineweir {

class Picture;

// A strip or a mark, in the colours of what its row tells.
class PictureWidget final : public ElementWidget {
 public:
  PictureWidget(FormCanvas& canvas, Picture& picture, const ElementLook& look);

  QRect device_place() const override;
  void row_changed(const RowLook& before, const RowLook& now) override;

 protected:
  void paint(QPainter& painter, const QRect& face) override;
};

// The icon of a row button. The element's own place follows from the button's height alone, which
// is below the middle at the design's size and far from it on a form that is stretched one way. So
// the widget takes the button's place and draws itself in the middle of the key's face, where the
// eye looks for it, at a size that goes with the key. What it shows is told by the element's icon
// and more finely by the line's state. A line that rings leaves a ghost of its icon between the
// blinks. While there is no link the icon is dimmed, as its row is, and one that blinks stands.
class KeyIconWidget final : public ElementWidget {
 public:
  KeyIconWidget(FormCanvas& canvas, Picture& icon, const ElementLook& look);

  QRect device_place() const override;
  bool shown_on_screen() const override;
  bool placed_by_link() const override { return true; }
  void row_changed(const RowLook& before, const RowLook& now) override;

 protected:
  void paint(QPainter& painter, const QRect& face) override;

 private:
  const Picture* button() const;
  bool blink_leaves_ghost() const;
};

// An element that is drawn with another one and is here only to be found.
class UndrawnWidget final : public ElementWidget {
 public:
  using ElementWidget::ElementWidget;

  bool shown_on_screen() const override { return false; }
  bool drawn_from(PropertyId) const override { return true; }
  void element_changed() override;

 protected:
  void paint(QPainter&, const QRect&) override {}
};

}  // namespace lineweir
