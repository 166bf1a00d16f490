#include "lines/caller_record.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <vector>

#include "base/text.h"
#include "support/property_check.h"

namespace lineweir::test {
namespace {

constexpr std::array times = {CallerField::TimeOnHold, CallerField::TimePlacedOnAir,
                              CallerField::TimeOnAir};

CallerRecord full_record() {
  CallerRecord record;
  for (const auto& rule : caller_fields) record.set(rule.field, rule.name);
  return record;
}

bool is_time(CallerField field) {
  return std::find(times.begin(), times.end(), field) != times.end();
}

TEST_SUITE("lines/caller record") {
  TEST_CASE("the fields stand in their order, three of them fixed") {
    std::string names;
    std::size_t fixed_width = 0;
    for (std::size_t i = 0; i < caller_fields.size(); ++i) {
      CHECK(static_cast<std::size_t>(caller_fields[i].field) == i);
      names += std::string(caller_fields[i].name) + ' ';
      fixed_width += caller_fields[i].width;
    }
    CHECK(names ==
          "CallerName StreetAddress City State ZipCode PhoneNumber Station Gender Comments "
          "UserField CallDate TimeOnHold TimePlacedOnAir TimeOnAir ");
    const CallerRecord record;
    CHECK(record[CallerField::Station].size() == 10);
    CHECK(record[CallerField::Gender].size() == 6);
    CHECK(record[CallerField::UserField].size() == 100);
    CHECK(fixed_width == 116);
  }

  TEST_CASE("a new record is empty, its fixed fields blank") {
    const CallerRecord record;
    for (const auto& rule : caller_fields) {
      CHECK(record[rule.field] == std::string(rule.width, ' '));
    }
    CHECK_FALSE(record.holds_data());
  }

  TEST_CASE("a fixed field is cut and padded, another holds any text") {
    CallerRecord record;
    record.set(CallerField::Gender, "Female and more");
    record.set(CallerField::Station, "WXYZ");
    record.set(CallerField::UserField, std::string(150, 'u'));
    record.set(CallerField::Comments, std::string(5000, 'c'));
    CHECK(record[CallerField::Gender] == "Female");
    CHECK(record[CallerField::Station] == "WXYZ      ");
    CHECK(record[CallerField::UserField] == std::string(100, 'u'));
    CHECK(record[CallerField::Comments].size() == 5000);
  }

  TEST_CASE("a field may be set from a part of itself") {
    CallerRecord record;
    record.set(CallerField::Station, "abcdefghij");
    record.set(CallerField::Station, left_part(record[CallerField::Station], 3));
    CHECK(record[CallerField::Station] == "abc       ");
    record.set(CallerField::City, "Springfield");
    record.set(CallerField::City, right_part(record[CallerField::City], 5));
    CHECK(record[CallerField::City] == "field");
  }

  TEST_CASE("each data field makes a record hold data, each time alone doesn't") {
    for (const auto& rule : caller_fields) {
      CallerRecord record;
      record.set(rule.field, "x");
      CAPTURE(rule.name);
      CHECK(record.holds_data() == !is_time(rule.field));
    }
  }

  TEST_CASE("only a first character above code 31, behind blanks, is data") {
    CallerRecord record;
    for (const auto* none : {"", "   ", "\t", "  \x1Fx", "\x01 Ann", "\r\n"}) {
      record.set(CallerField::CallerName, none);
      CHECK_FALSE(record.holds_data());
    }
    for (const auto* some : {"   x", "!", "\xE4", "\xFF", "x\x01"}) {
      record.set(CallerField::CallerName, some);
      CHECK(record.holds_data());
    }
  }

  TEST_CASE("a field without data doesn't hide one with data") {
    CallerRecord record;
    record.set(CallerField::CallerName, "\t");
    record.set(CallerField::UserField, "x");
    CHECK(record.holds_data());
  }

  TEST_CASE("clearing empties all fields, the data fields, or the times") {
    CallerRecord all = full_record();
    all.clear();
    CHECK(all == CallerRecord());

    CallerRecord data = full_record();
    data.clear_data_fields();
    CallerRecord times_only = full_record();
    times_only.clear_times();
    const CallerRecord full = full_record();
    const CallerRecord empty;
    for (const auto& rule : caller_fields) {
      CAPTURE(rule.name);
      const bool time = is_time(rule.field);
      CHECK(data[rule.field] == (time ? full : empty)[rule.field]);
      CHECK(times_only[rule.field] == (time ? empty : full)[rule.field]);
    }
    CHECK_FALSE(data.holds_data());
  }

  TEST_CASE("any texts keep the widths, and data is what the rule says") {
    check_property([](const std::vector<std::string>& texts) {
      CallerRecord record;
      bool expected = false;
      for (std::size_t i = 0; i < std::min(texts.size(), caller_fields.size()); ++i) {
        const auto& rule = caller_fields[i];
        record.set(rule.field, texts[i]);
        RC_ASSERT(rule.width == 0 || record[rule.field].size() == rule.width);
        const auto content = trimmed(record[rule.field]);
        if (i < data_field_count && !content.empty() && code_of(content[0]) > 31) expected = true;
      }
      RC_ASSERT(record.holds_data() == expected);
    });
  }
}

}  // namespace
}  // namespace lineweir::test
