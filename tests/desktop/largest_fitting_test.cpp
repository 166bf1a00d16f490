#include "desktop/largest_fitting.h"

#include <doctest/doctest.h>

namespace lineweir {
namespace {

TEST_SUITE("largest fitting") {
  TEST_CASE("it is what a search from above would find") {
    for (int least = 0; least < 4; ++least) {
      for (int most = least; most < 40; ++most) {
        for (int largest = -1; largest < 42; ++largest) {
          int wanted = most;
          while (wanted > least && wanted > largest) --wanted;
          CAPTURE(least);
          CAPTURE(most);
          CAPTURE(largest);
          CHECK(largest_fitting(least, most, [&](int size) { return size <= largest; }) == wanted);
        }
      }
    }
  }

  TEST_CASE("what fits at once is asked for once, anything else as often as it can be halved") {
    for (const int largest : {0, 1, 17, 1000, 32766, 32767}) {
      int asked = 0;
      largest_fitting(1, 32767, [&](int size) {
        ++asked;
        return size <= largest;
      });
      CHECK(asked <= (largest == 32767 ? 1 : 16));
    }
  }

  TEST_CASE("without a choice nothing is smaller than the least") {
    CHECK(largest_fitting(3, 1, [](int) { return true; }) == 3);
    CHECK(largest_fitting(3, 3, [](int) { return false; }) == 3);
  }
}

}  // namespace
}  // namespace lineweir
