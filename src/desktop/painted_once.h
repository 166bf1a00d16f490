#pragma once

#include <QPixmap>
#include <QSize>
#include <QString>
#include <functional>

class QPainter;

namespace lineweir {

// A drawing that many places show again and again, kept as pixels of the device from its first use
// on. The key and the size tell it apart from all others: whatever the drawing goes by belongs into
// the key. What hasn't been used for long is forgotten.
QPixmap painted_once(const QString& key, QSize size, const std::function<void(QPainter&)>& paint);

}  // namespace lineweir
