#pragma once

#include <QRect>

class QPainter;

namespace lineweir {

struct Brushwork;

// The lamp of the dial pad. Each state has a shape of its own: a ring while it is dark, a full disc
// for a line on air, and the two bars of a row's green icon for one at the handset.
void paint_lamp_dark(QPainter& painter, const QRect& place, const Brushwork& brushwork);
void paint_lamp_on_air(QPainter& painter, const QRect& place, const Brushwork& brushwork);
void paint_lamp_at_handset(QPainter& painter, const QRect& place, const Brushwork& brushwork);

}  // namespace lineweir
