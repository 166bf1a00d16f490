#include "backgrounds/background_folder.h"

#include <doctest/doctest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace lineweir::test {
namespace {

QByteArray bytes_of(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write_bytes(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  REQUIRE(file.open(QIODevice::WriteOnly));
  REQUIRE(file.write(bytes) == bytes.size());
}

TEST_SUITE("backgrounds/folder") {
  TEST_CASE("the folder is made, with 28 pictures that can be read") {
    const QTemporaryDir place;
    const QString folder = place.filePath("beside/Vesgraph");
    CHECK_FALSE(fill_background_folder(folder).has_value());
    const QStringList files = QDir(folder).entryList(QDir::Files);
    CHECK(files.size() == 28);
    for (const QString& file : files) {
      CAPTURE(file.toStdString());
      CHECK_FALSE(QImage(QDir(folder).filePath(file)).isNull());
    }
  }

  TEST_CASE("the same pictures come out each time") {
    const QTemporaryDir place;
    CHECK_FALSE(fill_background_folder(place.path()).has_value());
    const QByteArray first = bytes_of(place.filePath("19BM.jpg"));
    CHECK_FALSE(first.isEmpty());
    CHECK_FALSE(fill_background_folder(place.path()).has_value());
    CHECK(bytes_of(place.filePath("19BM.jpg")) == first);
  }

  TEST_CASE("a station's own picture stays as it is, readable or not") {
    const QTemporaryDir place;
    QImage own(40, 20, QImage::Format_RGB32);
    own.fill(Qt::darkBlue);
    REQUIRE(own.save(place.filePath("10TM.jpg")));
    write_bytes(place.filePath("10TG.jpg"), "not a picture");
    const QByteArray picture = bytes_of(place.filePath("10TM.jpg"));
    CHECK_FALSE(fill_background_folder(place.path()).has_value());
    CHECK(bytes_of(place.filePath("10TM.jpg")) == picture);
    CHECK(bytes_of(place.filePath("10TG.jpg")) == "not a picture");
    CHECK(QFile::exists(place.filePath("20BG.jpg")));
  }

  TEST_CASE("one that was made before is made anew") {
    const QTemporaryDir place;
    CHECK_FALSE(fill_background_folder(place.path()).has_value());
    QFile::remove(place.filePath("11BM.jpg"));
    CHECK_FALSE(fill_background_folder(place.path()).has_value());
    CHECK(QFile::exists(place.filePath("11BM.jpg")));
  }

  TEST_CASE("a folder that can't be is told") {
    const QTemporaryDir place;
    write_bytes(place.filePath("file"), "x");
    CHECK(fill_background_folder(place.filePath("file/Vesgraph")).has_value());
  }
}

}  // namespace
}  // namespace lineweir::test
