#include "callerdata/known_callers.h"

#include <doctest/doctest.h>

#include "forms/call_log_columns.h"
#include "support/call_log_file.h"
#include "support/served_desk.h"

namespace lineweir::test {
namespace {

using Sent = std::vector<std::string>;

TEST_SUITE("callerdata/known callers") {
  TEST_CASE("a number that is typed is asked for once, when the typing rests") {
    ServedDesk desk;
    desk.open(0);
    for (const char* key : {"5", "5", "5", " ", "0", "1", "0", "0"}) {
      desk.type(6, key);
      desk.wait(100);
    }
    CHECK(desk.sent().empty());
    desk.wait(300);
    CHECK(desk.sent() == Sent{"26 555 0100"});
    desk.wait(5000);
    CHECK(desk.sent().empty());
  }

  TEST_CASE("no number is asked for that is none, and none of a server without a memory") {
    ServedDesk desk;
    desk.open(0);
    desk.type(6, "555");
    desk.wait(1000);
    desk.type(6, "\b\b\b0000000");
    desk.wait(1000);
    CHECK(desk.sent().empty());
    EntryForm other;
    other.connect_socket();
    other.open(0);
    other.type(6, "5550100");
    other.platform.loop.advance(platform::Milliseconds(1000));
    CHECK_FALSE(other.form().FlagCaller.visible);
    for (const std::string& frame : other.platform.winsock1.take_writes()) CHECK(frame[2] != 26);
  }

  TEST_CASE("the answer is shown beside the fields without a log, and takes no focus") {
    ServedDesk desk;
    desk.open(0);
    CHECK(desk.form().memory() == CallerDataForm::Memory::Server);
    desk.type(6, "555 0100");
    desk.wait(400);
    CHECK_FALSE(desk.form().MemoryLabel.visible);
    desk.tell(no_value, 3, anna_number);
    CHECK(desk.form().MemoryLabel.caption ==
          "Called 7 times, on air 3 times\r\nLast on air 11/12/2026 8:15 PM\r\nAnna Lee, Troy");
    CHECK(desk.form().FlagLabel.caption == "Barred until 12/31/2026: abuse (bob)");
    CHECK(desk.flag_shown());
    CHECK(desk.focused() == 6);
    // Whoever types on has declined the offer; the flag stays.
    desk.type(1, "A");
    CHECK_FALSE(desk.form().MemoryLabel.visible);
    CHECK(desk.flag_shown());
    desk.type(6, "1");
    CHECK_FALSE(desk.flag_shown());
  }

  TEST_CASE("the answer to another number is passed over, and so is one of another group") {
    ServedDesk desk;
    desk.open(0);
    desk.type(6, "555 0101");
    desk.wait(400);
    desk.tell(no_value, 3, anna_number);
    CHECK_FALSE(desk.flag_shown());
    CHECK_FALSE(desk.form().MemoryLabel.visible);
    desk.tell(2, 3, anna_number, 4);
    desk.tell(200, 3, anna_number);
    desk.tell(2, 9, anna_number);
    desk.tell(2, 3, "nonsense");
    CHECK(desk.console.known_callers.on_line(2) == nullptr);
  }

  TEST_CASE("the server's knowledge wins where it has more calls, and the log serves without it") {
    ServedDesk desk;
    create_log(desk.platform);
    const auto database = desk.platform.databases.open(log_path);
    const auto rows = database->open_recordset(std::string(call_log_table));
    rows->add_new();
    rows->set_field("PhoneNumber", "555-0100");
    rows->set_field("Caller Name", "Ann Lee");
    rows->set_field("Date", "1/5/2026");
    rows->update();
    desk.console.Lineweir.Data1.database_name = log_path;
    desk.open(0);
    desk.type(6, "5550100");
    CHECK(desk.form().MemoryLabel.caption == "Called once, never on air\r\nAnn Lee");
    desk.wait(400);
    desk.tell(no_value, 0, "5550100\0031\0031\3\3\3\3\3\3");
    CHECK(desk.form().MemoryLabel.caption == "Called once, never on air\r\nAnn Lee");
    desk.tell(no_value, 3, anna_number);
    CHECK(desk.form().MemoryLabel.caption.get().starts_with("Called 7 times"));
    desk.platform.winsock1.drop();
    desk.console.link.review();
    // What was told stays while the link is broken, only that nothing can be asked or set.
    CHECK(desk.form().MemoryLabel.caption.get().starts_with("Called 7 times"));
    CHECK(desk.flag_shown());
    CHECK(desk.form().FlagCaller.visible);
    CHECK_FALSE(desk.form().FlagCaller.enabled);
    CHECK(desk.form().memory() == CallerDataForm::Memory::Server);
    // The server that answers then has no memory.
    desk.connect_socket();
    desk.tell_of_memory(no_value);
    CHECK(desk.form().MemoryLabel.caption == "Called once, never on air\r\nAnn Lee");
    CHECK_FALSE(desk.flag_shown());
    CHECK_FALSE(desk.form().FlagCaller.visible);
    CHECK(desk.form().memory() == CallerDataForm::Memory::Log);
  }

  TEST_CASE("what is known of a line goes with its call, and stays while the link is broken") {
    ServedDesk desk;
    const auto known = [&] { return desk.console.known_callers.on_line(2) != nullptr; };
    desk.report(2, "R");
    desk.tell(2, 3, anna_number);
    CHECK(known());
    desk.report(2, "S");
    CHECK(known());
    desk.tell(2, 3, "");
    CHECK_FALSE(known());
    desk.tell(2, 3, anna_number);
    desk.report(2, "F");
    CHECK_FALSE(known());
    // The next call's knowledge comes before this console has shown its ring.
    desk.report(2, "R");
    desk.tell(2, 3, anna_number);
    desk.wait(2000);
    CHECK(known());
    desk.platform.winsock1.drop();
    desk.console.link.review();
    CHECK(known());
    CHECK_FALSE(desk.console.known_callers.served());
    desk.connect_socket();
    desk.tell_of_memory();
    CHECK(known());
    SUBCASE("the next session tells the same") {
      desk.tell(2, 3, anna_number);
      desk.tell_next_call();
      CHECK(known());
    }
    SUBCASE("the next session knows of another caller there, who has never called") {
      desk.tell(1, 3, anna_number);
      desk.tell_next_call();
      CHECK_FALSE(known());
      CHECK(desk.console.known_callers.on_line(1) != nullptr);
    }
    SUBCASE("the line is free in the next session") {
      desk.report(2, "F");
      CHECK_FALSE(known());
    }
  }

  TEST_CASE("another studio group forgets what the former one's server has told") {
    ServedDesk desk;
    desk.tell(2, 3, anna_number);
    desk.console.Lineweir.StudioGr.load(1).enabled = true;
    desk.console.DisplayOptionForm.MessageGroupSelector.add_item("One");
    desk.console.DisplayOptionForm.MessageGroupSelector.add_item("Two");
    desk.console.Lineweir.StudioGr(1).on_click();
    CHECK(desk.console.program.GroupNumber == 2);
    CHECK(desk.console.known_callers.on_line(2) == nullptr);
    CHECK_FALSE(desk.console.known_callers.served());
  }

  TEST_CASE("a flag is set in a window of its own, and the number asked for anew") {
    ServedDesk desk;
    desk.open(0);
    CHECK(desk.form().FlagCaller.visible);
    CHECK_FALSE(desk.form().FlagCaller.enabled);
    desk.type(6, "555 0100");
    CHECK(desk.form().FlagCaller.enabled);
    desk.wait(400);
    desk.sent();
    desk.form().FlagCaller.on_click();
    CHECK(desk.flag_form().visible);
    CHECK(desk.flag_form().NumberLabel.caption == "Flag of 555 0100");
    CHECK(desk.flag_form().NoFlag.value);
    desk.choose(desk.flag_form().CarefulFlag);
    desk.flag_form().ReasonText.edit("likes to talk", 13);
    desk.flag_form().UntilText.edit("12/31/2026", 10);
    desk.flag_form().OKButton.on_click();
    CHECK(desk.sent() == Sent{"27 2 555 0100\3likes to talk\0032026-12-31"});
    CHECK_FALSE(desk.flag_form().visible);
    desk.wait(400);
    CHECK(desk.sent() == Sent{"26 555 0100"});
  }

  TEST_CASE("the window begins with the present flag, and takes it away with the reason") {
    ServedDesk desk;
    desk.open(0);
    desk.type(6, "555 0100");
    desk.wait(400);
    desk.tell(no_value, 3, anna_number);
    desk.sent();
    desk.form().FlagCaller.on_click();
    CHECK(desk.flag_form().NumberLabel.caption == "Flag of 555 0100, Anna Lee");
    CHECK(desk.flag_form().BarredFlag.value);
    CHECK(desk.flag_form().ReasonText.text == "abuse");
    CHECK(desk.flag_form().UntilText.text == "12/31/2026");
    desk.choose(desk.flag_form().NoFlag);
    desk.flag_form().OKButton.on_click();
    CHECK(desk.sent() == Sent{"27 0 555 0100\3\3"});
  }

  TEST_CASE("the window keeps what was typed for its number, and begins anew with another") {
    ServedDesk desk;
    desk.open(0);
    desk.type(6, "555 0100");
    desk.form().FlagCaller.on_click();
    CHECK(desk.flag_form().focused() == &desk.flag_form().NoFlag);
    desk.choose(desk.flag_form().BarredFlag);
    desk.flag_form().ReasonText.edit("shouts", 6);
    desk.form().FlagCaller.on_click();
    CHECK(desk.flag_form().ReasonText.text == "shouts");
    CHECK(desk.flag_form().focused() == &desk.flag_form().BarredFlag);
    desk.type(6, "9");
    desk.form().FlagCaller.on_click();
    CHECK(desk.flag_form().ReasonText.text == "");
    CHECK(desk.flag_form().NoFlag.value);
  }

  TEST_CASE("a flag that holds for ever has no last day") {
    ServedDesk desk;
    desk.open(0);
    desk.type(6, "555 0100");
    desk.wait(400);
    desk.sent();
    desk.form().FlagCaller.on_click();
    desk.choose(desk.flag_form().RegularFlag);
    desk.flag_form().OKButton.on_click();
    CHECK(desk.sent() == Sent{"27 1 555 0100\3\3"});
  }

  TEST_CASE("a window that is cancelled sets no flag") {
    ServedDesk desk;
    desk.open(0);
    desk.type(6, "555 0100");
    desk.wait(400);
    desk.sent();
    desk.form().FlagCaller.on_click();
    desk.choose(desk.flag_form().BarredFlag);
    desk.flag_form().CancelButton.on_click();
    CHECK_FALSE(desk.flag_form().visible);
    CHECK(desk.sent().empty());
  }

  TEST_CASE("what is no number has no flag, and without the server's memory nobody has") {
    for (const bool is_number : {false, true}) {
      ServedDesk desk;
      desk.open(0);
      desk.type(6, is_number ? "555 0100" : "555");
      if (is_number) {
        desk.platform.winsock1.drop();
        desk.console.link.review();
      }
      desk.form().FlagCaller.on_click();
      CHECK_FALSE(desk.flag_form().visible);
    }
  }

  TEST_CASE("a memory that the server has from now on is asked for the number that stands there") {
    ServedDesk desk;
    desk.open(0);
    desk.type(6, "555 0100");
    desk.wait(400);
    CHECK(desk.sent() == Sent{"26 555 0100"});
    desk.platform.winsock1.drop();
    desk.console.link.review();
    desk.wait(1000);
    desk.connect_socket();
    desk.console.link.review();
    desk.tell_of_memory(no_value);
    CHECK(desk.form().memory() != CallerDataForm::Memory::Server);
    desk.wait(1000);
    CHECK(desk.sent().empty());
    desk.tell_of_memory();
    CHECK(desk.form().memory() == CallerDataForm::Memory::Server);
    desk.wait(400);
    CHECK(desk.sent() == Sent{"26 555 0100"});
  }

  TEST_CASE("a number that waits to be asked for isn't any more when the server goes") {
    ServedDesk desk;
    desk.open(0);
    desk.type(6, "555 0100");
    CHECK(desk.form().AskTimer.enabled);
    desk.platform.winsock1.drop();
    desk.console.link.review();
    CHECK_FALSE(desk.form().AskTimer.enabled);
  }

  TEST_CASE("what keeps a flag from being set is told, and nothing that was typed is lost") {
    ServedDesk desk;
    desk.open(0);
    desk.type(6, "555 0100");
    desk.form().FlagCaller.on_click();
    CallerFlagForm& flag = desk.flag_form();
    desk.choose(flag.BarredFlag);
    flag.ReasonText.edit(std::string(120, 'x'), 120);
    CHECK(flag.ReasonText.text.get().size() == 100);
    CHECK(flag.NoticeLabel.caption == "Reason takes no more than 100 characters");
    flag.UntilText.edit("soon", 4);
    const auto refused = [&](std::string_view why) {
      flag.OKButton.on_click();
      CHECK(flag.NoticeLabel.visible);
      CHECK(flag.NoticeLabel.caption == why);
      CHECK(flag.visible);
      CHECK(flag.ReasonText.text.get().size() == 100);
    };
    refused("The last day is no date: write it as 12/31/2026, or leave it empty.");
    CHECK(flag.UntilText.text == "soon");
    CHECK(flag.focused() == &flag.UntilText);
    flag.UntilText.edit("1/4/2026", 8);
    refused("The last day is over already.");
    flag.UntilText.edit("1/5/2026", 8);
    desk.console.program.CallerFlagAllowed = false;
    refused("Flags may not be set in this user profile.");
    desk.console.program.CallerFlagAllowed = true;
    desk.platform.winsock1.drop();
    desk.console.link.review();
    refused("The server isn't there now: the flag is not set.");
    desk.platform.winsock1.take_writes();
    desk.connect_socket();
    desk.console.link.review();
    desk.tell_of_memory();
    CHECK_FALSE(flag.NoticeLabel.visible);
    flag.OKButton.on_click();
    CHECK_FALSE(flag.visible);
  }

  TEST_CASE("who may not flag callers isn't offered it") {
    ServedDesk desk;
    desk.console.program.CallerFlagAllowed = false;
    desk.open(0);
    desk.type(6, "555 0100");
    CHECK_FALSE(desk.form().FlagCaller.visible);
  }

  TEST_CASE("the note of who is on air tells the flag first, and how often the server knows him") {
    ServedDesk desk;
    desk.report(2, "N");
    desk.tell(2, 2, anna_number);
    desk.record(2).set(CallerField::CallerName, "Anna Lee");
    desk.console.Lineweir.LineName(2).caption = "Anna Lee";
    desk.wait(2000);
    CHECK(desk.console.Lineweir.CallerNote(0).caption ==
          "3 Anna Lee \xb7 Careful: abuse \xb7 on air 3 times before, last 11/12/2026");
    desk.tell(2, 0, "");
    desk.wait(100);
    CHECK(desk.console.Lineweir.CallerNote(0).caption == "3 Anna Lee");
  }

  TEST_CASE("the window's notice goes when it begins anew with another number") {
    ServedDesk desk;
    desk.open(0);
    desk.type(6, "555 0100");
    desk.form().FlagCaller.on_click();
    desk.flag_form().UntilText.edit("soon", 4);
    desk.choose(desk.flag_form().BarredFlag);
    desk.flag_form().OKButton.on_click();
    CHECK(desk.flag_form().NoticeLabel.visible);
    desk.form().FlagCaller.on_click();
    CHECK(desk.flag_form().NoticeLabel.visible);
    desk.type(6, "9");
    desk.form().FlagCaller.on_click();
    CHECK_FALSE(desk.flag_form().NoticeLabel.visible);
    CHECK(desk.flag_form().UntilText.text == "");
  }

  TEST_CASE("the carets of the flag's texts stand behind them") {
    ServedDesk desk;
    desk.open(0);
    desk.type(6, "555 0100");
    desk.wait(400);
    desk.tell(no_value, 3, anna_number);
    desk.form().FlagCaller.on_click();
    CHECK(desk.flag_form().ReasonText.sel_start == 5);
    CHECK(desk.flag_form().UntilText.sel_start == 10);
  }

  TEST_CASE("an answer is shown once: whoever has declined it isn't offered it again") {
    ServedDesk desk;
    desk.open(0);
    desk.type(6, "555 0100");
    desk.wait(400);
    desk.tell(no_value, 3, anna_number);
    CHECK(desk.form().MemoryLabel.visible);
    desk.type(1, "A");
    CHECK_FALSE(desk.form().MemoryLabel.visible);
    desk.tell(2, 2, "555 0777\0037\0033\0032026-11-12 20:15\3Bo\3Troy\3\3\3");
    CHECK_FALSE(desk.form().MemoryLabel.visible);
    desk.tell(no_value, 3, anna_number);
    CHECK_FALSE(desk.form().MemoryLabel.visible);
    // A number that is typed anew is asked for, and its answer shown.
    desk.type(6, "\b0");
    desk.wait(400);
    desk.tell(no_value, 3, anna_number);
    CHECK(desk.form().MemoryLabel.visible);
  }

  TEST_CASE("nothing is asked for a form that was closed, nor for a number that was taken out") {
    ServedDesk desk;
    desk.open(0);
    desk.type(6, "555 0100");
    desk.form().close();
    desk.wait(1000);
    CHECK(desk.sent().empty());
    desk.open(1);
    desk.type(6, "555 0100");
    desk.box(6).edit("555", 3);
    desk.wait(1000);
    CHECK(desk.sent().empty());
    CHECK_FALSE(desk.form().AskTimer.enabled);
    // A flag that is set for a closed form's number asks for nothing.
    desk.box(6).edit("555 0100", 8);
    desk.wait(1000);
    CHECK(desk.sent() == Sent{"26 555 0100"});
    desk.form().FlagCaller.on_click();
    desk.choose(desk.flag_form().CarefulFlag);
    desk.form().close();
    desk.flag_form().OKButton.on_click();
    CHECK(desk.sent() == Sent{"27 2 555 0100\3\3"});
    desk.wait(1000);
    CHECK(desk.sent().empty());
  }

  TEST_CASE("a console that goes over to another link forgets what the server told") {
    ServedDesk desk;
    desk.tell(2, 3, anna_number);
    CHECK(desk.console.known_callers.on_line(2) != nullptr);
    // What else changes on the form changes nothing of it.
    desk.console.Lineweir.LineName(2).caption = "x";
    desk.console.Lineweir.WinsockMenu.enabled = true;
    CHECK(desk.console.known_callers.on_line(2) != nullptr);
    CHECK(desk.console.known_callers.served());
    desk.console.Lineweir.WinsockMenu.checked = false;
    CHECK(desk.console.known_callers.on_line(2) == nullptr);
    CHECK_FALSE(desk.console.known_callers.served());
    CHECK_FALSE(desk.console.known_callers.remembers());
  }
}

}  // namespace
}  // namespace lineweir::test
