#include "forms/columns.h"

#include <doctest/doctest.h>

#include <string>

#include "forms/main_form.h"

namespace lineweir::test {
namespace {

TEST_SUITE("forms/columns") {
  TEST_CASE("each column is its array of the rows' labels, under its heading") {
    MainForm form;
    std::string headings;
    for (int column = 0; column < column_count; ++column) {
      const ColumnRule& rule = column_rules[static_cast<std::size_t>(column)];
      CHECK(form.column_labels(column)(0).name() == rule.element);
      headings += std::string(rule.heading) + '|';
    }
    CHECK(headings ==
          "#|Status|Time|Caller Name|Street Address|City|State|ZipCode|PhoneNumber|Station|Gender|"
          "Comments|User|");
    CHECK(&form.column_labels(number_column) == &form.LineNumb);
    CHECK(&form.column_labels(time_column) == &form.LineTime);
    CHECK(&form.column_labels(column_of(CallerField::CallerName)) == &form.LineName);
    CHECK(&form.column_labels(user_column) == &form.LineUser);
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
