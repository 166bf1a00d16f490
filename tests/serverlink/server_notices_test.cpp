#include "serverlink/server_notices.h"

#include <doctest/doctest.h>

namespace lineweir {
namespace {

TEST_CASE("the console leaves a server five seconds ahead, and at most a minute after its notice") {
  CHECK(shutdown_interval(0) == 5000);
  CHECK(shutdown_interval(5) == 5000);
  CHECK(shutdown_interval(6) == 1000);
  CHECK(shutdown_interval(60) == 55000);
  CHECK(shutdown_interval(61) == 60000);
  CHECK(shutdown_interval(255) == 60000);
}

}  // namespace
}  // namespace lineweir
