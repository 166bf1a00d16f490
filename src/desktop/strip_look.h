#pragma once

#include <QRectF>

#include "desktop/theme.h"

namespace lineweir {

class FormCanvas;

// The colours of a row's strip, by what the row tells now.
const StripColors& strip_colors(const FormCanvas& canvas, int row);

// What of a place on a row lies on the row's strip, or under it for the headings above the rows, in
// twips. Columns can be wider than the strip; what stands beyond its end isn't shown.
QRectF clipped_to_strip(const FormCanvas& canvas, int row, const QRectF& place);
QRectF clipped_to_strips(const FormCanvas& canvas, const QRectF& place);

}  // namespace lineweir
