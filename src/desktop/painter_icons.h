#pragma once

#include <QRect>

class QPainter;

namespace lineweir {

struct Brushwork;

// The state of a line on a hybrid, told by shape as well as by colour: on air a circle, ringing or
// ready a triangle, held two bars, made busy a cross. Each fills the largest square in the middle
// of the place.
void paint_circle(QPainter& painter, const QRect& place, const Brushwork& brushwork);
void paint_triangle(QPainter& painter, const QRect& place, const Brushwork& brushwork);
void paint_bars(QPainter& painter, const QRect& place, const Brushwork& brushwork);
void paint_cross(QPainter& painter, const QRect& place, const Brushwork& brushwork);

}  // namespace lineweir
