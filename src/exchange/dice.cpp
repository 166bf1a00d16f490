#include "exchange/dice.h"

#include <algorithm>
#include <cmath>

namespace lineweir::exchange {
namespace {

constexpr Moment shortest{1};
constexpr int longest_in_means = 20;

}  // namespace

double Dice::fraction() { return static_cast<double>(engine_() >> 11U) * 0x1p-53; }

bool Dice::happens(double probability) { return fraction() < probability; }

int Dice::below(int count) { return static_cast<int>(fraction() * count); }

Moment Dice::between(Moment low, Moment high) {
  const double span = static_cast<double>((high - low).count());
  return low + Moment(static_cast<Moment::rep>(fraction() * span));
}

Moment Dice::around(Moment mean) { return std::max(shortest, between(mean / 2, mean * 3 / 2)); }

Moment Dice::exponential(Moment mean) {
  const double drawn = -std::log1p(-fraction()) * static_cast<double>(mean.count());
  const double longest = static_cast<double>(mean.count()) * longest_in_means;
  return std::max(shortest, Moment(static_cast<Moment::rep>(std::min(drawn, longest))));
}

}  // namespace lineweir::exchange
