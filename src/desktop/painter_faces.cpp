#include "desktop/painter_faces.h"

#include <QPainter>

#include "desktop/painter_surfaces.h"
#include "desktop/picture_painters.h"

namespace lineweir {
namespace {

constexpr double face_corner = 4;

}  // namespace

void paint_face(QPainter& painter, const QRect& place, const QRect& whole,
                const Brushwork& brushwork) {
  fill_shaded(painter, place, whole, brushwork.theme.face.shading);
  brush_metal(painter, place, brushwork.theme.brushing);
}

void paint_plain_panel(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  fill_shaded(painter, place, place, brushwork.theme.panel.shading);
}

void paint_panel(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const int line = brushwork.line();
  paint_plain_panel(painter, place, brushwork);
  brush_metal(painter, place, brushwork.theme.brushing);
  const QRect groove(place.left(), place.top(), place.width(), line);
  painter.fillRect(groove.translated(0, line), QColor::fromRgb(brushwork.theme.groove_dark));
  painter.fillRect(groove.translated(0, 2 * line), QColor::fromRgb(brushwork.theme.groove_light));
}

void paint_plate(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const double radius = face_corner * brushwork.unit;
  fill_shaded(painter, place, place, brushwork.theme.clock.shading, radius);
  draw_edge(painter, place, brushwork.theme.clock_edge, brushwork.line(), radius);
}

}  // namespace lineweir
