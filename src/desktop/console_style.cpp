#include "desktop/console_style.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

#include "desktop/theme.h"

namespace lineweir {
namespace {

void draw_field_edge(QPainter& painter, const QRect& place, const QStyleOption& option) {
  const Theme& theme = theme_of(option.palette);
  const bool focused = option.state.testFlag(QStyle::State_HasFocus);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QColor::fromRgb(focused ? theme.focus_ring : theme.control_edge));
  painter.drawRoundedRect(QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
  painter.restore();
}

}  // namespace

const Theme& theme_of(const QPalette& palette) {
  const QRgb window = palette.color(QPalette::Window).rgb();
  return window == grey_theme.window.shading.upper ? grey_theme : metal_theme;
}

ConsoleStyle::ConsoleStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void ConsoleStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const {
  switch (element) {
    case PE_FrameLineEdit:
    case PE_FrameMenu:
    case PE_Frame:
      draw_field_edge(*painter, option->rect, *option);
      return;
    case PE_IndicatorCheckBox:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
      draw_field_edge(*painter, option->rect, *option);
      return;
    default:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

}  // namespace lineweir
