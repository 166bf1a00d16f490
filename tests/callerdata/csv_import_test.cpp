#include "callerdata/csv_import.h"

#include <doctest/doctest.h>

#include "callerdata/call_log.h"
#include "letters/code_page_letters.h"
#include "support/failure_number.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

const std::vector<platform::DatabaseColumn> log_columns = new_log_columns("Sponsor");

Texts all_names() {
  Texts names;
  for (const auto& column : log_columns) names.push_back(column.name);
  return names;
}

ImportColumns matched(const Texts& names) { return match_columns(names, log_columns); }

std::string utf8_of(std::string_view file_content) {
  return csv_text(file_content, CodePageLetters());
}

CsvRecord record(Texts fields) { return {std::move(fields), 2, {}}; }

TEST_SUITE("callerdata/csv import") {
  TEST_CASE("the text may be UTF-8 with or without mark, or Windows-1252") {
    CHECK(utf8_of("Jos\xC3\xA9") == "Jos\xC3\xA9");
    CHECK(utf8_of("\xEF\xBB\xBFJos\xC3\xA9") == "Jos\xC3\xA9");
    CHECK(utf8_of("Jos\xE9 \x80") == "Jos\xC3\xA9 \xE2\x82\xAC");
    CHECK(utf8_of("cut \xC3") == "cut \xC3\x83");
    CHECK(utf8_of("\xF0\x9F\x93\x9E") == "\xF0\x9F\x93\x9E");
  }

  TEST_CASE("an empty file and one of UTF-16 are failures") {
    CHECK(failure_number_of([] { utf8_of(""); }) == 5);
    CHECK(failure_number_of([] { utf8_of("\xEF\xBB\xBF"); }) == 5);
    CHECK(failure_number_of([] {
            utf8_of(
                std::string("\xFF\xFE"
                            "A\0",
                            4));
          }) == 5);
  }

  TEST_CASE("columns are matched by name, in any order and case") {
    CHECK(matched(all_names()).positions ==
          std::vector<std::size_t>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13});
    CHECK(matched(all_names()).remarks.empty());
    CHECK(matched({"city", " CALLER NAME "}).positions == std::vector<std::size_t>{2, 0});
    CHECK(matched({"city", "Caller Name"}).remarks ==
          Texts{"What the file doesn't have stays empty: \"Street Address\", \"State\", "
                "\"ZipCode\", \"PhoneNumber\", \"Comments\", \"Station\", \"Gender\", "
                "\"Date\", \"Time_On_Hold\", \"Time_Placed_On_Air\", \"Time_On_Air\", "
                "\"Sponsor\"."});
  }

  TEST_CASE("a single name that the log doesn't have is that of the user's field") {
    auto names = all_names();
    names[13] = "Hobby";
    const auto columns = matched(names);
    CHECK(columns.problems.empty());
    CHECK(columns.positions[13] == 13);
    CHECK(columns.remarks == Texts{"The column \"Hobby\" goes into \"Sponsor\"."});
  }

  TEST_CASE("other names that the log doesn't have, and doubled ones, are problems") {
    CHECK(matched({"ID", "Caller Name", "Hobby"}).problems ==
          Texts{"The log has no column \"ID\".", "The log has no column \"Hobby\"."});
    CHECK(matched({"Ann Smith;Salem"}).problems.size() == 1);
    CHECK(matched({"City", "City"}).problems == Texts{"There are two columns \"City\"."});
    auto with_id = all_names();
    with_id.insert(with_id.begin(), "ID");
    CHECK(matched(with_id).problems == Texts{"The log has no column \"ID\"."});
  }

  TEST_CASE("a record's fields go to their columns, and the others are empty") {
    const auto columns = matched({"City", "Caller Name"});
    const auto values = row_values(record({"Salem", "Ann"}), columns, log_columns.size());
    REQUIRE(values);
    CHECK(values->size() == 14);
    CHECK((*values)[0] == "Ann");
    CHECK((*values)[2] == "Salem");
    CHECK((*values)[13] == "");
  }

  TEST_CASE("a record with another number of fields doesn't fit") {
    const auto columns = matched({"City", "Caller Name"});
    CHECK_FALSE(row_values(record({"Salem"}), columns, 14));
    CHECK(record_problem(record({"Salem"}), columns) == "It has 1 field and not 2.");
    CHECK(record_problem(record({"a", "b", "c"}), columns) == "It has 3 fields and not 2.");
    CHECK(record_problem({{"a", "b"}, 2, "Broken."}, columns) == "Broken.");
    CHECK(record_problem(record({"a", "b"}), columns) == "");
  }

  TEST_CASE("a value that will be cut is told, in characters") {
    Texts values(14);
    values[3] = "0123456789abcde";
    CHECK(cut_values(values, log_columns).empty());
    values[3] = "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9";
    CHECK(cut_values(values, log_columns).empty());
    values[3] = "0123456789abcdef";
    CHECK(cut_values(values, log_columns) ==
          Texts{"\"State\" is longer than 15 characters and will be cut."});
    CHECK(values[3] == "0123456789abcde");
    values[3] = "0123456789abcd\xC3\xA9\xC3\xA9";
    CHECK(cut_values(values, log_columns).size() == 1);
    CHECK(values[3] == "0123456789abcd\xC3\xA9");
  }
}

}  // namespace
}  // namespace lineweir::test
