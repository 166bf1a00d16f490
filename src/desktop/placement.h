#pragma once

#include <QRectF>

#include "elements/control.h"

namespace lineweir {

// Where a control stands on its form, in twips from the form's upper left corner. Elements inside a
// clock's picture keep the places of its design, or those that they are drawn at instead; they are
// stretched to the picture's present size.
QRectF place_on_form(const Control& control);

// The size that a picture's inside was designed at; where it has none, the picture's own.
QSizeF inner_size(const Control& picture);

}  // namespace lineweir
