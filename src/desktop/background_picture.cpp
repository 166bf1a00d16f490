#include "desktop/background_picture.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>

namespace lineweir {
namespace {

const QByteArray jpeg_start("\xff\xd8");
const QByteArray jpeg_scan("\xff\xda");
const QByteArray jpeg_end("\xff\xd9");

// A JPEG file whose end is missing is read as a picture that is grey from there on.
bool cut_short(const QByteArray& bytes) {
  return bytes.startsWith(jpeg_start) && bytes.lastIndexOf(jpeg_end) < bytes.lastIndexOf(jpeg_scan);
}

}  // namespace

QString BackgroundPicture::load(const QString& path) {
  if (path == path_) return {};
  path_ = path;
  picture_ = {};
  stretched_ = {};
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return file.errorString();
  QByteArray bytes = file.readAll();
  if (cut_short(bytes)) return QStringLiteral("the picture is cut short");
  QBuffer buffer(&bytes);
  QImageReader reader(&buffer);
  picture_ = reader.read();
  return picture_.isNull() ? reader.errorString() : QString();
}

const QPixmap& BackgroundPicture::stretched(QSize size) {
  if (!picture_.isNull() && !size.isEmpty() && stretched_.size() != size) {
    stretched_ =
        QPixmap::fromImage(picture_.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  }
  return stretched_;
}

}  // namespace lineweir
