#include "desktop/question_icons.h"

#include <QIcon>
#include <QPainter>
#include <QPainterPath>
#include <array>

#include "desktop/theme.h"

namespace lineweir {
namespace {

// Drawn on a square of 16 by 16, with a pen of two.
constexpr int design_side = 16;

void draw_left(QPainter& painter) {
  painter.drawLine(3, 8, 13, 8);
  painter.drawPolyline(QPolygonF({{7.5, 3.5}, {3, 8}, {7.5, 12.5}}));
}

void draw_right(QPainter& painter) {
  painter.drawLine(3, 8, 13, 8);
  painter.drawPolyline(QPolygonF({{8.5, 3.5}, {13, 8}, {8.5, 12.5}}));
}

void draw_up(QPainter& painter) {
  painter.drawLine(8, 3, 8, 13);
  painter.drawPolyline(QPolygonF({{3.5, 7.5}, {8, 3}, {12.5, 7.5}}));
}

void draw_folder(QPainter& painter) {
  QPainterPath folder(QPointF(2, 13));
  folder.lineTo(2, 3.5);
  folder.lineTo(6.5, 3.5);
  folder.lineTo(8, 5.5);
  folder.lineTo(14, 5.5);
  folder.lineTo(14, 13);
  folder.closeSubpath();
  painter.drawPath(folder);
}

void draw_new_folder(QPainter& painter) {
  draw_folder(painter);
  painter.drawLine(QPointF(8, 7), QPointF(8, 11.5));
  painter.drawLine(QPointF(5.75, 9.25), QPointF(10.25, 9.25));
}

void draw_file(QPainter& painter) {
  painter.drawPolygon(QPolygonF({{3.5, 2}, {9.5, 2}, {12.5, 5}, {12.5, 14}, {3.5, 14}}));
  painter.drawPolyline(QPolygonF({{9, 2.5}, {9, 5.5}, {12, 5.5}}));
}

void draw_list(QPainter& painter) {
  for (const int row : {4, 8, 12}) {
    painter.drawPoint(3, row);
    painter.drawPoint(9, row);
    painter.drawLine(5, row, 6, row);
    painter.drawLine(11, row, 13, row);
  }
}

void draw_details(QPainter& painter) {
  for (const int row : {4, 8, 12}) {
    painter.drawPoint(3, row);
    painter.drawLine(6, row, 13, row);
  }
}

void draw_disk(QPainter& painter) {
  painter.drawRoundedRect(QRectF(2, 4, 12, 8), 1, 1);
  painter.drawPoint(11, 9);
}

void draw_computer(QPainter& painter) {
  painter.drawRect(QRectF(2, 3, 12, 8));
  painter.drawLine(5, 13, 11, 13);
}

void draw_house(QPainter& painter) {
  painter.drawPolyline(QPolygonF({{2, 8}, {8, 2.5}, {14, 8}}));
  painter.drawPolyline(QPolygonF({{4, 8}, {4, 13.5}, {12, 13.5}, {12, 8}}));
}

struct QuestionPicture {
  QStyle::StandardPixmap asked;
  void (*draw)(QPainter& painter);
};

constexpr std::array question_pictures = {
    QuestionPicture{QStyle::SP_ArrowBack, draw_left},
    QuestionPicture{QStyle::SP_FileDialogBack, draw_left},
    QuestionPicture{QStyle::SP_ArrowForward, draw_right},
    QuestionPicture{QStyle::SP_FileDialogToParent, draw_up},
    QuestionPicture{QStyle::SP_FileDialogNewFolder, draw_new_folder},
    QuestionPicture{QStyle::SP_FileDialogListView, draw_list},
    QuestionPicture{QStyle::SP_FileDialogDetailedView, draw_details},
    QuestionPicture{QStyle::SP_DirIcon, draw_folder},
    QuestionPicture{QStyle::SP_DirOpenIcon, draw_folder},
    QuestionPicture{QStyle::SP_DirClosedIcon, draw_folder},
    QuestionPicture{QStyle::SP_DirLinkIcon, draw_folder},
    QuestionPicture{QStyle::SP_DirHomeIcon, draw_house},
    QuestionPicture{QStyle::SP_FileIcon, draw_file},
    QuestionPicture{QStyle::SP_FileLinkIcon, draw_file},
    QuestionPicture{QStyle::SP_DriveHDIcon, draw_disk},
    QuestionPicture{QStyle::SP_ComputerIcon, draw_computer},
    QuestionPicture{QStyle::SP_DesktopIcon, draw_computer},
};

QPixmap drawn(const QuestionPicture& picture, int side, QRgb color) {
  QPixmap pixmap(side, side);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(side / static_cast<double>(design_side), side / static_cast<double>(design_side));
  painter.setPen(QPen(QColor::fromRgb(color), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  picture.draw(painter);
  return pixmap;
}

}  // namespace

std::optional<QIcon> question_icon(QStyle::StandardPixmap asked, const Theme& theme) {
  for (const QuestionPicture& picture : question_pictures) {
    if (picture.asked != asked) continue;
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 96}) {
      icon.addPixmap(drawn(picture, side, theme.window.text));
      icon.addPixmap(drawn(picture, side, theme.disabled_text), QIcon::Disabled);
    }
    return icon;
  }
  return std::nullopt;
}

}  // namespace lineweir
