#pragma once

#include <QPointF>
#include <QRect>

#include "desktop/theme.h"

class QPainter;

namespace lineweir {

struct Brushwork;

enum class DialFace {
  // Ticks alone: a turn is as long as what it counts.
  Ticks,
  // With the hours.
  Hours,
};

// A clock's dial: the largest circle in the middle of the place, with a tick for each minute.
void paint_dial(QPainter& painter, const QRect& place, DialFace face, const DialColors& colors,
                const Brushwork& brushwork);

struct HandShape {
  // Of the dial's radius; the width at the hand's thickest.
  double width;
  double tail;
  bool tapered;
  // Of the dial's radius; 0 draws no hub.
  double hub;
};

// A hand from the middle of a dial; `tip` is its far end as a part of the dial's radius.
void paint_hand(QPainter& painter, const QRect& dial, QPointF tip, const HandShape& shape,
                QRgb color);

// The pin that holds the hands.
void paint_pin(QPainter& painter, const QRect& dial, QRgb color);

}  // namespace lineweir
