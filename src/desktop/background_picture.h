#pragma once

#include <QImage>
#include <QPixmap>
#include <QString>

namespace lineweir {

// A picture file behind the elements of a form, stretched to where it is shown. It is read anew
// when another file is asked for; one that is missing or damaged leaves no picture.
class BackgroundPicture {
 public:
  // Makes the picture that of the file. Returns what is wrong with the file when it was read now
  // and can't be shown, and an empty text otherwise.
  QString load(const QString& path);

  // The whole picture in that size in pixels; null where there is none.
  const QPixmap& stretched(QSize size);

 private:
  QString path_;
  QImage picture_;
  QPixmap stretched_;
};

}  // namespace lineweir
