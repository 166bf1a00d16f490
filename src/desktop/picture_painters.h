#pragma once

#include <QRect>
#include <string_view>

#include "desktop/theme.h"

class QPainter;

namespace lineweir {

// What a picture is drawn with. Lengths are pixels of the device.
struct Brushwork {
  const Theme& theme;
  // Pixels of the device in a 96th of an inch: the measure of line widths and rounded corners.
  double unit = 1;

  int line() const;
};

using PicturePainter = void (*)(QPainter& painter, const QRect& place, const Brushwork& brushwork);

// The drawing that a picture holder's name stands for; null for a name that has none.
PicturePainter painter_of(std::string_view picture);

}  // namespace lineweir
