#pragma once

#include "elements/control.h"
#include "forms/layout.h"

namespace lineweir {

inline void place(Control& control, const Place& at) {
  control.move(at.left, at.top, at.width, at.height);
}

}  // namespace lineweir
