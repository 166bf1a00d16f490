#include "desktop/sign_icon.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>

#include "desktop/theme.h"

namespace lineweir {

QIcon sign_icon(QChar letter, const Theme& theme) {
  QIcon icon;
  for (const int size : {32, 48, 64, 96}) {
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgb(theme.highlight));
    painter.drawEllipse(QRectF(picture.rect()).adjusted(1, 1, -1, -1));
    QFont font = QApplication::font();
    font.setPixelSize(size * 5 / 8);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(QColor::fromRgb(theme.highlighted_text));
    painter.drawText(picture.rect(), Qt::AlignCenter, QString(letter));
    painter.end();
    icon.addPixmap(picture);
  }
  return icon;
}

}  // namespace lineweir
