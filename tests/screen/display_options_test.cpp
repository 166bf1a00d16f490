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
    const DisplayDataForm& options = console.DisplayOptionForm;
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
    CHECK(form.labels_of(CallerField::StreetAddress)(7).left == form.LineUser(7).left + 1200);
    CHECK(form.labels_of(CallerField::StreetAddress)(7).width == 900);
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

  TEST_CASE("a shown column whose place can't be stands behind the others") {
    ScriptedConsole desk;
    Console& console = desk.console;
    store_columns(console, {3, 5, 2, 6});
    console.display.ColumnOrder[3] = 30000;
    console.display.ColumnOrder[0] = -7;
    console.display.ColumnOrder[4] = 0;
    console.display.SetDisplayOptions();
    CHECK(console.DisplayOptionForm.List1.list.get() ==
          Texts{"Caller Name", "Time", "City", "State"});
    CHECK(console.display.ColumnsInUse == Numbers{0, 1, 3, 2, 5, 6});
  }

  TEST_CASE("a column without a place is neither listed nor checked") {
    ScriptedConsole desk;
    Console& console = desk.console;
    store_columns(console, {3, 5});
    console.display.ColumnOrder[3] = column_not_listed;
    console.display.SetDisplayOptions();
    CHECK(console.DisplayOptionForm.List1.list.get() == Texts{"Caller Name"});
    CHECK(console.DisplayOptionForm.CheckItem(5).value == 0);
    CHECK_FALSE(console.Lineweir.LineCity(0).visible);
  }

  TEST_CASE("a stored width that can't be is that of a first start") {
    ScriptedConsole desk;
    DisplayOptions& display = desk.console.display;
    ColumnNumbers widths = display.ColumnWidth;
    widths[0] = -1;
    widths[1] = -32768;
    widths[3] = 0;
    widths[9] = 32767;
    display.restore(display.ColumnShown, widths, display.ColumnOrder);
    CHECK(display.width_of(2) == 835);
    CHECK(display.width_of(3) == 1700);
    CHECK(display.width_of(5) == 0);
    CHECK(display.width_of(11) == 32767);
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
    CHECK(console.DisplayOptionForm.WidthText(0).text == "700");
    CHECK(console.DisplayOptionForm.WidthText(1).text == "1600");
    CHECK(console.DisplayOptionForm.WidthText(2).text == "1670");
    CHECK(console.DisplayOptionForm.WidthText(4).text == "0");
  }

  TEST_CASE("a hidden first line leaves the widths of the columns in their boxes") {
    ScriptedConsole desk;
    Console& console = desk.console;
    console.DisplayOptionForm.LineCheck(0).value = 0;
    console.row_choice.RefreshVisibleRows();
    console.display.fill_width_boxes();
    CHECK(console.DisplayOptionForm.WidthText(3).text == "1700");
    CHECK(console.settings.collect().ColumnWidth[1] == 1700);
  }

  TEST_CASE("columns without room are told on the form as soon as they have none") {
    ScriptedConsole desk;
    Console& console = desk.console;
    const Label& room = console.DisplayOptionForm.RoomLabel;
    CHECK(room.caption == "");
    // 60 twips before the first column, and 7385 of columns at first.
    console.display.set_width(column_of(CallerField::Comments), 2500 + 7590 - 7385 - 60);
    console.display.RefreshColumnOrder();
    CHECK(room.caption == "");
    console.display.set_width(column_of(CallerField::Comments), 2500 + 7590 - 7385 - 60 + 1);
    console.display.RefreshColumnOrder();
    CHECK(room.caption == "No room in the rows for: Comments");
    console.display.set_width(column_of(CallerField::CallerName), 32767);
    console.display.RefreshColumnOrder();
    CHECK(room.caption == "No room in the rows for: Caller Name, City, Comments");
    console.display.set_width(column_of(CallerField::City), 0);
    console.display.RefreshColumnOrder();
    CHECK(room.caption == "No room in the rows for: Caller Name, Comments");
    console.display.set_width(column_of(CallerField::CallerName), 1700);
    console.display.set_width(column_of(CallerField::Comments), 3200);
    console.display.RefreshColumnOrder();
    CHECK(room.caption == "");
    // The rows of the large layout are wider.
    console.display.set_width(column_of(CallerField::Comments), 4500);
    console.display.RefreshColumnOrder();
    CHECK(room.caption == "No room in the rows for: Comments");
    show_rows(console, 20);
    CHECK(room.caption == "");
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
