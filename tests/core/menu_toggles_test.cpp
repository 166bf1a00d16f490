#include "core/menu_toggles.h"

#include <doctest/doctest.h>

#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

TEST_CASE("a click on each of these items turns its check over, and the next one back") {
  ScriptedConsole desk;
  MainForm& form = desk.console.Lineweir;
  for (MenuItem* item :
       {&form.ServerShowData, &form.GreyScreenOption, &form.TextGrowToggle, &form.UrgentSound,
        &form.SyncTimeMenu, &form.EventClockMenu, &form.TimeClockMenuItem, &form.AutoDataEntry,
        &form.Line20Mode, &form.NextBarDisable}) {
    CAPTURE(item->name());
    const bool before = item->checked;
    item->on_click();
    CHECK(item->checked == !before);
    item->on_click();
    CHECK(item->checked == before);
  }
}

TEST_CASE("the dials are on the screen while their items are checked") {
  ScriptedConsole desk;
  MainForm& form = desk.console.Lineweir;
  for (int click = 0; click < 2; ++click) {
    form.EventClockMenu.on_click();
    CHECK(form.picShowTimeClock.visible == form.EventClockMenu.checked);
    form.TimeClockMenuItem.on_click();
    CHECK(form.picRealTimeClock.visible == form.TimeClockMenuItem.checked);
  }
}

TEST_CASE("while the digits stand in its place the time's dial stays as it is") {
  ScriptedConsole desk;
  MainForm& form = desk.console.Lineweir;
  const bool before = form.TimeClockMenuItem.checked;
  form.DigiClock.checked = true;
  form.TimeClockMenuItem.on_click();
  CHECK(form.TimeClockMenuItem.checked == before);
}

}  // namespace
}  // namespace lineweir::test
