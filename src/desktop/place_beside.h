#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <vector>

namespace lineweir {

// Something on the screen that a window had better not cover, and how much that matters for each of
// its pixels.
struct CoveredPart {
  QRect place;
  double weight = 1;
};

// Where a window of that size, with its frame, covers least of what matters: its upper left corner,
// such that all of it is on the screen if it fits there. Of places that are as good it takes the
// one nearest to `beside`.
QPoint place_beside(QSize size, const QRect& screen, const QRect& beside,
                    const std::vector<CoveredPart>& parts);

}  // namespace lineweir
