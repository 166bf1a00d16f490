#include "desktop/first_paint.h"

#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <cstdio>

namespace lineweir {

FirstPaint::FirstPaint(QWidget* window) {
  if (window == nullptr || !qEnvironmentVariableIsSet("LINEWEIR_REPORT_PAINT")) return;
  window->installEventFilter(this);
}

bool FirstPaint::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Paint) {
    watched->removeEventFilter(this);
    // Behind the event that is being handled, so that all of the window has been painted.
    QTimer::singleShot(0, this, [] {
      std::puts("painted");
      std::fflush(stdout);
    });
  }
  return false;
}

}  // namespace lineweir
