#include "wire/rights_layout.h"

#include <fstream>
#include <set>
#include <sstream>

#include "support/property_check.h"
#include "wire/sent_frame.h"

namespace lineweir::test {
namespace {

// What stands in a row of the table "Rights" of docs/protocol.md in place of some names.
std::string documented_name(const RightPlace& place) {
  switch (place.right) {
    case Right::ForcePassiveOff:
      return "passive mode is forced off";
    case Right::ForcePassiveOn:
      return "passive mode is forced on";
    case Right::CallerDataAllowed:
      return "caller data may be entered";
    case Right::MessagesAllowed:
      return "messages may be sent";
    case Right::CallerFlagAllowed:
      return "callers may be flagged";
    default:
      return "`" + std::string(place.name) + "`";
  }
}

std::vector<std::string> cells_of(const std::string& row) {
  std::vector<std::string> cells;
  std::istringstream text(row.substr(1));
  for (std::string cell; std::getline(text, cell, '|');) {
    const auto first = cell.find_first_not_of(' ');
    const auto last = cell.find_last_not_of(' ');
    cells.push_back(first == std::string::npos ? "" : cell.substr(first, last - first + 1));
  }
  return cells;
}

// The table's cells by character and bit.
std::map<std::pair<std::size_t, int>, std::string> documented_rights() {
  std::ifstream text(LINEWEIR_PROTOCOL_TEXT);
  std::map<std::pair<std::size_t, int>, std::string> found;
  std::string line;
  while (std::getline(text, line) && line != "| | 1 | 2 | 3 | 4 | 5 | 6 | 7 | 8 |") {
  }
  std::getline(text, line);
  while (std::getline(text, line) && line.starts_with("| ")) {
    const auto cells = cells_of(line);
    for (int bit = 1; bit <= 8; ++bit) {
      const std::string& cell = cells.at(static_cast<std::size_t>(bit));
      if (!cell.empty()) found[{std::stoul(cells[0]), bit}] = cell;
    }
  }
  return found;
}

TEST_SUITE("wire/rights_layout") {
  TEST_CASE("the layout is the documented one") {
    std::map<std::pair<std::size_t, int>, std::string> held;
    for (const RightPlace& place : rights_layout) {
      held[{place.character, place.bit}] = documented_name(place);
    }
    CHECK(held.size() == rights_layout.size());
    CHECK(held == documented_rights());
  }

  TEST_CASE("rights stand in the order of their places, each with a name of its own") {
    std::set<std::string_view> names;
    for (std::size_t i = 0; i < rights_layout.size(); ++i) {
      CHECK(static_cast<std::size_t>(rights_layout[i].right) == i);
      CHECK(names.insert(rights_layout[i].name).second);
      CHECK(rights_layout[i].character <= rights_length);
    }
  }

  TEST_CASE("a right is found by its name in any case") {
    for (const RightPlace& place : rights_layout) CHECK(find_right(place.name) == place.right);
    CHECK(find_right("exitmenu") == Right::ExitMenu);
    CHECK(find_right("EXITMENU") == Right::ExitMenu);
    for (const char* name : {"", "Exit", "ExitMenus", " ExitMenu"}) CHECK_FALSE(find_right(name));
  }

  TEST_CASE("a flag allows its own right alone") {
    for (const RightPlace& place : rights_layout) {
      const std::string rights = with_right({}, place.right, true);
      CHECK(rights.size() == rights_length);
      for (const RightPlace& other : rights_layout) {
        CHECK(allows(rights, other.right) == (other.right == place.right));
      }
      CHECK(with_right(rights, place.right, false) == with_right({}, place.right, false));
    }
  }

  TEST_CASE("rights that end before a right's place don't allow it") {
    const std::string all(rights_length, '\xFF');
    for (const RightPlace& place : rights_layout) {
      CHECK(allows(all, place.right));
      CHECK(allows(all.substr(0, place.character), place.right));
      CHECK_FALSE(allows(all.substr(0, place.character - 1), place.right));
      CHECK_FALSE(allows({}, place.right));
    }
  }

  TEST_CASE("rights are set and cleared in any order") {
    check_property([] {
      std::string rights;
      std::set<Right> held;
      const auto steps = *rc::gen::container<std::vector<std::pair<int, bool>>>(rc::gen::pair(
          rc::gen::inRange(0, static_cast<int>(rights_layout.size())), rc::gen::arbitrary<bool>()));
      for (const auto& [number, allowed] : steps) {
        const auto right = static_cast<Right>(number);
        rights = with_right(rights, right, allowed);
        if (allowed) {
          held.insert(right);
        } else {
          held.erase(right);
        }
      }
      for (const RightPlace& place : rights_layout) {
        RC_ASSERT(allows(rights, place.right) == held.contains(place.right));
      }
    });
  }

  TEST_CASE("rights that a frame can't carry are told, and only those") {
    CHECK(why_rights_cannot_travel("\5\5@@").find("end the frame") != std::string_view::npos);
    CHECK(why_rights_cannot_travel("@@@\xFF").find("lost") != std::string_view::npos);
    CHECK(why_rights_cannot_travel("\5@\5@").empty());
    CHECK(why_rights_cannot_travel("\xFF@").empty());
    CHECK(why_rights_cannot_travel({}).empty());
    check_property([] {
      std::string rights = *rc::gen::container<std::string>(
          rights_length, rc::gen::element('\5', '\4', '\xFF', '@', '\0'));
      // Behind them stands a profile, or nothing.
      const bool carried = carried_buffer(rights) == rights;
      RC_ASSERT(carried || !why_rights_cannot_travel(rights).empty());
    });
  }
}

}  // namespace
}  // namespace lineweir::test
