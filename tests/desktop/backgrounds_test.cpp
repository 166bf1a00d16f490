// The pictures behind the main form's elements, as files that a station may replace.

#include <doctest/doctest.h>

#include <QColor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPixmap>
#include <QTemporaryDir>
#include <algorithm>

#include "desktop/shown_console.h"

namespace lineweir {
namespace {

using test::ShownConsole;

void paint_file(const QTemporaryDir& folder, const char* name, const QColor& color) {
  QImage picture(64, 16, QImage::Format_RGB32);
  picture.fill(color);
  REQUIRE(picture.save(folder.filePath(QString::fromLatin1(name)), "jpg", 100));
}

struct FaceDesk : ShownConsole {
  explicit FaceDesk(const QTemporaryDir& folder) : FaceDesk(QStringList{folder.path()}) {}
  explicit FaceDesk(const QStringList& folders) : ShownConsole("D", folders) {}

  // The colour of the panel where nothing stands on it, and of the form's upper edge.
  QColor panel() { return color_at(*canvas().widget_of(form().ScreenBottom)); }
  QColor top() { return color_at(*canvas().widget_of(form().ScreenTop)); }

  QStringList lines_about_pictures() {
    QStringList lines;
    for (const std::string& line : take_trace()) {
      if (line.starts_with("Picture ")) lines.push_back(QString::fromStdString(line));
    }
    return lines;
  }

 private:
  QColor color_at(ElementWidget& face) {
    settle();
    const QPoint corner = canvas().origin_of(face) + QPoint(4, 6);
    return canvas().grab().toImage().pixelColor(corner);
  }
};

bool near(const QColor& a, const QColor& b) {
  return std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                   std::abs(a.blue() - b.blue())}) < 8;
}

TEST_SUITE("desktop/backgrounds") {
  TEST_CASE("a station's own pictures are shown as they are, stretched over their place") {
    const QTemporaryDir folder;
    paint_file(folder, "10TM.jpg", Qt::darkGreen);
    paint_file(folder, "10BM.jpg", Qt::darkBlue);
    FaceDesk desk(folder);
    CHECK(near(desk.top(), Qt::darkGreen));
    CHECK(near(desk.panel(), Qt::darkBlue));
    const QImage face = desk.canvas().grab().toImage();
    CHECK(near(face.pixelColor(face.width() - 3, face.height() - 3), Qt::darkBlue));
    CHECK(near(face.pixelColor(face.width() - 3, 3), Qt::darkGreen));
    CHECK(desk.lines_about_pictures().isEmpty());
  }

  TEST_CASE("grey and metal have pictures of their own, and so has each number of rows") {
    const QTemporaryDir folder;
    paint_file(folder, "10BM.jpg", Qt::darkBlue);
    paint_file(folder, "10BG.jpg", Qt::darkCyan);
    paint_file(folder, "20BG.jpg", Qt::darkMagenta);
    FaceDesk desk(folder);
    CHECK(near(desk.panel(), Qt::darkBlue));
    desk.form().GreyScreenOption.checked = true;
    CHECK(near(desk.panel(), Qt::darkCyan));
    desk.console.layout.RedefineScreen();
    CHECK(near(desk.panel(), Qt::darkCyan));
    desk.console.layout.set_line_count(20);
    desk.console.layout.RedefineScreen();
    CHECK(near(desk.panel(), Qt::darkMagenta));
  }

  TEST_CASE("a missing picture leaves a plain face and one line in the trace") {
    const QTemporaryDir folder;
    paint_file(folder, "10TM.jpg", Qt::darkGreen);
    FaceDesk desk(folder);
    CHECK(near(desk.panel(), QColor::fromRgb(metal_theme.panel.shading.upper)));
    desk.canvas().grab();
    const QStringList lines = desk.lines_about_pictures();
    REQUIRE(lines.size() == 1);
    CHECK(lines.first().startsWith("Picture 10BM.jpg can't be shown - "));
    // The rows and the panel go on as ever.
    desk.box_sends("N02");
    desk.settle();
    CHECK(desk.form().LineStatus(2).caption == "On Air");
    desk.console.layout.RedefineScreen();
    desk.canvas().grab();
    CHECK(desk.lines_about_pictures().isEmpty());
  }

  TEST_CASE("of several folders the first with a picture of the name counts, one by one") {
    const QTemporaryDir own;
    const QTemporaryDir installed;
    paint_file(own, "10BM.jpg", Qt::darkBlue);
    paint_file(installed, "10BM.jpg", Qt::darkGreen);
    paint_file(installed, "10TM.jpg", Qt::darkGreen);
    FaceDesk desk({own.path() + "/missing", own.path(), installed.path()});
    CHECK(near(desk.panel(), Qt::darkBlue));
    CHECK(near(desk.top(), Qt::darkGreen));
    CHECK(desk.lines_about_pictures().isEmpty());
  }

  TEST_CASE("a damaged picture leaves a plain face and one line in the trace") {
    const QTemporaryDir folder;
    paint_file(folder, "10TM.jpg", Qt::darkGreen);
    paint_file(folder, "10BM.jpg", Qt::darkBlue);
    QFile file(folder.filePath("10BM.jpg"));
    QByteArray damaged;
    SUBCASE("empty") {}
    SUBCASE("no picture at all") { damaged = "not a picture"; }
    SUBCASE("cut in the middle") {
      REQUIRE(file.open(QIODevice::ReadOnly));
      damaged = file.readAll();
      file.close();
      damaged.chop(12);
    }
    REQUIRE(file.open(QIODevice::WriteOnly));
    file.write(damaged);
    file.close();
    FaceDesk desk(folder);
    CHECK(near(desk.panel(), QColor::fromRgb(metal_theme.panel.shading.upper)));
    CHECK(desk.lines_about_pictures().size() == 1);
  }

  TEST_CASE("a picture of another format under the name is shown too") {
    const QTemporaryDir folder;
    paint_file(folder, "10TM.jpg", Qt::darkGreen);
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::darkYellow);
    REQUIRE(picture.save(folder.filePath("10BM.jpg"), "png"));
    FaceDesk desk(folder);
    CHECK(near(desk.panel(), Qt::darkYellow));
    CHECK(desk.lines_about_pictures().isEmpty());
  }

  TEST_CASE("an upper image that would cover the first row isn't shown") {
    const QTemporaryDir folder;
    paint_file(folder, "10TM.jpg", Qt::darkGreen);
    FaceDesk desk(folder);
    desk.form().ScreenTopImage.visible = false;
    CHECK_FALSE(near(desk.top(), Qt::darkGreen));
    desk.form().ScreenTopImage.visible = true;
    CHECK(near(desk.top(), Qt::darkGreen));
  }

  TEST_CASE("beside the program lie the pictures of every row count and face") {
    ShownConsole desk("D");
    for (const bool grey : {false, true}) {
      desk.form().GreyScreenOption.checked = grey;
      for (int rows = 1; rows <= 20; ++rows) {
        desk.console.layout.set_line_count(rows);
        desk.console.layout.RedefineScreen();
        desk.settle();
        desk.canvas().grab();
      }
    }
    for (const std::string& line : desk.take_trace()) CHECK_FALSE(line.starts_with("Picture "));
  }
}

}  // namespace
}  // namespace lineweir
