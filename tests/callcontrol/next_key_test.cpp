#include "callcontrol/next_key.h"

#include <doctest/doctest.h>

#include "support/dial_desk.h"

namespace lineweir::test {
namespace {

using Words = std::vector<std::string>;

TEST_SUITE("callcontrol/next_key") {
  TEST_CASE("on: X at once and each 30 seconds; off: one R and silence") {
    DialDesk desk;
    MenuItem& item = desk.console.Lineweir.RemoteNext;
    item.on_click();
    CHECK(item.checked);
    CHECK(desk.words() == Words{"X"});
    desk.pass(29999);
    CHECK(desk.words().empty());
    desk.pass(1);
    CHECK(desk.words() == Words{"X"});
    desk.pass(60000);
    CHECK(desk.words() == Words{"X", "X"});
    item.on_click();
    CHECK_FALSE(item.checked);
    CHECK(desk.words() == Words{"R"});
    desk.pass(120000);
    CHECK(desk.words().empty());
  }

  TEST_CASE("the equipment's words press next, or are passed on, only while it is on") {
    DialDesk desk;
    desk.letter(4, 'S');
    desk.console.lines.TheNextCall = 4;
    desk.console.phone.UCommand("U05");
    desk.console.phone.UCommand("U07");
    CHECK(desk.words().empty());
    desk.console.Lineweir.RemoteNext.on_click();
    desk.words();
    desk.console.phone.UCommand("U05");
    CHECK(desk.words() == Words{"N04"});
    desk.console.Lineweir.NextButton.enabled = false;
    desk.console.phone.UCommand("U05");
    CHECK(desk.words() == Words{"C04"});
    desk.console.phone.UCommand("U07");
    CHECK(desk.words() == Words{"U07"});
  }
}

}  // namespace
}  // namespace lineweir::test
