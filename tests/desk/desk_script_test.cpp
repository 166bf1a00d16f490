#include "desk/desk_script.h"

#include <doctest/doctest.h>
#include <rapidcheck.h>

#include "desk/line_input.h"
#include "support/property_check.h"

namespace lineweir::desk {
namespace {

constexpr Layout ten = Layout::TenLines;

TEST_SUITE("desk/script") {
  TEST_CASE("actions in the order of their times") {
    std::string error;
    const auto script = parse_desk_script("# a show\n\n2 press\r\n", "keys", ten, error);
    CHECK_FALSE(script);
    CHECK(error == "keys:3: there is no key \"press\"");
    const auto good =
        parse_desk_script("# a show\n\n2.5  main   3\r\n0 show\n1 quit", "keys", ten, error);
    REQUIRE(good);
    REQUIRE(good->size() == 3);
    CHECK(good->at(0).action == DeskAction{DeskAction::Kind::Show, ""});
    CHECK(good->at(1).action == DeskAction{DeskAction::Kind::Quit, ""});
    CHECK(good->at(2).at == exchange::Moment(2500));
    CHECK(good->at(2).action == DeskAction{DeskAction::Kind::Press, "main 3"});
  }

  TEST_CASE("what isn't understood is told with its place") {
    std::string error;
    CHECK_FALSE(parse_desk_script("x next\n", "keys", ten, error));
    CHECK(error == "keys:1: \"x\" is not a time in seconds");
    CHECK_FALSE(parse_desk_script("1\n", "keys", ten, error));
    CHECK(error == "keys:1: there is no key \"\"");
    CHECK_FALSE(read_desk_script("/nowhere/keys", ten, error));
    CHECK(error == "/nowhere/keys: can't be read");
  }

  TEST_CASE("any text is either actions or one error") {
    test::check_property([](const std::string& text) {
      std::string error;
      const auto script = parse_desk_script(text, "keys", Layout::TwentyLines, error);
      RC_ASSERT(script.has_value() == error.empty());
    });
  }

  TEST_CASE("typing is cut into lines, and a line without end is cut off") {
    LineInput input;
    CHECK(input.receive("ne").empty());
    CHECK(input.receive("xt\nmain 1\nd") == std::vector<std::string>{"next", "main 1"});
    CHECK(input.receive(std::string(100000, 'x')).empty());
    const auto lines = input.receive("\nquit\n");
    REQUIRE(lines.size() == 2);
    CHECK(lines[0].size() == LineInput::longest_line);
    CHECK(lines[1] == "quit");
  }
}

}  // namespace
}  // namespace lineweir::desk
