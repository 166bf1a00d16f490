#pragma once

#include <QApplication>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QStyle>

namespace lineweir {

// Pictures and kinds of files by nothing but their names. Qt's own look into files whose names tell
// nothing, and closing one drops the locks that this program's other threads hold on it.
class UnreadFileIcons final : public QFileIconProvider {
 public:
  using QFileIconProvider::icon;

  QIcon icon(const QFileInfo& file) const override { return icon(file.isDir() ? Folder : File); }

  QString type(const QFileInfo& file) const override {
    if (file.isDir()) return QStringLiteral("Folder");
    const QString suffix = file.suffix();
    return suffix.isEmpty() ? QStringLiteral("File") : suffix + QStringLiteral(" File");
  }
};

}  // namespace lineweir
