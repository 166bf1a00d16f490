#pragma once

#include <QStyle>

class QStyleOptionSlider;

namespace lineweir {

inline constexpr int shortest_slider = 20;

// Where a part of a scroll bar stands whose slider runs from end to end, since it has no arrows.
QRect scroll_bar_part(const QStyleOptionSlider& bar, QStyle::SubControl part);

}  // namespace lineweir
