#pragma once

#include <QRect>

#include "desktop/theme.h"

class QPainter;

namespace lineweir {

struct Brushwork;

// A row's strip. It leaves a line free at its lower edge, so that rows stand apart.
void paint_strip(QPainter& painter, const QRect& place, const StripColors& colors,
                 const Brushwork& brushwork);

// The thin line at a column's edge.
void paint_mark(QPainter& painter, const QRect& place, const StripColors& colors,
                const Brushwork& brushwork);

}  // namespace lineweir
