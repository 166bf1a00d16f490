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
  return records;
}

Fields only_record(std::string_view text) {
  const auto records = records_of(text);
  REQUIRE(records.size() == 1);
  CHECK_FALSE(records[0].problem);
  return records[0].fields;
}

CsvProblem problem_of(std::string_view text) {
  const auto records = records_of(text);
  REQUIRE_FALSE(records.empty());
  REQUIRE(records[0].problem);
  return *records[0].problem;
}

TEST_SUITE("callerdata/csv") {
  TEST_CASE("a field with any separator, a quote or a line end is quoted, and no other") {
    CHECK(csv_record({"Ann", "", "a b"}) == "Ann,,a b\r\n");
    CHECK(csv_record({"a,b", "say \"hi\"", "two\r\nlines"}) ==
          "\"a,b\",\"say \"\"hi\"\"\",\"two\r\nlines\"\r\n");
    CHECK(csv_record({"a;=1", "a\tb"}) == "\"a;=1\",\"a\tb\"\r\n");
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

  TEST_CASE("what isn't as the rules have it is told by its field, and reading goes on") {
    CHECK(problem_of("a,\"b") == CsvProblem{2, "a closing quote before the end of the file"});
    CHECK(problem_of("\"a\"b,c") ==
          CsvProblem{1, "a separator or the line's end behind the closing quote"});
    CHECK(problem_of("a,b,c\"d\"") ==
          CsvProblem{3, "quotes around the whole field, as there is one within it"});
    const auto records = records_of("x\"y,1\nsound,2");
    REQUIRE(records.size() == 2);
    CHECK_FALSE(records[1].problem);
    CHECK(records[1].fields == Fields{"sound", "2"});
  }

  TEST_CASE("a quote that is never closed doesn't take in the whole file") {
    CsvReader reader;
    const std::string piece(CsvReader::longest_record / 4, 'x');
    reader.add("a,b\r\nc,\"");
    CHECK(reader.next()->fields == Fields{"a", "b"});
    std::optional<CsvRecord> record;
    for (int i = 0; i < 10 && !record; ++i) {
      reader.add(piece);
      record = reader.next();
    }
    REQUIRE(record);
    CHECK(record->line == 2);
    CHECK(record->problem);
    reader.add(piece);
    CHECK_FALSE(reader.next());
  }

  TEST_CASE("other separators part fields as well, and a comma belongs to the text then") {
    CsvReader reader("a,b;c\td", ';');
    CHECK(reader.next()->fields == Fields{"a,b", "c\td"});
  }

  TEST_CASE("the separator is the one that stands most often in the first line, outside quotes") {
    CHECK(csv_separator("Name,City\r\na;b;c;d") == ',');
    CHECK(csv_separator("Name;City;\"a,b,c,d\"\n") == ';');
    CHECK(csv_separator("\r\nName\tCity\tState\r\n,,,,") == '\t');
    CHECK(csv_separator("Name") == ',');
    CHECK(csv_separator("") == ',');
  }

  TEST_CASE("the pieces in which a text comes make no difference") {
    const std::string text = "a,\"b\r\n\"\"c\"\"\"\r\n\r\nd\"e,f\n\"g\"h\r\ni,j\r";
    const auto expected = records_of(text);
    for (std::size_t size = 1; size < text.size(); ++size) {
      CAPTURE(size);
      CsvReader reader;
      std::vector<CsvRecord> records;
      const auto take = [&] {
        while (auto record = reader.next()) records.push_back(std::move(*record));
      };
      for (std::size_t at = 0; at < text.size(); at += size) {
        reader.add(std::string_view(text).substr(at, size));
        take();
      }
      reader.end();
      take();
      REQUIRE(records.size() == expected.size());
      for (std::size_t i = 0; i < records.size(); ++i) {
        CHECK(records[i].fields == expected[i].fields);
        CHECK(records[i].line == expected[i].line);
        CHECK(records[i].problem == expected[i].problem);
      }
    }
  }

  TEST_CASE("what a spreadsheet would run is guarded by an apostrophe, and comes back without it") {
    CHECK(guarded_cell("=1+1") == "'=1+1");
    CHECK(guarded_cell("+49 30 1234") == "'+49 30 1234");
    CHECK(guarded_cell("-1") == "'-1");
    CHECK(guarded_cell("@SUM(A1)") == "'@SUM(A1)");
    CHECK(guarded_cell("\t=1") == "'\t=1");
    CHECK(guarded_cell("\r=1") == "'\r=1");
    CHECK(guarded_cell("'=1") == "''=1");
    CHECK(guarded_cell("'quoted'") == "'quoted'");
    CHECK(guarded_cell("a=1") == "a=1");
    CHECK(guarded_cell("") == "");
    CHECK(unguarded_cell("'=1") == "=1");
    CHECK(unguarded_cell("'tis") == "'tis");
    CHECK(unguarded_cell("=1") == "=1");
    check_property([](const std::string& text) {
      RC_ASSERT(unguarded_cell(guarded_cell(text)) == text);
      RC_ASSERT(unguarded_cell(guarded_cell("'" + text)) == "'" + text);
      RC_ASSERT(unguarded_cell(guarded_cell("=" + text)) == "=" + text);
    });
  }

  TEST_CASE("a record whose line has ended is there at once, one that may go on is not") {
    CsvReader reader;
    reader.add("a\r\n");
    CHECK(reader.next());
    reader.add("b\r");
    CHECK_FALSE(reader.next());
    reader.end();
    const auto last = reader.next();
    REQUIRE(last);
    CHECK(last->fields == Fields{"b\r"});
  }

  TEST_CASE("each line is counted, whatever ends it") {
    const auto records = records_of("a\n\nb\r\nc\nd");
    REQUIRE(records.size() == 4);
    CHECK(records[0].line == 1);
    CHECK(records[1].line == 3);
    CHECK(records[2].line == 4);
    CHECK(records[3].line == 5);
  }

  TEST_CASE("nothing is read behind a quote that was never closed") {
    CsvReader reader;
    reader.add("a,b\n\"" + std::string(CsvReader::longest_record + 1, 'x'));
    CHECK(reader.next());
    const auto given_up = reader.next();
    REQUIRE(given_up);
    CHECK(given_up->problem);
    reader.add("c,d\n");
    CHECK_FALSE(reader.next());
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
        RC_ASSERT(!record->problem);
        read.push_back(record->fields);
      }
      RC_ASSERT(read == written);
    });
  }

  TEST_CASE("a record may have a million characters, and not one more") {
    CsvReader reader;
    reader.add("\"" + std::string(CsvReader::longest_record - 1, 'x'));
    CHECK_FALSE(reader.next());
    reader.add("x");
    REQUIRE(reader.next());
  }

  TEST_CASE("behind a record without an end nothing more is read") {
    CsvReader reader(',');
    reader.add("a,b\r\n\"");
    REQUIRE(reader.next());
    reader.add(std::string(1'100'000, 'x'));
    const auto broken = reader.next();
    REQUIRE(broken);
    REQUIRE(broken->problem);
    CHECK(broken->line == 2);
    CHECK(broken->problem->field == 1);
    CHECK_FALSE(reader.next());
    reader.add("\"\r\nc,d\r\n");
    CHECK_FALSE(reader.next());
    reader.end();
    CHECK_FALSE(reader.next());
  }

  TEST_CASE("a record that comes in pieces is waited for, also between the parts of its line end") {
    CsvReader reader(',');
    reader.add("a,\"b");
    CHECK_FALSE(reader.next());
    reader.add("\"\"c\"\r");
    CHECK_FALSE(reader.next());
    reader.add("\nd");
    CHECK(reader.next()->fields == Fields{"a", "b\"c"});
    CHECK_FALSE(reader.next());
    reader.end();
    const auto last = reader.next();
    REQUIRE(last);
    CHECK(last->fields == Fields{"d"});
    CHECK(last->line == 2);
  }
}

}  // namespace
}  // namespace lineweir::test
