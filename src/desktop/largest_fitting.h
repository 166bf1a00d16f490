#pragma once

namespace lineweir {

// The largest whole number from `least` to `most` that fits, where none above one that doesn't fit
// fits either; `least` where none does. Asks no more often than `most - least` can be halved.
template <class Fits>
int largest_fitting(int least, int most, const Fits& fits) {
  if (most <= least || fits(most)) return most < least ? least : most;
  // What is too large, and the largest that is known to do.
  while (most - least > 1) {
    const int middle = least + (most - least) / 2;
    (fits(middle) ? least : most) = middle;
  }
  return least;
}

}  // namespace lineweir
