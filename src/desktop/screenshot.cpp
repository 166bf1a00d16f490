#include "desktop/screenshot.h"

#include <QPixmap>
#include <QWidget>
#include <cstdio>

namespace lineweir {

Screenshot::Screenshot(std::function<QWidget*(const QString& form)> window_of,
                       std::function<void()> end) {
  const QString path = qEnvironmentVariable("LINEWEIR_SCREENSHOT");
  if (path.isEmpty()) return;
  bool given = false;
  const double seconds = qEnvironmentVariable("LINEWEIR_SCREENSHOT_AFTER").toDouble(&given);
  delay_.setSingleShot(true);
  QObject::connect(
      &delay_, &QTimer::timeout, &delay_,
      [path, window_of = std::move(window_of), end = std::move(end)] {
        QWidget* shown = window_of(qEnvironmentVariable("LINEWEIR_SCREENSHOT_OF", "Lineweir"));
        if (shown == nullptr || !shown->grab().save(path)) {
          std::fprintf(stderr, "lineweir: the picture can't be saved as %s\n", qPrintable(path));
        }
        if (qEnvironmentVariableIsSet("LINEWEIR_SCREENSHOT_ENDS")) end();
      });
  delay_.start(given ? static_cast<int>(seconds * 1000) : 1000);
}

}  // namespace lineweir
