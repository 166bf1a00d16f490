#include "serverlink/group_choice.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

// Two groups, as a server's list brings them; the console works in the first.
struct GroupDesk : ScriptedConsole {
  GroupDesk() {
    MenuItem& second = console.Lineweir.StudioGr.load(1);
    second.caption = "Studio B";
    second.checked = false;
    second.visible = true;
    console.Lineweir.DisplayDataOptionsMenu.on_click();
  }

  void leave_with(int entry) {
    console.DisplayOptionForm.MessageGroupSelector.select(entry);
    console.DisplayOptionForm.ExitCommand.on_click();
  }
};

TEST_SUITE("serverlink/group_choice: the selector") {
  TEST_CASE("the form opens on the present group, and on none that has no entry") {
    ScriptedConsole desk;
    Console& console = desk.console;
    ComboBox& selector = console.DisplayOptionForm.MessageGroupSelector;
    REQUIRE(selector.list_count() == 10);
    for (const auto& [group, entry] : {std::pair(7, 6), std::pair(12, -1), std::pair(1, 0)}) {
      console.program.GroupNumber = group;
      console.Lineweir.DisplayDataOptionsMenu.on_click();
      CHECK(selector.list_index == entry);
      // Leaving the form as it is changes nothing.
      console.DisplayOptionForm.ExitCommand.on_click();
      CHECK(console.program.GroupNumber == group);
      CHECK(desk.take_messages().empty());
    }
  }
}

TEST_SUITE("serverlink/group_choice") {
  TEST_CASE("the present group changes nothing") {
    GroupDesk desk;
    desk.leave_with(0);
    CHECK_FALSE(desk.console.DisplayOptionForm.visible);
    CHECK(desk.console.program.GroupNumber == 1);
    CHECK_FALSE(desk.console.lines.FreshConnect);
    CHECK(desk.take_messages().empty());
  }

  TEST_CASE("another group is taken over") {
    GroupDesk desk;
    MainForm& form = desk.console.Lineweir;
    desk.leave_with(1);
    CHECK_FALSE(desk.console.DisplayOptionForm.visible);
    CHECK(desk.console.program.GroupNumber == 2);
    CHECK(form.StudioGr(1).checked);
    CHECK_FALSE(form.StudioGr(0).checked);
    CHECK(form.caption == "Lineweir - Talent        Studio #2 - Studio B      ");
    CHECK(form.Timer4.enabled);
    CHECK(desk.console.lines.FreshConnect);
  }

  TEST_CASE("the caption goes by the present one") {
    GroupDesk desk;
    desk.console.Lineweir.caption = "somebody's";
    desk.leave_with(1);
    CHECK(desk.console.Lineweir.caption == "Lineweir - Producer      Studio #2 - Studio B      ");
  }

  TEST_CASE("a group that isn't the user's gives the message, and the present one stays") {
    GroupDesk desk;
    desk.console.Lineweir.StudioGr(1).enabled = false;
    // The third has no menu item at all.
    for (const int entry : {1, 2}) {
      desk.leave_with(entry);
      CHECK(desk.take_messages() ==
            Texts{"The selected Studio Group is not available to this user!"});
      CHECK(desk.console.program.GroupNumber == 1);
      CHECK(desk.console.DisplayOptionForm.MessageGroupSelector.list_index == 0);
      CHECK(desk.console.DisplayOptionForm.visible);
    }
  }

  TEST_CASE("on the socket the old group is left first") {
    GroupDesk desk;
    desk.platform.winsock1.stand_connected();
    desk.console.Lineweir.WinsockMenu.checked = true;
    desk.leave_with(1);
    const Texts writes = desk.platform.winsock1.take_writes();
    REQUIRE_FALSE(writes.empty());
    CHECK(writes.front() == std::string("\x04\x04\x03\xFF\x01\xFF\x00\xFF\x00\x00\x05\x05", 12));
    CHECK(desk.console.program.GroupNumber == 2);
  }

  TEST_CASE("without its connection the change is off") {
    GroupDesk desk;
    desk.console.Lineweir.WinsockMenu.checked = true;
    desk.leave_with(1);
    CHECK(desk.take_messages() == Texts{"Lineweir is not currently connected to a server."});
    CHECK(desk.console.program.GroupNumber == 1);
    CHECK(desk.console.DisplayOptionForm.MessageGroupSelector.list_index == 0);
  }

  TEST_CASE("closing the window applies the choice too, and the width being typed") {
    GroupDesk desk;
    DisplayDataForm& options = desk.console.DisplayOptionForm;
    options.List1.on_drag(0, 1);
    options.WidthText(3).set_focus();
    options.WidthText(3).text = "1234";
    options.close();
    CHECK_FALSE(options.visible);
    CHECK(desk.console.display.ColumnsInUse == std::vector<int>{0, 1, 3, 2, 5, 11});
    CHECK(desk.console.Lineweir.LineName(0).width == 1234);
  }
}

}  // namespace
}  // namespace lineweir::test
