#include "desktop/question_icons.h"

#include <doctest/doctest.h>

#include <QIcon>
#include <QImage>
#include <vector>

#include "desktop/theme.h"
#include "pixels.h"

namespace lineweir {
namespace {

QImage drawn(QStyle::StandardPixmap picture) {
  const auto icon = question_icon(picture, metal_theme);
  REQUIRE(icon.has_value());
  return test::readable(icon->pixmap(64, 64).toImage());
}

// Where the middle of the ink is, in parts of the picture's side.
QPointF middle_of_ink(const QImage& picture) {
  QPointF sum;
  double ink = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const int alpha = qAlpha(picture.pixel(x, y));
      sum += QPointF(x + 0.5, y + 0.5) * alpha;
      ink += alpha;
    }
  }
  REQUIRE(ink > 0);
  return sum / ink / picture.width();
}

TEST_SUITE("desktop/pictures of questions") {
  TEST_CASE("pictures of one meaning are one, and each meaning has its own") {
    const std::vector<std::vector<QStyle::StandardPixmap>> meanings = {
        {QStyle::SP_ArrowBack, QStyle::SP_FileDialogBack},
        {QStyle::SP_ArrowForward},
        {QStyle::SP_FileDialogToParent},
        {QStyle::SP_FileDialogNewFolder},
        {QStyle::SP_FileDialogListView},
        {QStyle::SP_FileDialogDetailedView},
        {QStyle::SP_DirIcon, QStyle::SP_DirOpenIcon, QStyle::SP_DirClosedIcon,
         QStyle::SP_DirLinkIcon},
        {QStyle::SP_DirHomeIcon},
        {QStyle::SP_FileIcon, QStyle::SP_FileLinkIcon},
        {QStyle::SP_DriveHDIcon},
        {QStyle::SP_ComputerIcon, QStyle::SP_DesktopIcon},
    };
    std::vector<QImage> pictures;
    for (const auto& meaning : meanings) {
      const QImage picture = drawn(meaning.front());
      for (const auto other : meaning) CHECK(drawn(other) == picture);
      for (const QImage& before : pictures) CHECK(before != picture);
      pictures.push_back(picture);
    }
    CHECK_FALSE(question_icon(QStyle::SP_TrashIcon, metal_theme).has_value());
  }

  TEST_CASE("an arrow has its head where it leads") {
    CHECK(middle_of_ink(drawn(QStyle::SP_ArrowBack)).x() < 0.48);
    CHECK(middle_of_ink(drawn(QStyle::SP_ArrowForward)).x() > 0.52);
    CHECK(middle_of_ink(drawn(QStyle::SP_FileDialogToParent)).y() < 0.48);
  }
}

}  // namespace
}  // namespace lineweir
