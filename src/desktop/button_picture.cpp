#include "desktop/button_picture.h"

#include <QAbstractButton>
#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <array>

#include "desktop/console_style.h"
#include "desktop/picture_painters.h"
#include "forms/picture_names.h"

namespace lineweir {
namespace {

struct SpokenRow {
  std::string_view picture;
  const char* text;
};

constexpr std::array spoken_rows = {
    SpokenRow{pictures::GreyPic, "The lamp is dark"},
    SpokenRow{pictures::RedPic, "The lamp is red: the line is on air"},
    SpokenRow{pictures::GreenPic, "The lamp is green: the line is at this seat"},
};

}  // namespace

QIcon button_picture(std::string_view picture, const QWidget& widget) {
  const PicturePainter paint = painter_of(picture);
  if (paint == nullptr) return {};
  const auto* button = qobject_cast<const QAbstractButton*>(&widget);
  const QSize size = button != nullptr ? button->iconSize() : QSize(16, 16);
  const double scale = widget.devicePixelRatioF();
  QPixmap pixmap((QSizeF(size) * scale).toSize());
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  paint(painter, pixmap.rect(), {theme_of(widget.palette()), scale});
  painter.end();
  pixmap.setDevicePixelRatio(scale);
  return QIcon(pixmap);
}

QString spoken_picture(std::string_view picture) {
  const auto* row = std::ranges::find(spoken_rows, picture, &SpokenRow::picture);
  return row == spoken_rows.end() ? QString() : QString::fromLatin1(row->text);
}

}  // namespace lineweir
