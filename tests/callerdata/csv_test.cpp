#include "callerdata/csv.h"

#include <doctest/doctest.h>

#include "support/property_check.h"

namespace lineweir::test {
namespace {

using Fields = std::vector<std::string>;

std::vector<CsvRecord> records_of(std::string_view text) {
  std::vector<CsvRecord> records;
  CsvReader reader(text);
  while (auto record = reader.next()) records.push_back(std::move(*record));
  CHECK(reader.position() == text.size());
  return records;
}

Fields only_record(std::string_view text) {
  const auto records = records_of(text);
  REQUIRE(records.size() == 1);
  CHECK(records[0].problem == "");
  return records[0].fields;
}

std::string problem_of(std::string_view text) {
  const auto records = records_of(text);
  REQUIRE_FALSE(records.empty());
  return records[0].problem;
}

TEST_SUITE("callerdata/csv") {
  TEST_CASE("a field with a comma, a quote or a line end is quoted, and no other") {
    CHECK(csv_record({"Ann", "", "a b"}) == "Ann,,a b\r\n");
    CHECK(csv_record({"a,b", "say \"hi\"", "two\r\nlines"}) ==
          "\"a,b\",\"say \"\"hi\"\"\",\"two\r\nlines\"\r\n");
    CHECK(csv_record({""}) == "\"\"\r\n");
  }

  TEST_CASE("fields are parted by commas, records by either line end") {
    const auto records = records_of("a,b\r\nc,d\ne,f");
    REQUIRE(records.size() == 3);
    CHECK(records[0].fields == Fields{"a", "b"});
    CHECK(records[1].fields == Fields{"c", "d"});
    CHECK(records[2].fields == Fields{"e", "f"});
  }

  TEST_CASE("blanks belong to their field, and an empty one counts") {
    CHECK(only_record(" a , b,,") == Fields{" a ", " b", "", ""});
    CHECK(only_record(",") == Fields{"", ""});
  }

  TEST_CASE("a quoted field holds commas, line ends and doubled quotes") {
    CHECK(only_record("\"a,b\",\"x\"\"y\",\"\"") == Fields{"a,b", "x\"y", ""});
    CHECK(only_record("\"two\r\nlines\"\r\n") == Fields{"two\r\nlines"});
  }

  TEST_CASE("a record tells the line on which it begins, whatever stands in quotes before") {
    const auto records = records_of("a\r\n\r\n\"b\nb\nb\"\r\nc");
    REQUIRE(records.size() == 3);
    CHECK(records[0].line == 1);
    CHECK(records[1].line == 3);
    CHECK(records[2].line == 6);
  }

  TEST_CASE("a carriage return alone is no line end") {
    CHECK(only_record("a\rb,c") == Fields{"a\rb", "c"});
  }

  TEST_CASE("what isn't as the rules have it is told in a sentence, and reading goes on") {
    CHECK(problem_of("a,\"b") == "A quote is opened and not closed.");
    CHECK(problem_of("\"a\"b,c") == "There are characters behind a closing quote.");
    CHECK(problem_of("a\"b\",c") == "A quote stands within a field that isn't quoted.");
    const auto records = records_of("x\"y,1\nsound,2");
    REQUIRE(records.size() == 2);
    CHECK(records[1].problem == "");
    CHECK(records[1].fields == Fields{"sound", "2"});
  }

  TEST_CASE("a text without characters has no records") {
    CHECK(records_of("").empty());
    CHECK(records_of("\r\n\n\r\n").empty());
  }

  TEST_CASE("what is written is read again") {
    check_property([](const std::vector<std::vector<std::string>>& table) {
      std::string text;
      std::vector<Fields> written;
      for (const Fields& fields : table) {
        if (fields.empty()) continue;
        text += csv_record(fields);
        written.push_back(fields);
      }
      std::vector<Fields> read;
      CsvReader reader(text);
      while (const auto record = reader.next()) {
        RC_ASSERT(record->problem.empty());
        read.push_back(record->fields);
      }
      RC_ASSERT(read == written);
    });
  }
}

}  // namespace
}  // namespace lineweir::test
