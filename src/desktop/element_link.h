#pragma once

#include <QObject>
#include <memory>

#include "elements/control.h"

class QFocusEvent;
class QKeyEvent;
class QWidget;

namespace lineweir {

// The tie between one control and its widget of a window drawn in Qt Designer.
class ElementLink : public QObject {
 public:
  ElementLink(Control& control, QWidget& widget);

  QWidget& widget() const { return widget_; }

  // Shows what the control holds now.
  void show_control();

  // The letters of dialogs have another size: what goes by it is measured anew.
  virtual void take_letters() { place(); }

 protected:
  // What the kind of control adds to visibility, place and the events that all kinds share.
  virtual void show_content() = 0;

  Control& control() const { return control_; }
  // Content is being shown, so that the widget's signals tell nothing that the user did.
  bool showing() const { return showing_; }

  bool eventFilter(QObject* watched, QEvent* event) override;

  // Whether this kind runs the mouse's and the keyboard's events by itself.
  virtual bool clicks_by_itself() const { return true; }
  virtual bool types_by_itself() const { return false; }

 private:
  bool key_swallowed(QKeyEvent& event);
  void lost_focus(const QFocusEvent& event);
  void place();

  Control& control_;
  QWidget& widget_;
  bool placed_by_layout_;
  bool showing_ = false;
};

// The link for a control and a widget of its name; null when the widget is of another kind.
std::unique_ptr<ElementLink> make_element_link(Control& control, QWidget& widget);

}  // namespace lineweir
