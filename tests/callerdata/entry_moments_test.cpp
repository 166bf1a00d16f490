#include <doctest/doctest.h>

#include "base/time_text.h"
#include "callerdata/caller_data.h"
#include "support/line_desk.h"

namespace lineweir::test {
namespace {

// Ann is on a line when the console goes over to another studio group, and still there when it
// comes back.
struct Returning : LineDesk {
  explicit Returning(int ann_on = line) : at(ann_on) {
    server_reports('H', at);
    open(at);
    type(1, "Ann");
  }

  void leave() {
    wait(20);
    console.line_events.leave_group();
    wait(10);
    server_reports('H', at);
  }
  void come_back() {
    console.lines.ClockBase(at) = hms_text(seconds_of_day(platform.clock.now()) - 30);
    console.caller_data.lines_changed();
  }
  std::vector<int> unsaved() { return console.caller_data.lines_with_unsaved_data(); }
  void wait(int seconds) { platform.loop.advance(platform::Milliseconds(seconds * 1000)); }

  int at;
};

using Lines = std::vector<int>;

TEST_SUITE("callerdata/form 4 at odd moments") {
  TEST_CASE("what is typed for a caller until the console is back is his as well") {
    Returning desk;
    desk.leave();
    CHECK(desk.text(1) == "Ann");
    desk.type(1, "a");
    desk.come_back();
    CHECK(desk.text(1) == "Anna");
    CHECK_FALSE(desk.form().NoticeLabel.visible);
    CHECK(desk.unsaved() == Lines{line});
  }

  TEST_CASE("what was typed for a caller comes back while another's form is open") {
    Returning desk;
    desk.form().close();
    desk.leave();
    desk.open(5);
    desk.type(1, "Bo");
    desk.come_back();
    CHECK(desk.unsaved() == Lines{line, 5});
    CHECK(desk.text(1) == "Bo");
    desk.open(line);
    CHECK(desk.text(1) == "Ann");
  }

  TEST_CASE("what was typed for a caller comes into the empty form that was opened for him") {
    Returning desk;
    desk.form().close();
    desk.leave();
    desk.open(line);
    CHECK(desk.text(1) == "");
    desk.come_back();
    CHECK(desk.text(1) == "Ann");
    CHECK_FALSE(desk.form().OtherCall.visible);
  }

  TEST_CASE("who is on the first line, or the last, has what was typed for him") {
    for (const int at : {0, 9}) {
      CAPTURE(at);
      Returning desk(at);
      desk.form().close();
      desk.leave();
      CHECK(desk.unsaved().empty());
      desk.come_back();
      CHECK(desk.unsaved() == Lines{at});
    }
  }

  TEST_CASE("a text counts as unsaved from its first character on") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    CHECK(desk.console.caller_data.lines_with_unsaved_data().empty());
    desk.type(1, "A");
    CHECK(desk.console.caller_data.lines_with_unsaved_data() == Lines{line});
  }

  TEST_CASE("of a line that the studio has no more, the row is no data of its next caller") {
    LineDesk desk;
    desk.console.layout.set_line_count(lines_of_large_layout);
    desk.shown(12, 1).caption = "Ann";
    desk.open(12);
    CHECK(desk.text(1) == "Ann");
    desk.form().close();
    desk.console.caller_data.leave_lines(10);
    desk.open(12);
    CHECK(desk.text(1) == "");
  }

  TEST_CASE("the same data that are sent for the next caller are that caller's") {
    LineDesk desk;
    desk.connect_socket();
    const std::string data = "Tom\2Ann\2\2\2\2\2\2\2\2\2\2";
    desk.server_reports('H');
    desk.receive(line, data);
    desk.server_reports('F');
    desk.server_reports('H');
    desk.receive(line, data);
    desk.open(line);
    CHECK(desk.text(1) == "Ann");
  }

  TEST_CASE("the carets stand behind the texts however the form was left") {
    EntryForm test;
    test.open(0);
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      test.box(entry).edit("1", 1);
      test.box(entry).sel_start = 0;
    }
    test.form().close();
    test.open(0);
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      CAPTURE(entry);
      CHECK(test.box(entry).sel_start == 1);
    }
    CHECK(test.take_trace().empty());
  }

  TEST_CASE("a form that is opened again shows what the log has learnt since") {
    LineDesk desk;
    const auto log_call = [&] {
      const auto rows =
          desk.platform.databases.open(log_path)->open_recordset(std::string(call_log_table));
      rows->add_new();
      rows->set_field("PhoneNumber", "555-0100");
      rows->update();
    };
    log_call();
    desk.open(0);
    desk.type(phone_number_entry, "555 0100");
    CHECK(desk.form().MemoryLabel.caption == "Called once, never on air");
    desk.form().close();
    log_call();
    desk.open(0);
    CHECK(desk.form().MemoryLabel.caption == "Called 2 times, never on air");
  }

  TEST_CASE("a remark goes when something is typed") {
    LineDesk desk;
    desk.open(0);
    desk.console.caller_data.say("The caller is in the hall");
    CHECK(desk.tells("in the hall"));
    desk.type(1, "A");
    CHECK_FALSE(desk.tells("in the hall"));
  }

  TEST_CASE("an idle line's form stays its own while another line's ended call is held") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.box_sends("F03");
    desk.open(5);
    CHECK(desk.form().caption == "Caller Data - Line 6");
    CHECK(desk.text(1) == "");
    CHECK_FALSE(desk.tells("hung up"));
  }
}

}  // namespace
}  // namespace lineweir::test
