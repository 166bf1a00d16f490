#pragma once

#include <Qt>

namespace lineweir {

// Another window or a menu only borrows the focus: for the form its control has it still.
constexpr bool focus_is_borrowed(Qt::FocusReason reason) {
  return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
         reason == Qt::MenuBarFocusReason;
}

}  // namespace lineweir
