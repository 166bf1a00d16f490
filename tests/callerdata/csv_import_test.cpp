#include "callerdata/csv_import.h"

#include <doctest/doctest.h>

#include "callerdata/call_log.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;
using Problems = std::vector<CsvProblem>;

const std::vector<platform::DatabaseColumn> log_columns = new_log_columns("Sponsor");

Texts all_names() {
  Texts names;
  for (const auto& column : log_columns) names.push_back(column.name);
  return names;
}

ImportColumns matched(const Texts& names) { return match_columns(names, log_columns); }

CsvRecord record(Texts fields) { return {std::move(fields), 2, {}}; }

TEST_SUITE("callerdata/csv import") {
  TEST_CASE("columns are matched by name, in any order and case") {
    CHECK(matched(all_names()).positions ==
          std::vector<std::size_t>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13});
    CHECK(matched(all_names()).remarks.empty());
    CHECK(matched({"city", " CALLER NAME "}).positions == std::vector<std::size_t>{2, 0});
    CHECK(matched({"city"}).remarks.at(0).find("\"Caller Name\"") != std::string::npos);
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
    const std::string known = "the name of one of the log's columns";
    CHECK(matched({"ID", "Caller Name", "Hobby"}).problems == Problems{{1, known}, {3, known}});
    CHECK(matched({"Ann Smith"}).problems.size() == 1);
    CHECK(matched({"City", "City"}).problems == Problems{{2, "each column once"}});
    auto with_id = all_names();
    with_id.insert(with_id.begin(), "ID");
    CHECK(matched(with_id).problems == Problems{{1, known}});
  }

  TEST_CASE("a record's fields go to their columns, and the others are empty") {
    const auto columns = matched({"City", "Caller Name"});
    const auto values = row_values(record({"Salem", "Ann"}), columns, log_columns.size());
    CHECK(values.size() == 14);
    CHECK(values[0] == "Ann");
    CHECK(values[2] == "Salem");
    CHECK(values[13] == "");
  }

  TEST_CASE("a text is as it was before it was guarded, and as it could have been typed") {
    const auto columns = matched({"City", "Caller Name"});
    const auto values = row_values(record({"'=1+1", "Ann\r\nSmith\x07"}), columns, 14);
    CHECK(values[2] == "=1+1");
    CHECK(values[0] == "Ann Smith");
    CHECK(matched({"'=Sponsor", "City"}).problems.empty());
  }

  TEST_CASE("control characters are left out, and a blank stands for line ends and tabs") {
    CHECK(typed_text("a\tb\r\n\r\nc") == "a b c");
    CHECK(typed_text(std::string("a\0b\x1b[1m\x7f", 8)) == "ab[1m");
    CHECK(typed_text("a\u0085b\u2028c\u0090d") == "a b cd");
    CHECK(typed_text("Łódź “x” Â €") == "Łódź “x” Â €");
    CHECK(typed_text(" \xFF ") == " \xFF ");
  }

  TEST_CASE("a record with another number of fields doesn't fit") {
    const auto columns = matched({"City", "Caller Name"});
    CHECK(record_problem(record({"Salem"}), columns) ==
          CsvProblem{2, "2 fields as in the first line, and not 1"});
    CHECK(record_problem(record({"a", "b", "c"}), columns) ==
          CsvProblem{3, "2 fields as in the first line, and not 3"});
    CHECK(record_problem({{"a", "b"}, 2, CsvProblem{1, "better"}}, columns) ==
          CsvProblem{1, "better"});
    CHECK_FALSE(record_problem(record({"a", "b"}), columns));
    CHECK(record_problem(record({"a", "b"}), matched({"City"})) ==
          CsvProblem{2, "1 field as in the first line, and not 2"});
  }

  TEST_CASE("a problem is told by line, column and what was expected") {
    const auto columns = matched({"City", "Caller Name"});
    CHECK(problem_sentence(1234, {2, "more"}, columns) ==
          "Line 1,234, column 2 \"Caller Name\": expected more.");
    CHECK(problem_sentence(7, {3, "less"}, columns) == "Line 7, column 3: expected less.");
  }

  TEST_CASE("a line of blanks and separators holds no call, and one may name the separator") {
    CHECK(is_blank(record({"", " ", "\t"})));
    CHECK_FALSE(is_blank(record({"", "a"})));
    CHECK_FALSE(is_blank({{""}, 2, CsvProblem{1, "x"}}));
    CHECK(names_separator(record({"sep=", ""})));
    CHECK(names_separator(record({"SEP=;"})));
    CHECK_FALSE(names_separator(record({"Caller Name", "sep="})));
    CHECK_FALSE(names_separator(record({"Caller Name"})));
    CHECK_FALSE(names_separator(record({"sep=", "", ""})));
    CHECK_FALSE(names_separator({{"sep="}, 1, CsvProblem{1, "x"}}));
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
    Texts others = {"ab", "any length", "c"};
    CHECK(cut_values(others, {{"Letter", 1}, {"Text", 0}, {"Other letter", 1}}).size() == 1);
    CHECK(others == Texts{"a", "any length", "c"});
  }

  TEST_CASE("texts are cleaned as if they were typed, of any control character of Unicode") {
    CHECK(typed_text("Ann Lee") == "Ann Lee");
    CHECK(typed_text("Ann\r\n\t Lee") == "Ann  Lee");
    CHECK(typed_text("\nAnn\n") == " Ann ");
    CHECK(typed_text("Ann\vLee\f") == "Ann Lee ");
    CHECK(typed_text("Ann\x07Lee") == "AnnLee");
    CHECK(typed_text("Ann\x1FLee") == "AnnLee");
    CHECK(typed_text("Ann\x7FLee") == "AnnLee");
    CHECK(typed_text("Ann\u0085Lee") == "Ann Lee");
    CHECK(typed_text("Ann\u0080\u009FLee") == "AnnLee");
    CHECK(typed_text("Ann\u00A0Lee") == "Ann\u00A0Lee");
    CHECK(typed_text("Ann\u2028Lee\u2029") == "Ann Lee ");
    CHECK(typed_text("20 \u20AC") == "20 \u20AC");
    CHECK(typed_text("\n") == " ");
    CHECK(typed_text("\x7F") == "");
    // What is no UTF-8 stays, byte for byte.
    CHECK(typed_text("\xFF\x07z") == "\xFFz");
    CHECK(typed_text("a\x07\xFF\xFE z") == "a\xFF\xFE z");
  }

  TEST_CASE("a problem behind the last column is told without a name") {
    ImportColumns columns;
    columns.names = {"Name", "City"};
    CHECK(problem_sentence(2, {1, "x"}, columns) == "Line 2, column 1 \"Name\": expected x.");
    CHECK(problem_sentence(2, {2, "x"}, columns) == "Line 2, column 2 \"City\": expected x.");
    CHECK(problem_sentence(2, {3, "x"}, columns) == "Line 2, column 3: expected x.");
    CHECK(problem_sentence(2, {0, "x"}, columns) == "Line 2, column 0: expected x.");
  }
}

}  // namespace
}  // namespace lineweir::test
