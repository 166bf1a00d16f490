#pragma once

#include <QRect>

#include "desktop/theme.h"

class QPainter;

namespace lineweir {

struct Brushwork;

// The part of a key's place that the key fills; the rest keeps it apart from its neighbours.
QRect key_face(const QRect& place, const Brushwork& brushwork);

// How far what stands on a key moves with its face when the key is pressed.
int pressed_step(const Brushwork& brushwork);

void paint_key_up(QPainter& painter, const QRect& place, const Brushwork& brushwork);
// A key that is up, with the mouse over it.
void paint_key_hover(QPainter& painter, const QRect& place, const Brushwork& brushwork);
void paint_key_down(QPainter& painter, const QRect& place, const Brushwork& brushwork);
// A key that stays down while what it switches is on; a line of light says so.
void paint_key_latched(QPainter& painter, const QRect& place, const Brushwork& brushwork);
void paint_key_disabled(QPainter& painter, const QRect& place, const Brushwork& brushwork);

// A line of light along the lower edge of a key's face.
void paint_key_light(QPainter& painter, const QRect& place, QRgb color, const Brushwork& brushwork);

// A line of that colour, so many lines broad, around a key's face.
void paint_key_edge(QPainter& painter, const QRect& place, QRgb color, int lines,
                    const Brushwork& brushwork);

void paint_focus_ring(QPainter& painter, const QRect& place, const Brushwork& brushwork);

}  // namespace lineweir
