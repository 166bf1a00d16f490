#pragma once

#include <QString>

namespace lineweir {

class Control;

// What a screen reader says of a dialog's control that no caption of its own and no label names;
// empty for any other one. It may follow the caption of another element, and so change.
QString accessible_name(const Control& control);

}  // namespace lineweir
