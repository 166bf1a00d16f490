#pragma once

#include <QString>

namespace lineweir {

// A countdown as it is drawn: without its hours while there are none.
inline QString countdown_text(const QString& caption) {
  const QString no_hours = QStringLiteral("00:");
  const bool whole = caption.size() == 8;
  return whole && caption.startsWith(no_hours) ? caption.mid(no_hours.size()) : caption;
}

}  // namespace lineweir
