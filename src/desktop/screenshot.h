#pragma once

#include <QTimer>
#include <functional>

class QWidget;

namespace lineweir {

// For scripts: where the environment variable LINEWEIR_SCREENSHOT names a file, the picture of the
// window is saved there, LINEWEIR_SCREENSHOT_AFTER seconds (1 if not set) after the start. Where
// LINEWEIR_SCREENSHOT_ENDS is set as well, `end` runs when the picture is saved.
class Screenshot {
 public:
  Screenshot(std::function<QWidget*()> window, std::function<void()> end);

 private:
  QTimer delay_;
};

}  // namespace lineweir
