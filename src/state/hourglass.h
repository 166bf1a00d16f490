#pragma once

#include "elements/form.h"

namespace lineweir {

// The hourglass over a form for as long as it lives.
class Hourglass {
 public:
  explicit Hourglass(Form& form) : form_(form) { form_.mouse_pointer = pointer_hourglass; }
  ~Hourglass() { form_.mouse_pointer = pointer_default; }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;

 private:
  Form& form_;
};

}  // namespace lineweir
