#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include <iostream>

#include "platform/postgres/postgres_cluster.h"

// Tests on a database; where PostgreSQL isn't installed they can't be made, which ctest takes from
// the status.
int main(int argc, char** argv) {
  constexpr int skipped = 77;
  if (!lineweir::test::PostgresCluster::can_be_made()) {
    std::cout << "skipped: there is no PostgreSQL under /usr/lib/postgresql; install the package "
                 "postgresql\n";
    return skipped;
  }
  return doctest::Context(argc, argv).run();
}
