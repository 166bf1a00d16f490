#pragma once

#include <QRect>

class QPainter;

namespace lineweir {

struct Brushwork;

// The face that the rows stand on; `whole` is the form.
void paint_face(QPainter& painter, const QRect& place, const QRect& whole,
                const Brushwork& brushwork);

// The same panel without metal and groove.
void paint_plain_panel(QPainter& painter, const QRect& place, const Brushwork& brushwork);

// The panel below the rows, parted from them by a groove along its upper edge.
void paint_panel(QPainter& painter, const QRect& place, const Brushwork& brushwork);

// The sunk plate that a clock stands on.
void paint_plate(QPainter& painter, const QRect& place, const Brushwork& brushwork);

}  // namespace lineweir
