#pragma once

#include <QString>
#include <map>
#include <memory>
#include <set>
#include <vector>

#include "desktop/frame_timer.h"
#include "elements/form.h"

class QWidget;

namespace lineweir {

class ElementLink;

// Ties a form's elements to the widgets of a window that was drawn in Qt Designer. Partners have
// the same name; the widget of element 3 of the array `LineCheck` is called `LineCheck_3` in
// Designer, and `LineCheck(3)` once it is tied. Names of widgets that are no element begin with a
// small letter. A widget of an array waits, hidden, until its element is loaded.
//
// Where all elements of an array look alike Designer holds element 0 alone, and the others are made
// after it.
//
// A widget that stands in a layout or in a splitter keeps the place that it has there; any other
// one takes its element's.
class FormBinder : private FormWatch {
 public:
  FormBinder(Form& form, QWidget& window);
  ~FormBinder() override;

  // Names without a partner on the other side.
  std::vector<QString> elements_without_widget() const { return lonely_elements_; }
  std::vector<QString> widgets_without_element() const;

  // The letters of dialogs have another size.
  void take_letters();

  void flush() { frame_.flush(); }

 private:
  void changed(Element& element, PropertyId property) override;
  void added(Element& element) override;
  void removed(Element& element) override;
  void focus_moved(Control* control) override;

  void tie(Control& control);
  // The widget that Designer has for an element, or that repeats the one of its array's model.
  QWidget* widget_for(const Control& control);
  void tie_new_elements();
  void hide_waiting_widgets();
  void show_changes();
  // Tells screen readers the names that follow other elements.
  void name_widgets();

  QWidget& window_;
  std::map<const Element*, std::unique_ptr<ElementLink>> links_;
  std::set<Element*> changed_;
  // Elements of which no more is known than that they are there: they may still be in the making.
  std::vector<Element*> new_elements_;
  std::vector<QString> lonely_elements_;
  FrameTimer frame_;
};

}  // namespace lineweir
