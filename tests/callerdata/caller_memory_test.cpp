#include "callerdata/caller_memory.h"

#include <doctest/doctest.h>

#include "forms/call_log_columns.h"
#include "support/call_log_file.h"
#include "support/entry_form.h"

namespace lineweir::test {
namespace {

// A console whose log knows Ann Lee of Bath by the number 555-0100.
struct KnownCaller : EntryForm {
  KnownCaller() {
    create_log(platform);
    const auto database = platform.databases.open(log_path);
    const auto rows = database->open_recordset(std::string(call_log_table));
    rows->add_new();
    rows->set_field("PhoneNumber", "555-0100");
    rows->set_field("Caller Name", "Ann Lee");
    rows->set_field("City", "Bath");
    rows->set_field("Date", "1/5/2026");
    rows->set_field("Time_Placed_On_Air", "10:00:00 AM");
    rows->update();
    console.Lineweir.Data1.database_name = log_path;
  }

  bool offers() { return form().MemoryLabel.visible && form().MemoryFill.visible; }
  bool silent() { return !form().MemoryLabel.visible && !form().MemoryFill.visible; }
};

TEST_SUITE("callerdata/caller memory") {
  TEST_CASE("a number that is typed brings the history up, beside the fields") {
    KnownCaller test;
    test.open(0);
    test.type(6, "555010");
    CHECK(test.silent());
    test.type(6, "0");
    CHECK(test.offers());
    CHECK(test.form().MemoryLabel.caption ==
          "Called once, on air once\r\nLast on air 1/5/2026 10:00:00 AM\r\nAnn Lee, Bath");
    CHECK(test.focused() == 6);
    CHECK(test.take_messages().empty());
    test.type(6, "0");
    CHECK(test.silent());
    test.type(6, "\b");
    CHECK(test.offers());
  }

  TEST_CASE("a log that can't be read now says why in the place of what it knows") {
    KnownCaller test;
    test.open(0);
    test.platform.failing_databases.fail(failure_number::database_in_use);
    test.type(6, "5550100");
    CHECK(test.form().MemoryLabel.visible);
    CHECK(test.form().MemoryLabel.caption == "The file 'calls.lwl' is in use by another program.");
    CHECK_FALSE(test.form().MemoryFill.visible);
    test.platform.failing_databases.fail(0);
    test.type(6, "\b0");
    CHECK(test.offers());
  }

  TEST_CASE("filling in takes name and city, and the focus goes to what is still empty") {
    KnownCaller test;
    test.use_only({1, 3, 6, 9});
    test.open(0);
    test.type(6, "555 0100");
    test.form().MemoryFill.on_click();
    CHECK(test.text(1) == "Ann Lee");
    CHECK(test.text(3) == "Bath");
    CHECK(test.focused() == 9);
    CHECK(test.silent());
    test.save();
    CHECK(test.shown(0, 1).caption == "Ann Lee");
  }

  TEST_CASE("the button names what it fills in, and fills all of it") {
    KnownCaller test;
    test.open(0);
    test.type(6, "5550100");
    CHECK(test.form().MemoryFill.caption == "&Fill in name and city");
    test.box(1).edit("Bob", 3);
    CHECK(test.form().MemoryFill.caption == "&Fill in city");
    test.form().MemoryFill.on_click();
    CHECK(test.text(1) == "Bob");
    CHECK(test.text(3) == "Bath");
  }

  TEST_CASE("with nothing to fill in there is no button") {
    KnownCaller test;
    test.use_only({1, 6});
    test.open(0);
    test.type(1, "Bob");
    test.type(6, "5550100");
    CHECK(test.form().MemoryLabel.visible);
    CHECK_FALSE(test.form().MemoryFill.visible);
    // Half a name is no other one.
    test.box(1).edit("ann", 3);
    CHECK(test.form().MemoryFill.caption == "&Fill in name");
    CHECK(test.form().MemoryFill.visible);
    test.form().MemoryFill.on_click();
    CHECK(test.text(1) == "Ann Lee");
    CHECK(test.text(3) == "");
    CHECK(test.form().focused() == &test.form().Command3D1);
  }

  TEST_CASE("Esc and typing on decline") {
    for (const char* keys : {"\x1b", "B"}) {
      KnownCaller test;
      test.open(0);
      test.type(6, "5550100");
      CHECK(test.offers());
      test.type(1, keys);
      CHECK(test.silent());
    }
  }

  TEST_CASE("going to the next field is not declining") {
    KnownCaller test;
    test.open(0);
    test.type(6, "5550100\r");
    CHECK(test.focused() == 7);
    CHECK(test.offers());
  }

  TEST_CASE("a number that the row has already is looked up when the form opens") {
    KnownCaller test;
    test.shown(2, 6).caption = "555-0100";
    test.open(2);
    CHECK(test.offers());
    test.open(3);
    CHECK(test.silent());
  }

  TEST_CASE("a number that arrives is looked up for the line that the form holds") {
    KnownCaller test;
    test.open(2);
    std::string data = "Jo\2";
    for (int entry = 1; entry <= entry_field_count; ++entry)
      data += (entry == 6 ? "5550100\2" : "\2");
    const auto call_back = [&](int line) {
      test.platform.remote_objects.call_back("ReturnCallerData",
                                             {data, std::int64_t{line}, std::int64_t{1}});
      test.platform.loop.run_pending();
    };
    call_back(4);
    CHECK(test.silent());
    call_back(3);
    CHECK(test.offers());
    CHECK(test.text(6) == "5550100");
  }

  TEST_CASE("a number that arrives isn't looked up in the place of the one that was typed") {
    KnownCaller test;
    test.open(2);
    test.type(6, "555 9999");
    test.platform.remote_objects.call_back("ReturnCallerData", {"Jo\2\2\2\2\2\2"
                                                                "5550100\2\2\2\2\2",
                                                                std::int64_t{3}, std::int64_t{1}});
    test.platform.loop.run_pending();
    CHECK(test.text(6) == "555 9999");
    CHECK(test.silent());
  }

  TEST_CASE("a caller without a name or city is told, with nothing to fill in") {
    KnownCaller test;
    const auto rows =
        test.platform.databases.open(log_path)->open_recordset(std::string(call_log_table));
    rows->add_new();
    rows->set_field("PhoneNumber", "5550199");
    rows->update();
    test.open(0);
    test.type(6, "5550199");
    CHECK(test.form().MemoryLabel.visible);
    CHECK_FALSE(test.form().MemoryFill.visible);
  }

  TEST_CASE("without a log nothing is looked up, and a log that fails says so in its place") {
    KnownCaller test;
    test.console.Lineweir.Data1.database_name = "";
    test.open(0);
    test.type(6, "5550100");
    CHECK(test.silent());
    CHECK(test.take_trace().empty());

    test.console.Lineweir.Data1.database_name = "gone";
    test.type(6, "1");
    CHECK(test.form().MemoryLabel.visible);
    CHECK_FALSE(test.form().MemoryFill.visible);
    CHECK(test.take_messages().empty());
    CHECK(test.take_trace().at(0).starts_with("Form4_TheText_Change Error - "));
    CHECK(test.text(6) == "55501001");
  }

  TEST_CASE("Esc that declines an offer does nothing else, and is a key like others without one") {
    KnownCaller test;
    test.open(0);
    test.type(6, "5550100");
    CHECK(test.offers());
    int key = 27;
    test.box(6).on_key_press(key);
    CHECK(key == 0);
    key = 27;
    test.box(6).on_key_press(key);
    CHECK(key == 27);
    // A letter is typed all the same.
    test.type(6, "\b0");
    CHECK(test.offers());
    key = 'x';
    test.box(1).on_key_press(key);
    CHECK(key == 'x');
    CHECK(test.silent());
  }

  TEST_CASE("filling in leaves the caret behind the texts and the focus in the next empty field") {
    KnownCaller test;
    test.open(0);
    for (int entry = 1; entry < entry_field_count; ++entry) {
      if (entry != 1 && entry != 3 && entry != 6 && entry != 8) test.box(entry).edit("x", 1);
    }
    test.box(8).edit("Female", 6);
    test.type(6, "5550100");
    test.form().MemoryFill.on_click();
    CHECK(test.box(1).sel_start == 7);
    CHECK(test.box(3).sel_start == 4);
    CHECK(test.focused() == entry_field_count);
    CHECK(test.silent());
  }

  TEST_CASE("another log in the place of the one that was open is looked into") {
    KnownCaller test;
    test.open(0);
    test.type(6, "5550100");
    CHECK(test.offers());
    test.platform.databases.remove(log_path);
    create_log(test.platform);
    const auto rows =
        test.platform.databases.open(log_path)->open_recordset(std::string(call_log_table));
    rows->add_new();
    rows->set_field("PhoneNumber", "555-0100");
    rows->set_field("Caller Name", "Bea Lee");
    rows->update();
    test.type(6, "\b0");
    CHECK(test.form().MemoryLabel.caption == "Called once, never on air\r\nBea Lee");
    // And so is one that is chosen.
    test.platform.databases.create("other.lwl")
        ->create_table(std::string(call_log_table), new_log_columns("User"));
    test.console.Lineweir.Data1.database_name = "other.lwl";
    test.type(6, "\b0");
    CHECK(test.silent());
    test.console.Lineweir.Data1.database_name = log_path;
    test.type(6, "\b0");
    CHECK(test.offers());
  }
}

}  // namespace
}  // namespace lineweir::test
