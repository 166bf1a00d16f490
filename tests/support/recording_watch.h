#pragma once

#include <string>
#include <utility>
#include <vector>

#include "elements/form.h"

namespace lineweir::test {

// Writes down what a form tells its observers, as texts such as "Name.Caption", "Row(2).Left",
// "+Name", "-Name", "raised Name", "focus Name" and "focus" alone for nothing.
class RecordingWatch : public FormWatch {
 public:
  using FormWatch::FormWatch;

  // What was told since the last call.
  std::vector<std::string> take() { return std::exchange(told_, {}); }

  void changed(Element& element, PropertyId property) override {
    told_.push_back(name_of(element) + "." + std::string(property_name(property)));
  }
  void added(Element& element) override { told_.push_back("+" + name_of(element)); }
  void removed(Element& element) override { told_.push_back("-" + name_of(element)); }
  void raised(Control& control) override { told_.push_back("raised " + name_of(control)); }
  void moved_to_container(Control& control) override {
    told_.push_back("moved " + name_of(control));
  }
  void menu_changed(MenuItem& parent) override { told_.push_back("menu " + name_of(parent)); }
  void focus_moved(Control* control) override {
    told_.push_back(control == nullptr ? "focus" : "focus " + name_of(*control));
  }
  void shown_again() override { told_.push_back("shown again"); }

 private:
  static std::string name_of(const Element& element) {
    if (element.index() == no_index) return element.name();
    return element.name() + "(" + std::to_string(element.index()) + ")";
  }

  std::vector<std::string> told_;
};

using Told = std::vector<std::string>;

}  // namespace lineweir::test
