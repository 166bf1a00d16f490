#include "forms/columns.h"

#include <doctest/doctest.h>

#include <string>

namespace lineweir::test {
namespace {

TEST_SUITE("screen/columns") {
  TEST_CASE("the columns stand in their order with their headings") {
    constexpr std::array<std::string_view, 13> elements = {
        "LineNumb", "LineStatus",   "LineTime",    "LineName",        "LineStreetAdd",
        "LineCity", "LineState",    "LineZipCode", "LinePhoneNumber", "LineStation",
        "LineBand", "LineComments", "LineUser"};
    constexpr std::array<std::string_view, 13> headings = {
        "#",       "Status",      "Time",    "Caller Name", "Street Address", "City", "State",
        "ZipCode", "PhoneNumber", "Station", "Gender",      "Comments",       "User"};
    for (std::size_t i = 0; i < column_rules.size(); ++i) {
      CHECK(column_rules[i].element == elements[i]);
      CHECK(column_rules[i].heading == headings[i]);
    }
  }

  TEST_CASE("columns not shown at first have a width for when they are") {
    struct Row {
      std::size_t column;
      int width;
    };
    for (const Row& row : {Row{4, 1700}, Row{6, 600}, Row{7, 800}, Row{8, 1300}, Row{9, 900},
                           Row{10, 700}, Row{12, 1200}}) {
      CAPTURE(row.column);
      CHECK(column_rules[row.column].width == row.width);
      CHECK_FALSE(column_rules[row.column].shown_at_first);
    }
    CHECK(column_rules[status_column].width == 800);
  }

  TEST_CASE("the columns shown at first fit on the strip") {
    int width = 60;
    for (const ColumnRule& column : column_rules) width += column.shown_at_first ? column.width : 0;
    CHECK(width <= 7590);
  }
}

}  // namespace
}  // namespace lineweir::test
