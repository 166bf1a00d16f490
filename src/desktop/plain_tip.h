#pragma once

#include <QString>
#include <QTextDocument>

namespace lineweir {

// A tool tip that shows the text as it stands: what a caller or a server is called may look like
// markup to Qt.
inline QString plain_tip(const QString& text) {
  return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

}  // namespace lineweir
