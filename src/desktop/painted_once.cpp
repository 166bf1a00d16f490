#include "desktop/painted_once.h"

#include <QPainter>
#include <QPixmapCache>

namespace lineweir {

QPixmap painted_once(const QString& key, QSize size, const std::function<void(QPainter&)>& paint) {
  const QString whole_key = key + QStringLiteral(" %1x%2").arg(size.width()).arg(size.height());
  QPixmap drawing;
  if (size.isEmpty() || QPixmapCache::find(whole_key, &drawing)) return drawing;
  drawing = QPixmap(size);
  drawing.fill(Qt::transparent);
  QPainter painter(&drawing);
  paint(painter);
  painter.end();
  QPixmapCache::insert(whole_key, drawing);
  return drawing;
}

}  // namespace lineweir
