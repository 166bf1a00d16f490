#pragma once

#include <QRect>

class QColor;
class QPainter;

namespace lineweir {

struct Brushwork;

// The signs of the keys that drop and hold a call: a receiver laid down, and the two bars that
// also mark a held line. A disabled key's sign has the colour of its word.
// A place is a third wider than high.
void paint_drop_sign(QPainter& painter, const QRect& place, const QColor& word, bool enabled,
                     const Brushwork& brushwork);
void paint_hold_sign(QPainter& painter, const QRect& place, const QColor& word, bool enabled,
                     const Brushwork& brushwork);

}  // namespace lineweir
