#include "link/links.h"

#include <doctest/doctest.h>

#include "support/scripted_console.h"

namespace lineweir {
namespace {

struct FakeLink : StudioLink {};

TEST_SUITE("link/links") {
  TEST_CASE("the first way whose item is checked is in use, and without any the serial port") {
    test::ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    FakeLink serial;
    FakeLink first;
    FakeLink second;
    FakeLink third;
    const Links links(desk.console, serial, second,
                      {{form.NetworkConnectionOption, 99, first},
                       {form.WinsockMenu, 100, second},
                       {form.AboutLineweir, 101, third}});
    CHECK(&links.in_use() == &serial);
    form.AboutLineweir.checked = true;
    CHECK(&links.in_use() == &third);
    CHECK(links.settings_code(1) == 101);
    form.NetworkConnectionOption.checked = true;
    CHECK(&links.in_use() == &first);

    // Who goes over to one way leaves all others.
    form.WinsockMenu.checked = true;
    links.uncheck_ways(&form.WinsockMenu);
    CHECK(&links.in_use() == &second);
    CHECK_FALSE(form.AboutLineweir.checked);
    links.uncheck_ways();
    CHECK(&links.in_use() == &serial);
    CHECK(links.item_of(101) == &form.AboutLineweir);
    CHECK(links.item_of(102) == nullptr);
  }
}

}  // namespace
}  // namespace lineweir
