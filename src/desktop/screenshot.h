#pragma once

#include <QTimer>
#include <functional>

class QWidget;

namespace lineweir {

// For scripts: where the environment variable LINEWEIR_SCREENSHOT names a file, the picture of the
// window is saved there, LINEWEIR_SCREENSHOT_AFTER seconds (1 if not set) after the start.
class Screenshot {
 public:
  explicit Screenshot(std::function<QWidget*()> window);

 private:
  QTimer delay_;
};

}  // namespace lineweir
