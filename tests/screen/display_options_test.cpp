#include "screen/display_options.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "screen/row_layout.h"
#include "support/rows_of.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;
using Numbers = std::vector<int>;

// Stores columns in this order, all others not shown.
void store_columns(Console& console, const Numbers& columns) {
  console.display.ColumnShown.fill(0);
  console.display.ColumnOrder.fill(column_not_listed);
  int place = 0;
  for (const int column : columns) {
    const auto stored = static_cast<std::size_t>(column - 2);
    console.display.ColumnShown[stored] = -1;
    console.display.ColumnOrder[stored] = place++;
  }
}

TEST_SUITE("screen/display_options") {
  TEST_CASE("stored columns are put on the form and the screen") {
    ScriptedConsole desk;
    Console& console = desk.console;
    store_columns(console, {12, 4, 2});
    console.display.ColumnWidth[2] = 900;
    console.display.SetDisplayOptions();
    const DisplayOptionWindow& options = console.DisplayOptionForm;
    CHECK(options.List1.list.get() == Texts{"User", "Street Address", "Time"});
    CHECK(console.display.ColumnsInUse == Numbers{0, 1, 12, 4, 2});
    CHECK(options.CheckItem(4).value == 1);
    CHECK(options.WidthText(4).text == "900");
    CHECK(options.WidthText(4).enabled);
    CHECK(options.CheckItem(3).value == 0);
    CHECK(options.WidthText(3).text == "");
    CHECK_FALSE(options.WidthText(3).enabled);
    MainForm& form = console.Lineweir;
    CHECK(form.LineUser(0).left == 1260 + 60 + 350 + 800);
    CHECK(form.LineStreetAdd(7).left == form.LineUser(7).left + 1200);
    CHECK(form.LineStreetAdd(7).width == 900);
    CHECK_FALSE(form.LineName(0).visible);
    CHECK_FALSE(console.display.ColumnsLocked);
  }

  TEST_CASE("a gap in the places is filled, and passed over on the screen") {
    ScriptedConsole desk;
    Console& console = desk.console;
    store_columns(console, {3, 5});
    console.display.ColumnOrder[3] = 2;
    console.display.SetDisplayOptions();
    CHECK(console.DisplayOptionForm.List1.list.get() == Texts{"Caller Name", "/", "City"});
    CHECK(console.display.ColumnsInUse == Numbers{0, 1, 3, 5});
  }

  TEST_CASE("places out of range aren't listed") {
    ScriptedConsole desk;
    Console& console = desk.console;
    store_columns(console, {3, 5, 2});
    console.display.ColumnOrder[3] = 30000;
    console.display.ColumnOrder[0] = -7;
    console.display.SetDisplayOptions();
    CHECK(console.DisplayOptionForm.List1.list.get() == Texts{"Caller Name"});
  }

  TEST_CASE("while the columns are locked their order stays") {
    ScriptedConsole desk;
    Console& console = desk.console;
    console.display.ColumnsLocked = true;
    console.DisplayOptionForm.List1.list = Texts{"City"};
    console.display.RefreshColumnOrder();
    CHECK(console.display.ColumnsInUse == Numbers{0, 1, 2, 3, 5, 11});
    console.display.ColumnsLocked = false;
    console.display.RefreshColumnOrder();
    CHECK(console.display.ColumnsInUse == Numbers{0, 1, 5});
  }

  TEST_CASE("an entry without a column is passed over") {
    ScriptedConsole desk;
    Console& console = desk.console;
    console.DisplayOptionForm.List1.list = Texts{"Nobody", "City", "/", "City"};
    console.display.RefreshColumnOrder();
    CHECK(console.display.ColumnsInUse == Numbers{0, 1, 5});
  }

  TEST_CASE("the choice comes back from the form as it was stored") {
    ScriptedConsole desk;
    Console& console = desk.console;
    store_columns(console, {11, 3, 12});
    console.display.SetDisplayOptions();
    const ColumnNumbers order = console.display.ColumnOrder;
    const ColumnNumbers shown = console.display.ColumnShown;
    console.display.collect();
    CHECK(console.display.ColumnOrder == order);
    CHECK(console.display.ColumnShown == shown);
  }

  TEST_CASE("the width boxes show the widths on the screen, 0 where nothing is shown") {
    ScriptedConsole desk;
    Console& console = desk.console;
    resize(console, 18840, 7255);
    console.display.fill_width_boxes();
    CHECK(console.DisplayOptionForm.WidthText(2).text == "1670");
    CHECK(console.DisplayOptionForm.WidthText(4).text == "0");
  }

  TEST_CASE("all rows take the widths of the first") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    form.LineCity(0).width = 1111;
    form.LineNumb(0).width = 222;
    SetFieldWidths(desk.console);
    for (int line = 0; line < 10; ++line) {
      CHECK(form.LineCity(line).width == 1111);
      CHECK(form.LineNumb(line).width == 222);
      CHECK(form.LineName(line).width == 1700);
    }
  }
}

}  // namespace
}  // namespace lineweir::test
