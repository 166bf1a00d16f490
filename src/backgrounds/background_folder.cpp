#include "backgrounds/background_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QSaveFile>

#include "backgrounds/background_painter.h"

namespace lineweir {
namespace {

// Sharp on screens of twice the usual density; the faces are shadings, which stretch well beyond.
constexpr int pixels_per_unit = 2;
// Below it the shadings fall into bands of colour.
constexpr int jpeg_quality = 98;

// The mark by which a picture of our own is known.
const QString mark_key = QStringLiteral("Software");
const QString mark = QStringLiteral("lineweir-backgrounds");

bool belongs_to_station(const QString& path) {
  return QFileInfo::exists(path) && QImageReader(path).text(mark_key) != mark;
}

bool write_picture(const QString& path, QImage picture) {
  picture.setText(mark_key, mark);
  // Whole or not at all.
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return false;
  QImageWriter writer(&file, "jpg");
  writer.setQuality(jpeg_quality);
  return writer.write(picture) && file.commit();
}

}  // namespace

std::optional<QString> fill_background_folder(const QString& folder) {
  if (!QDir().mkpath(folder)) return folder;
  for (const Background& background : all_backgrounds()) {
    const QString path = QDir(folder).filePath(QString::fromStdString(background.file));
    if (belongs_to_station(path)) continue;
    if (!write_picture(path, paint_background(background, pixels_per_unit))) return path;
  }
  return std::nullopt;
}

}  // namespace lineweir
