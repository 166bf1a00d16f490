#include "admin/table.h"

#include <doctest/doctest.h>

using namespace lineweir::admin;

TEST_CASE("Columns are as wide as their widest cell, counted in characters") {
  CHECK(table({"User", "Group"}, {{"Zoë", "1"}, {"Bartholomäus", "12"}, {"", "3"}}) ==
        "User          Group\n"
        "Zoë           1\n"
        "Bartholomäus  12\n"
        "              3\n");
  CHECK(table({"User"}, {}) == "User\n");
}

TEST_CASE("What a terminal would obey is shown as a question mark") {
  CHECK(shown_text("a\x1B[2Jb\r\n\t\x7F") == "a?[2Jb????");
  CHECK(shown_text("\xC2\x9B"
                   "31m") == "?31m");
  // What turns the direction of the letters behind it.
  CHECK(shown_text("x\xE2\x80\xAEy") == "x?y");
  CHECK(shown_text("\xFFZo\xC3") == "?Zo?");
  CHECK(shown_text("Zoë €") == "Zoë €");
}

TEST_CASE("A record of comma-separated values holds any cell") {
  CHECK(csv_record({"a", "", "b"}) == "a,,b\r\n");
  CHECK(csv_record({"", "x"}) == ",x\r\n");
  CHECK(csv_record({"a,b", "say \"x\"", "two\nlines", "r\r", " blank "}) ==
        "\"a,b\",\"say \"\"x\"\"\",\"two\nlines\",\"r\r\", blank \r\n");
}
