#include "callerdata/sliced_sort.h"

#include <doctest/doctest.h>

#include "support/property_check.h"

namespace lineweir::test {
namespace {

TEST_SUITE("callerdata/sliced sort") {
  TEST_CASE("any items come into order, whatever the size of a slice") {
    check_property([](std::vector<int> items) {
      const auto budget = static_cast<std::size_t>(*rc::gen::inRange(1, 5000));
      // Enough for several runs.
      const std::size_t few = items.size();
      for (int copy = 1; few > 0 && copy < 40; ++copy) {
        for (std::size_t i = 0; i < few; ++i) items.push_back(items[i] ^ copy);
      }
      SlicedSort<int> sort;
      sort.start(items);
      int slices = 1;
      while (!sort.work(budget, std::less<int>())) ++slices;
      std::sort(items.begin(), items.end());
      RC_ASSERT(sort.items() == items);
      RC_ASSERT(items.size() < budget || slices > 1);
    });
  }

  TEST_CASE("nothing is in order at once") {
    SlicedSort<int> sort;
    sort.start({});
    CHECK(sort.work(1, std::less<int>()));
    CHECK(sort.items().empty());
  }
}

}  // namespace
}  // namespace lineweir::test
