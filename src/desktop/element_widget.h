#pragma once

#include <QWidget>

#include "desktop/element_looks.h"
#include "desktop/picture_painters.h"
#include "elements/control.h"

namespace lineweir {

class FormCanvas;
struct RowLook;

// The widget of one control of a form that is drawn by this program. It stands where the control
// stands, to the pixel of the device, forwards the mouse and the keyboard to the control's events,
// and bears the element's name.
//
// Its place in the device's pixels is exact at any scale; where the scale isn't a whole number the
// widget itself is up to two pixels larger, which shows nowhere.
class ElementWidget : public QWidget {
 public:
  ElementWidget(FormCanvas& canvas, Control& control, const ElementLook& look);

  // Null once the element is gone; the widget then goes with the next turn of the loop.
  Control* control() const { return control_; }
  virtual void forget_control();

  const ElementLook& element_look() const { return *look_; }
  FormCanvas& canvas() const { return canvas_; }

  // The control's properties were changed: puts the widget in its place.
  void place();

  // Where the element is drawn, in pixels of the device from the form's upper left corner.
  virtual QRect device_place() const;

  virtual bool shown_on_screen() const { return control_ != nullptr && control_->visible; }

  // Whether a change of that property changes the drawing.
  virtual bool drawn_from(PropertyId property) const;
  // The row that the element stands on tells another thing.
  virtual void row_changed(const RowLook& /*before*/, const RowLook& /*now*/) {}
  // The control is drawn again; one that Qt draws takes over what has changed.
  virtual void element_changed();
  // The theme, the zoom or the screen's scale is another one.
  virtual void look_changed() {}

  // The element's text as it stands on the screen, and whether all of it is seen.
  virtual QString shown_caption() const { return {}; }
  virtual bool caption_fits() const { return true; }
  // What shows while the mouse rests on the element; empty for nothing.
  virtual QString tool_tip() const { return caption_fits() ? QString() : shown_caption(); }

  // Whether the element stands elsewhere while there is no link.
  virtual bool placed_by_link() const { return false; }

  // How often the widget was drawn.
  int paint_count() const { return paint_count_; }

 protected:
  // Draws in pixels of the device; the face has the widget's own size and stands at 0, 0.
  virtual void paint(QPainter& painter, const QRect& face) = 0;

  Brushwork brushwork() const;
  // An element's font in pixels of the device.
  QFont device_font(const FontProperties& font) const;

  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

  // Runs the press of a button and what follows. A handler may destroy the element that it belongs
  // to, so each runs as a copy.
  void press(int button, Qt::KeyboardModifiers modifiers);
  void release(int button, Qt::KeyboardModifiers modifiers, bool click);

 private:
  FormCanvas& canvas_;
  Control* control_;
  const ElementLook* look_;
  int paint_count_ = 0;
  bool double_clicked_ = false;
};

}  // namespace lineweir
