#include "adminlink/admin_request.h"

#include <doctest/doctest.h>
#include <rapidcheck.h>

#include <algorithm>

#include "adminlink/admin_columns.h"

using namespace lineweir::admin;

namespace {

std::string refusal(std::string_view line) {
  const auto read = read_request(line);
  return std::holds_alternative<std::string>(read) ? std::get<std::string>(read) : "";
}

Value any_value(const FieldRow& row) {
  const auto text = rc::gen::element<std::string>("", "a", "Zoë \"1\"\n\t", "\xE2\x82\xAC{[");
  const auto number = rc::gen::inRange<std::int64_t>(row.least, row.most + 1);
  switch (row.kind) {
    case FieldKind::Text:
      return *text;
    case FieldKind::Number:
      return *number;
    case FieldKind::Texts:
      return *rc::gen::container<std::vector<std::string>>(text);
    case FieldKind::Numbers:
      break;
  }
  return *rc::gen::container<std::vector<std::int64_t>>(number);
}

}  // namespace

TEST_CASE("The tables of commands and fields are in the order of their names in code") {
  for (std::size_t i = 0; i < commands.size(); ++i) {
    CHECK(static_cast<std::size_t>(commands[i].command) == i);
    CHECK(commands[i].needed <= commands[i].count);
    CHECK(commands[i].count <= commands[i].fields.size());
  }
  for (std::size_t i = 0; i < fields.size(); ++i) {
    CHECK(static_cast<std::size_t>(fields[i].field) == i);
  }
}

TEST_CASE("Every request is read as it was written") {
  CHECK(rc::check([] {
    const CommandRow& row = *rc::gen::elementOf(commands);
    Request request{.command = row.command};
    const auto known = fields_of(row);
    for (std::size_t i = 0; i < known.size(); ++i) {
      if (i < row.needed || *rc::gen::arbitrary<bool>()) {
        request.values.emplace(known[i], any_value(row_of(known[i])));
      }
    }
    const std::string line = line_of(request);
    RC_ASSERT(line.find('\n') == std::string::npos);
    RC_ASSERT(std::get<Request>(read_request(line)) == request);
  }));
}

TEST_CASE("What a request doesn't say has the value that is asked for instead") {
  const Request request{.command = Command::Calls};
  CHECK(request.number_or(Field::Group, 0) == 0);
  CHECK(request.text_or(Field::Text, "none") == "none");
  CHECK(request.texts(Field::Changes).empty());
  CHECK(request.numbers(Field::Groups).empty());
}

TEST_CASE("What is no request is refused with the reason") {
  CHECK(refusal("") == "The request is no JSON.");
  CHECK(refusal("{") == "The request is no JSON.");
  CHECK(refusal("{\"command\": \"seats\"} x") == "The request is no JSON.");
  CHECK(refusal("{\"command\": \"user lock\", \"name\": \"\xFF\"}") == "The request is no JSON.");
  CHECK(refusal("[1]") == "The request is no object.");
  CHECK(refusal("{}") == "The request has no command.");
  CHECK(refusal(R"({"command": 7})") == "The request has no command.");
  CHECK(refusal(R"({"command": "dance"})") == "There is no such command.");
  CHECK(refusal(R"({"command": "lines"})") == "The field \"group\" is missing.");
  CHECK(refusal(R"({"command": "lines", "group": 1, "line": 2})") ==
        "The request has a field that its command doesn't know.");
  CHECK(refusal(R"({"command": "user lock", "name": 7})") == "The field \"name\" isn't a text.");
  CHECK(refusal(R"({"command": "user lock", "name": "a\u0000b"})") ==
        "The field \"name\" holds a byte 0.");
  CHECK(refusal(R"({"command": "user right", "name": "a", "group": 1, "changes": "+Dial"})") ==
        "The field \"changes\" isn't an array.");
  CHECK(refusal(R"({"command": "user right", "name": "a", "group": 1, "changes": [1]})") ==
        "The field \"changes\" isn't a text.");
}

TEST_CASE("A number outside of its bounds is refused, however it is written") {
  const std::string reason = "The field \"group\" isn't a number from 1 to 250.";
  for (const char* number :
       {"0", "251", "-1", "1.0", "1e2", "\"1\"", "null", "true", "[1]", "18446744073709551615",
        "-9223372036854775808", "4294967297", "99999999999999999999999"}) {
    CAPTURE(number);
    CHECK(refusal(R"({"command": "lines", "group": )" + std::string(number) + "}") == reason);
  }
}

TEST_CASE("A request that is too long or nested too deep is refused") {
  const std::string deep(100'000, '[');
  CHECK(refusal(deep) == "The request is too long.");
  CHECK(refusal(std::string(1000, '[')) == "The request is nested too deep.");
  CHECK(refusal(R"({"command": [[[[[]]]]]})") == "The request is nested too deep.");
}

TEST_CASE("The fields of a caller's data are columns of a call, ten from the name on") {
  const auto columns = columns_of(Command::Calls);
  REQUIRE(columns.size() == first_told_column + 10);
  CHECK(columns[first_told_column].key == "name");
  CHECK(columns.back().key == "user_field");
}
