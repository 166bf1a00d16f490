#pragma once

#include "elements/form.h"
#include "forms/main_form.h"

namespace lineweir::test {

// Counts the rebuilds of the layout, each of which gives the first row another width.
class RebuildCount : private FormWatch {
 public:
  explicit RebuildCount(MainForm& form) : FormWatch(form), row_(form.DataRow(0)) {}

  int count = 0;

 private:
  void changed(Element& element, PropertyId property) override {
    if (&element == &row_ && property == PropertyId::Width) ++count;
  }

  const Element& row_;
};

}  // namespace lineweir::test
