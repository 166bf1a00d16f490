#include "desktop/splash_window.h"

#include <QPainter>

#include "desktop/console_style.h"
#include "desktop/painter_faces.h"
#include "desktop/painter_surfaces.h"
#include "desktop/picture_painters.h"
#include "desktop/theme.h"

namespace lineweir {
namespace {

constexpr int accent_height = 3;

}  // namespace

SplashWindow::SplashWindow(QWidget* parent)
    : QWidget(parent, Qt::Dialog | Qt::FramelessWindowHint) {}

void SplashWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Brushwork work{theme_of(palette()), 1};
  paint_face(painter, rect(), rect(), work);
  painter.fillRect(0, height() - accent_height, width(), accent_height,
                   QColor::fromRgb(work.theme.next_light));
  draw_edge(painter, rect(), work.theme.control_edge, work.line(), 0);
}

}  // namespace lineweir
