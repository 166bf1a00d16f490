#pragma once

#include <QString>
#include <QTimer>
#include <functional>

class QWidget;

namespace lineweir {

// For scripts: where the environment variable LINEWEIR_SCREENSHOT names a file, the picture of the
// window of the form that LINEWEIR_SCREENSHOT_OF names (the main form if not set) is saved there,
// LINEWEIR_SCREENSHOT_AFTER seconds (1 if not set) after the start. Where LINEWEIR_SCREENSHOT_ENDS
// is set as well, `end` runs when the picture is saved.
class Screenshot {
 public:
  // `window_of` gives a form's window by the form's name, or null while it has none.
  Screenshot(std::function<QWidget*(const QString& form)> window_of, std::function<void()> end);

 private:
  QTimer delay_;
};

}  // namespace lineweir
