#pragma once

#include <QColor>
#include <QRect>
#include <QRectF>

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

// A sign of one colour in a place of any form: full, or its outline alone.
enum class SignFill { Full, Outline };

// A receiver that is lifted: somebody rings.
void paint_receiver(QPainter& painter, const QRectF& place, const QColor& color, SignFill fill);
// A headset: somebody talks with the caller, who isn't on air.
void paint_headset(QPainter& painter, const QRectF& place, const QColor& color, SignFill fill);
// A closed padlock.
void paint_padlock(QPainter& painter, const QRectF& place, const QColor& color);

}  // namespace lineweir
