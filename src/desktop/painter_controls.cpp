#include "desktop/painter_controls.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "desktop/painter_keys.h"
#include "desktop/painter_surfaces.h"
#include "desktop/picture_painters.h"

namespace lineweir {
namespace {

constexpr double control_corner = 3;

// As long as it lives the painter draws in pixels of the device.
class DevicePixels {
 public:
  DevicePixels(QPainter& painter, const QRect& place) : painter_(painter) {
    painter.save();
    const QTransform to_device = painter.deviceTransform();
    const QRectF device = to_device.mapRect(QRectF(place));
    const int left = static_cast<int>(std::lround(device.left()));
    const int top = static_cast<int>(std::lround(device.top()));
    place_ = {left, top, static_cast<int>(std::lround(device.right())) - left,
              static_cast<int>(std::lround(device.bottom())) - top};
    unit_ = std::max(1.0, to_device.m11());
    painter.setTransform(to_device.inverted() * painter.worldTransform());
  }
  ~DevicePixels() { painter_.restore(); }
  DevicePixels(const DevicePixels&) = delete;
  DevicePixels& operator=(const DevicePixels&) = delete;

  const QRect& place() const { return place_; }
  double unit() const { return unit_; }
  Brushwork brushwork(const Theme& theme) const { return {theme, unit_}; }

 private:
  QPainter& painter_;
  QRect place_;
  double unit_ = 1;
};

void paint_ring(QPainter& painter, const QRect& place, const Brushwork& work) {
  draw_edge(painter, place, work.theme.focus_ring, 2 * work.line(), control_corner * work.unit);
}

QRgb field_edge(const ControlState& state, const Theme& theme) {
  return state.hovered && state.enabled ? theme.heading : theme.control_edge;
}

void draw_field_edge(QPainter& painter, const QRect& place, const ControlState& state,
                     const Brushwork& work) {
  if (state.focused) {
    paint_ring(painter, place, work);
  } else {
    draw_edge(painter, place, field_edge(state, work.theme), work.line(),
              control_corner * work.unit);
  }
}

}  // namespace

void paint_button(QPainter& painter, const QRect& place, const ControlState& state, bool is_default,
                  const Theme& theme) {
  const DevicePixels device(painter, place);
  const Brushwork work = device.brushwork(theme);
  const int line = work.line();
  // A key leaves a line free at its right and lower edge; a button fills its place.
  const QRect key = device.place().adjusted(0, 0, line, line);
  if (!state.enabled) {
    paint_key_disabled(painter, key, work);
  } else if (state.pressed) {
    paint_key_down(painter, key, work);
  } else if (state.hovered) {
    paint_key_hover(painter, key, work);
  } else {
    paint_key_up(painter, key, work);
  }
  if (state.focused) {
    paint_ring(painter, device.place(), work);
  } else if (is_default && state.enabled) {
    draw_edge(painter, device.place(), theme.highlight, 2 * line, control_corner * work.unit);
  }
}

void paint_field(QPainter& painter, const QRect& place, const ControlState& state,
                 const QColor& ground, const Theme& theme) {
  const DevicePixels device(painter, place);
  const Brushwork work = device.brushwork(theme);
  fill_shaded(painter, device.place(), device.place(), {ground.rgb(), ground.rgb()},
              control_corner * work.unit);
  draw_field_edge(painter, device.place(), state, work);
}

void paint_field_edge(QPainter& painter, const QRect& place, const ControlState& state,
                      const Theme& theme) {
  const DevicePixels device(painter, place);
  draw_field_edge(painter, device.place(), state, device.brushwork(theme));
}

void paint_check_box(QPainter& painter, const QRect& place, const ControlState& state,
                     CheckMark mark, const Theme& theme) {
  const DevicePixels device(painter, place);
  const Brushwork work = device.brushwork(theme);
  const bool filled = mark != CheckMark::None && state.enabled;
  const QRgb ground = filled ? theme.highlight : theme.control;
  const QRect box = device.place();
  fill_shaded(painter, box, box, {ground, ground}, control_corner * work.unit);
  draw_edge(painter, box, filled ? theme.highlight : field_edge(state, theme), work.line(),
            control_corner * work.unit);
  if (mark == CheckMark::None) return;

  const QRectF square(box);
  const auto at = [&](double x, double y) {
    return QPointF(square.left() + x * square.width(), square.top() + y * square.height());
  };
  QPainterPath path(at(0.22, 0.52));
  if (mark == CheckMark::Check) {
    path.lineTo(at(0.42, 0.72));
    path.lineTo(at(0.78, 0.28));
  } else {
    path.lineTo(at(0.78, 0.52));
  }
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor::fromRgb(state.enabled ? theme.highlighted_text : theme.disabled_text),
                      square.width() * 0.14, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(path);
}

void paint_radio_button(QPainter& painter, const QRect& place, const ControlState& state,
                        bool chosen, const Theme& theme) {
  const DevicePixels device(painter, place);
  const Brushwork work = device.brushwork(theme);
  const bool filled = chosen && state.enabled;
  const QRectF circle = QRectF(device.place());
  const double inset = work.line() / 2.0;
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setBrush(QColor::fromRgb(filled ? theme.highlight : theme.control));
  painter.setPen(
      QPen(QColor::fromRgb(filled ? theme.highlight : field_edge(state, theme)), work.line()));
  painter.drawEllipse(circle.adjusted(inset, inset, -inset, -inset));
  if (!chosen) return;
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromRgb(state.enabled ? theme.highlighted_text : theme.disabled_text));
  painter.drawEllipse(circle.center(), circle.width() * 0.2, circle.height() * 0.2);
}

void paint_group_edge(QPainter& painter, const QRect& place, const Theme& theme) {
  const DevicePixels device(painter, place);
  const Brushwork work = device.brushwork(theme);
  draw_edge(painter, device.place(), theme.group_edge, work.line(), control_corner * work.unit);
}

void paint_control_focus(QPainter& painter, const QRect& place, const Theme& theme) {
  const DevicePixels device(painter, place);
  paint_ring(painter, device.place(), device.brushwork(theme));
}

void paint_down_arrow(QPainter& painter, const QRect& place, const QColor& color) {
  const DevicePixels device(painter, place);
  const double half = 4 * device.unit();
  const QPointF middle = QRectF(device.place()).center();
  QPainterPath path(middle + QPointF(-half, -half / 2));
  path.lineTo(middle + QPointF(0, half / 2));
  path.lineTo(middle + QPointF(half, -half / 2));
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(color, 1.8 * device.unit(), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(path);
}

void paint_scroll_slider(QPainter& painter, const QRect& place, const ControlState& state,
                         const Theme& theme) {
  const DevicePixels device(painter, place);
  const int inset = static_cast<int>(std::lround(2 * device.unit()));
  const QRect slider = device.place().adjusted(inset, inset, -inset, -inset);
  const QRgb color = state.hovered || state.pressed ? theme.heading : theme.scroll_slider;
  fill_shaded(painter, slider, slider, {color, color},
              std::min(slider.width(), slider.height()) / 2.0);
}

}  // namespace lineweir
