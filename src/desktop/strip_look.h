#pragma once

#include "desktop/theme.h"

namespace lineweir {

class FormCanvas;

// The colours of a row's strip, by the picture that it shows now.
const StripColors& strip_colors(const FormCanvas& canvas, int row);

// Whether some row's strip is that of the next caller.
bool next_caller_shown(const FormCanvas& canvas);

}  // namespace lineweir
