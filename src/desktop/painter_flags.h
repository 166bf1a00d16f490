#pragma once

#include <QColor>
#include <QRectF>

#include "wire/caller_known.h"

class QPainter;

namespace lineweir {

// The sign of a caller's flag: a disc with an R for a regular, a triangle with an exclamation mark
// for one to be careful with, a square with a bar for one who is barred. They differ without their
// colours. The edge has the colour of the text beside it, so that they stand out on any strip.
void paint_flag(QPainter& painter, const QRectF& place, CallerFlag flag, const QColor& edge);

}  // namespace lineweir
