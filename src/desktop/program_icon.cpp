#include "desktop/program_icon.h"

#include <QDir>

// A library's pictures are found only once they are asked for, and not from within a namespace.
static void take_icon() { Q_INIT_RESOURCE(icon); }

namespace lineweir {

QIcon program_icon() {
  take_icon();
  QIcon icon;
  for (const QString& file : QDir(QStringLiteral(":/icon")).entryList()) {
    icon.addFile(QStringLiteral(":/icon/") + file);
  }
  return icon;
}

}  // namespace lineweir
