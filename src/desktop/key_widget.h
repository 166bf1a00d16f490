#pragma once

#include "desktop/element_widget.h"

namespace lineweir {

class Picture;

// A picture button: pressed with the mouse, or with Space or Enter while it has the focus, and then
// the same events run in the same order.
class KeyWidget final : public ElementWidget {
 public:
  KeyWidget(FormCanvas& canvas, Picture& button, const ElementLook& look);

  bool drawn_from(PropertyId property) const override;
  void element_changed() override;
  // What a press does, and why it comes to nothing, where it does.
  QString tool_tip() const override;
  QString why_nothing_happens() const;
  void row_changed(const RowLook& before, const RowLook& now) override;

  // What the key does, as a screen reader's user does it.
  void click();

 protected:
  void paint(QPainter& painter, const QRect& face) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void paint_ringing_edge(QPainter& painter, const QRect& face) const;

  bool held_by_key_ = false;
};

}  // namespace lineweir
