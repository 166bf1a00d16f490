#pragma once

#include <QApplication>
#include <QFontInfo>
#include <algorithm>

namespace lineweir {

// The size of the letters in dialogs and menus for which they were drawn.
inline constexpr int design_letter_pixels = 12;

// How much larger the letters are. Where a dialog's places are told in twips they grow with it.
inline double letter_scale() {
  const int pixels = QFontInfo(QApplication::font()).pixelSize();
  return std::max(1.0, static_cast<double>(pixels) / design_letter_pixels);
}

}  // namespace lineweir
