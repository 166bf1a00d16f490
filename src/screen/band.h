#pragma once

#include "elements/form.h"

namespace lineweir {

struct ConsoleState;

// Keeps the band at the lower edge of the panel parted among what shows in it.
class Band final : private FormWatch {
 public:
  explicit Band(ConsoleState& state);

 private:
  void changed(Element& element, PropertyId property) override;

  ConsoleState& state_;
};

}  // namespace lineweir
