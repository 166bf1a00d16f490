#include <doctest/doctest.h>

#include "callerdata/known_caller_text.h"
#include "callerdata/known_callers.h"
#include "support/call_log_file.h"
#include "support/obstinate_databases.h"
#include "support/served_desk.h"

namespace lineweir::test {
namespace {

using Sent = std::vector<std::string>;

constexpr auto bo_number = "555 0777\0037\0033\0032026-11-12 20:15\3Bo\3Troy\3\3\3";

void type_number(ServedDesk& desk, const std::string& number) {
  desk.box(6).edit(number, static_cast<int>(number.size()));
}

void lose_server(ServedDesk& desk) {
  desk.platform.winsock1.drop();
  desk.console.link.review();
}

void find_server_again(ServedDesk& desk) {
  desk.connect_socket();
  desk.console.link.review();
  desk.tell_of_memory();
}

TEST_SUITE("callerdata/numbers that the server knows") {
  TEST_CASE("the number of a caller on a line is known by that line, and no other number is") {
    ServedDesk desk;
    desk.tell(2, 3, anna_number);
    desk.open(4);
    type_number(desk, "555 0777");
    CHECK_FALSE(desk.flag_shown());
    type_number(desk, "555 0100");
    CHECK(desk.flag_shown());
    CHECK(desk.form().FlagLabel.back_color == flag_color(CallerFlag::Barred));
  }

  TEST_CASE("a session that begins anew has not answered yet") {
    ServedDesk desk;
    desk.open(0);
    type_number(desk, "555 0100");
    desk.wait(400);
    desk.tell(no_value, 3, anna_number);
    CHECK(desk.flag_shown());
    desk.tell_of_memory();
    CHECK_FALSE(desk.flag_shown());
  }

  TEST_CASE("of whom the next session tells nothing, nothing is shown as soon as it has told all") {
    ServedDesk desk;
    desk.tell(2, 3, anna_number);
    desk.open(4);
    type_number(desk, "555 0100");
    desk.tell_of_memory();
    CHECK(desk.flag_shown());
    desk.tell_next_call();
    CHECK_FALSE(desk.flag_shown());
  }

  TEST_CASE("the rows are told of each change, behind all others") {
    ServedDesk desk;
    int told = 0;
    bool known_by_then = false;
    desk.open(4);
    type_number(desk, "555 0100");
    desk.console.known_callers.on_rows_change = [&] {
      ++told;
      known_by_then = desk.flag_shown();
    };
    desk.tell(2, 3, anna_number);
    CHECK(told == 1);
    CHECK(known_by_then);
    desk.console.known_callers.on_rows_change = nullptr;
  }

  TEST_CASE("going over to a link that stands as well forgets what the server told") {
    ServedDesk desk;
    desk.box_sends("F03");
    desk.tell(2, 3, anna_number);
    desk.console.Lineweir.WinsockMenu.checked = false;
    CHECK(desk.console.Lineweir.no_link == "");
    CHECK(desk.console.known_callers.on_line(2) == nullptr);
    CHECK_FALSE(desk.console.known_callers.remembers());
  }

  TEST_CASE("a number that was typed since isn't answered by what was asked before") {
    ServedDesk desk;
    desk.open(0);
    type_number(desk, "555 0100");
    desk.wait(400);
    type_number(desk, "555 0777");
    // Going on to the name declines what may come.
    desk.type(1, "B");
    desk.tell(2, 0, bo_number);
    CHECK_FALSE(desk.form().MemoryLabel.visible);
    desk.wait(400);
    desk.tell(no_value, 0, bo_number);
    CHECK(desk.form().MemoryLabel.visible);
  }

  TEST_CASE("a number that is shortened to none is asked for no more, and its history goes") {
    ServedDesk desk;
    create_log(desk.platform);
    desk.console.Lineweir.Data1.database_name = log_path;
    desk.open(0);
    desk.sent();
    type_number(desk, "555 0100");
    CHECK(desk.form().AskTimer.enabled);
    type_number(desk, "555");
    CHECK_FALSE(desk.form().AskTimer.enabled);
  }

  TEST_CASE("what was asked when the server went is asked again when it is back") {
    ServedDesk desk;
    desk.open(0);
    type_number(desk, "555 0100");
    desk.wait(400);
    CHECK(desk.sent() == Sent{"26 555 0100"});
    lose_server(desk);
    desk.type(1, "A");
    find_server_again(desk);
    // What stands on a line isn't the answer.
    desk.tell(2, 3, anna_number);
    CHECK_FALSE(desk.form().MemoryLabel.visible);
    desk.wait(400);
    CHECK(desk.sent() == Sent{"26 555 0100"});
    desk.tell(no_value, 3, anna_number);
    CHECK(desk.form().MemoryLabel.visible);
  }

  TEST_CASE("it is asked again when the server is back, and not whenever it tells something") {
    ServedDesk desk;
    desk.open(0);
    type_number(desk, "555 0100");
    desk.wait(400);
    desk.sent();
    desk.tell(2, 3, bo_number);
    CHECK_FALSE(desk.form().AskTimer.enabled);
    for (int i = 0; i < 2; ++i) {
      lose_server(desk);
      find_server_again(desk);
      desk.wait(400);
      CHECK(desk.sent() == Sent{"26 555 0100"});
    }
  }

  TEST_CASE("without a log nothing is left of what a server told that has no memory any more") {
    ServedDesk desk;
    desk.open(0);
    type_number(desk, "555 0100");
    desk.wait(400);
    desk.tell(no_value, 3, anna_number);
    CHECK(desk.form().MemoryLabel.visible);
    lose_server(desk);
    CHECK(desk.form().MemoryLabel.visible);
    desk.console.Lineweir.WinsockMenu.checked = false;
    CHECK_FALSE(desk.form().MemoryLabel.visible);
    CHECK_FALSE(desk.form().MemoryFill.visible);
  }

  TEST_CASE("what is shown of a number goes with the number") {
    ServedDesk desk;
    desk.tell(2, 3, anna_number);
    desk.open(0);
    type_number(desk, "555 0100");
    CHECK(desk.form().MemoryLabel.visible);
    CHECK(desk.form().MemoryFill.visible);
    type_number(desk, "555 0777");
    CHECK_FALSE(desk.form().MemoryLabel.visible);
    CHECK_FALSE(desk.form().MemoryFill.visible);
  }

  TEST_CASE("what the log knew of one number isn't told of the next") {
    ServedDesk desk;
    choose_log(desk);
    const auto rows =
        desk.platform.databases.open(log_path)->open_recordset(std::string(call_log_table));
    rows->add_new();
    rows->set_field("PhoneNumber", "555-0100");
    rows->set_field("Caller Name", "Ann Lee");
    rows->update();
    desk.open(0);
    type_number(desk, "555 0100");
    CHECK(desk.form().MemoryLabel.visible);
    type_number(desk, "555 0777");
    CHECK_FALSE(desk.form().MemoryLabel.visible);
  }

  TEST_CASE("a log that fails tells why, and nothing of the number before") {
    ServedDesk desk;
    ObstinateDatabases databases(desk.platform.databases);
    desk.platform.failing_databases.use(databases);
    choose_log(desk);
    const auto rows = databases.open(log_path)->open_recordset(std::string(call_log_table));
    rows->add_new();
    rows->set_field("PhoneNumber", "555-0100");
    rows->update();
    desk.open(0);
    type_number(desk, "555 0100");
    CHECK(desk.form().MemoryLabel.caption == "Called once, never on air");
    databases.reading_fails = failure_number::database_in_use;
    type_number(desk, "555 0777");
    CHECK(desk.form().MemoryLabel.caption == "It can't be read.");
    desk.form().close();
    desk.console.Lineweir.Data1.database_name = "";
  }

  TEST_CASE("a log that was deleted since it was looked into says so") {
    ServedDesk desk;
    choose_log(desk);
    desk.open(0);
    type_number(desk, "555 0100");
    desk.platform.databases.remove(log_path);
    type_number(desk, "555 0777");
    CHECK(desk.form().MemoryLabel.caption == "Couldn't find file 'calls.lwl'.");
  }

  TEST_CASE("a blank that is typed declines like any other character") {
    ServedDesk desk;
    desk.tell(2, 3, anna_number);
    desk.open(0);
    type_number(desk, "555 0100");
    CHECK(desk.form().MemoryLabel.visible);
    desk.type(1, " ");
    CHECK_FALSE(desk.form().MemoryLabel.visible);
  }

  TEST_CASE("with the whole caller filled in the focus is in the first field that is empty") {
    ServedDesk desk;
    desk.tell(2, 0, "555 0100\0037\0033\0032026-11-12 20:15\3\3Troy\3\3\3");
    desk.open(0);
    type_number(desk, "555 0100");
    desk.form().MemoryFill.on_click();
    CHECK(desk.text(3) == "Troy");
    CHECK(desk.focused() == 1);
  }

  TEST_CASE("a flag that didn't go out stays in its window") {
    ServedDesk desk;
    desk.open(0);
    type_number(desk, "555 0100");
    desk.form().FlagCaller.on_click();
    desk.choose(desk.flag_form().CarefulFlag);
    desk.flag_form().ReasonText.edit("likes to talk", 13);
    // The connection is gone, and the console hasn't looked at it since.
    desk.platform.winsock1.drop();
    desk.flag_form().OKButton.on_click();
    CHECK(desk.flag_form().loaded());
    CHECK(desk.flag_form().ReasonText.text == "likes to talk");
  }

  TEST_CASE("a notice of the flag's window stays until what it tells of has changed") {
    ServedDesk desk;
    desk.open(0);
    type_number(desk, "555 0100");
    desk.form().FlagCaller.on_click();
    CallerFlagForm& flag = desk.flag_form();
    desk.choose(flag.BarredFlag);
    flag.ReasonText.edit(std::string(120, 'x'), 110);
    CHECK(flag.ReasonText.sel_start == 100);
    flag.UntilText.edit("soon", 4);
    flag.OKButton.on_click();
    CHECK(flag.NoticeLabel.visible);
    desk.tell(2, 3, bo_number);
    CHECK(flag.NoticeLabel.visible);
    lose_server(desk);
    flag.OKButton.on_click();
    CHECK(flag.NoticeLabel.caption == "The server isn't there now: the flag is not set.");
    desk.console.Lineweir.WinsockMenu.checked = false;
    CHECK(flag.NoticeLabel.visible);
  }

  TEST_CASE("who is asked for the number first has it in front, and goes on from one that stands") {
    ServedDesk desk;
    desk.console.caller_data.asks_number_first = true;
    desk.open(0);
    CHECK(desk.focused() == phone_number_entry);
    desk.type(phone_number_entry, "\r");
    CHECK(desk.focused() == 1);
    desk.form().close();
    desk.shown(1, phone_number_entry).caption = "555 0100";
    desk.open(1);
    CHECK(desk.focused() == 1);
    EntryForm without_memory;
    without_memory.console.caller_data.asks_number_first = true;
    without_memory.shown(1, phone_number_entry).caption = "555 0100";
    without_memory.open(0);
    CHECK(without_memory.focused() == 1);
    without_memory.form().close();
    without_memory.open(1);
    CHECK(without_memory.focused() == 1);
  }
}

}  // namespace
}  // namespace lineweir::test
