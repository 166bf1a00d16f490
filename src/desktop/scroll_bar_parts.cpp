#include "desktop/scroll_bar_parts.h"

#include <QStyleOptionSlider>
#include <algorithm>

namespace lineweir {

QRect scroll_bar_part(const QStyleOptionSlider& bar, QStyle::SubControl part) {
  const bool across = bar.orientation == Qt::Horizontal;
  const int length = across ? bar.rect.width() : bar.rect.height();
  const int range = bar.maximum - bar.minimum;
  const int steps = range + bar.pageStep;
  const int slider =
      range <= 0 ? length
                 : std::clamp(static_cast<int>(static_cast<qint64>(bar.pageStep) * length / steps),
                              std::min(shortest_slider, length), length);
  const int start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                    length - slider, bar.upsideDown);
  const auto between = [&](int from, int to) {
    return across ? QRect(bar.rect.left() + from, bar.rect.top(), to - from, bar.rect.height())
                  : QRect(bar.rect.left(), bar.rect.top() + from, bar.rect.width(), to - from);
  };
  switch (part) {
    case QStyle::SC_ScrollBarSlider:
      return between(start, start + slider);
    case QStyle::SC_ScrollBarSubPage:
      return between(0, start);
    case QStyle::SC_ScrollBarAddPage:
      return between(start + slider, length);
    case QStyle::SC_ScrollBarGroove:
      return bar.rect;
    default:
      return {};
  }
}

}  // namespace lineweir
