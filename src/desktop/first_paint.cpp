#include "desktop/first_paint.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <cstdio>

namespace lineweir {

FirstPaint::FirstPaint(QWidget* window) : window_(window) {
  if (window == nullptr || !qEnvironmentVariableIsSet("LINEWEIR_REPORT_PAINT")) return;
  // The window itself is never painted, since its content covers it.
  QCoreApplication::instance()->installEventFilter(this);
}

bool FirstPaint::eventFilter(QObject* watched, QEvent* event) {
  const auto* widget = qobject_cast<QWidget*>(watched);
  if (event->type() == QEvent::Paint && widget != nullptr && widget->window() == window_) {
    QCoreApplication::instance()->removeEventFilter(this);
    // Behind the event that is being handled, so that all of the window has been painted.
    QTimer::singleShot(0, this, [] {
      std::puts("painted");
      std::fflush(stdout);
    });
  }
  return false;
}

}  // namespace lineweir
