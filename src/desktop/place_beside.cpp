#include "desktop/place_beside.h"

#include <algorithm>
#include <limits>

namespace lineweir {
namespace {

// Where a stretch of `length` may begin within `room`: at its ends, and where it just clears one of
// the others. The least cost is always found at such places.
std::vector<int> beginnings(int length, int first, int end, const std::vector<int>& edges) {
  const int last = std::max(first, end - length);
  std::vector<int> found = {first, last};
  for (const int edge : edges) {
    for (const int place : {edge, edge - length}) {
      if (place >= first && place <= last) found.push_back(place);
    }
  }
  std::ranges::sort(found);
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

double covered_cost(const QRect& window, const std::vector<CoveredPart>& parts) {
  double cost = 0;
  for (const CoveredPart& part : parts) {
    const QRect covered = window.intersected(part.place);
    if (covered.isEmpty()) continue;
    cost += part.weight * covered.width() * covered.height();
  }
  return cost;
}

}  // namespace

QPoint place_beside(QSize size, const QRect& screen, const QRect& beside,
                    const std::vector<CoveredPart>& parts) {
  std::vector<int> across = {beside.left(), beside.right() + 1};
  std::vector<int> down = {beside.top(), beside.bottom() + 1};
  for (const CoveredPart& part : parts) {
    across.insert(across.end(), {part.place.left(), part.place.right() + 1});
    down.insert(down.end(), {part.place.top(), part.place.bottom() + 1});
  }
  QPoint best = screen.topLeft();
  double least = std::numeric_limits<double>::max();
  for (const int y : beginnings(size.height(), screen.top(), screen.bottom() + 1, down)) {
    for (const int x : beginnings(size.width(), screen.left(), screen.right() + 1, across)) {
      const QRect window(QPoint(x, y), size);
      const double distance = (window.center() - beside.center()).manhattanLength();
      const double cost = covered_cost(window, parts) + distance;
      if (cost >= least) continue;
      least = cost;
      best = window.topLeft();
    }
  }
  return best;
}

}  // namespace lineweir
