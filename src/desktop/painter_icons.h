#pragma once

#include <QRect>
#include <string_view>

class QPainter;

namespace lineweir {

struct Brushwork;
struct RowLook;

// The icon of a line whose state tells more than the icon's name does: one that rings, is at a
// handset, is locked or is the next. False, and nothing is drawn, for any other.
// `side` is where the strip lies that the icon belongs to.
enum class StripSide { Left, Right };
bool paint_row_icon(QPainter& painter, const QRect& place, std::string_view icon,
                    const RowLook& row, StripSide side, const Brushwork& brushwork);

// The state of a line on a hybrid, told by shape as well as by colour: on air a circle, ringing or
// ready a triangle, held two bars, made busy a cross. Each fills the largest square in the middle
// of the place.
void paint_circle(QPainter& painter, const QRect& place, const Brushwork& brushwork);
void paint_triangle(QPainter& painter, const QRect& place, const Brushwork& brushwork);
void paint_bars(QPainter& painter, const QRect& place, const Brushwork& brushwork);
void paint_cross(QPainter& painter, const QRect& place, const Brushwork& brushwork);

}  // namespace lineweir
