#include "desktop/screenshot.h"

#include <QPixmap>
#include <QWidget>

namespace lineweir {

Screenshot::Screenshot(std::function<QWidget*()> window) {
  const QString path = qEnvironmentVariable("LINEWEIR_SCREENSHOT");
  if (path.isEmpty()) return;
  bool given = false;
  const double seconds = qEnvironmentVariable("LINEWEIR_SCREENSHOT_AFTER").toDouble(&given);
  delay_.setSingleShot(true);
  QObject::connect(&delay_, &QTimer::timeout, &delay_, [path, window = std::move(window)] {
    if (QWidget* shown = window()) shown->grab().save(path);
  });
  delay_.start(given ? static_cast<int>(seconds * 1000) : 1000);
}

}  // namespace lineweir
