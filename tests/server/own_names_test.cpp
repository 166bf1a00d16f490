#include "server/own_names.h"

#include <doctest/doctest.h>

namespace lineweir::server {
namespace {

TEST_CASE("a name is a console's own without the blanks around it") {
  OwnNames names;
  names.add(" Anna ");
  CHECK(names.contains("Anna"));
  CHECK(names.contains("  Anna"));
  CHECK_FALSE(names.contains("anna"));
  CHECK_FALSE(names.contains(""));
  names.clear();
  CHECK_FALSE(names.contains("Anna"));
}

TEST_CASE("the last names are remembered, and one that is used again among them") {
  OwnNames names;
  for (int i = 0; i < 8; ++i) names.add("name " + std::to_string(i));
  names.add("name 0");
  names.add("another");
  CHECK(names.contains("name 0"));
  CHECK_FALSE(names.contains("name 1"));
  for (int i = 2; i < 8; ++i) CHECK(names.contains("name " + std::to_string(i)));
}

}  // namespace
}  // namespace lineweir::server
