#include <doctest/doctest.h>

#include "base/time_text.h"
#include "callerdata/caller_data.h"
#include "support/line_desk.h"

namespace lineweir::test {
namespace {

TEST_SUITE("callerdata/the next caller on the line") {
  TEST_CASE("the form stays with the caller before, and the new one is a click away") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.type(6, "5550100");
    desk.box_sends("F03");
    CHECK_FALSE(desk.form().OtherCall.visible);
    desk.box_sends("R03");
    CHECK(desk.text(1) == "Ann");
    CHECK(desk.tells(hung_up));
    CHECK(desk.form().OtherCall.visible);
    CHECK(desk.form().OtherCall.caption == "&New caller");

    desk.form().OtherCall.on_click();
    CHECK(desk.text(1) == "");
    CHECK(desk.text(6) == "");
    CHECK(desk.focused() == 1);
    CHECK_FALSE(desk.form().NoticeLabel.visible);
    CHECK_FALSE(desk.form().DiscardCall.visible);
    CHECK(desk.form().OtherCall.visible);
    CHECK(desk.form().OtherCall.caption == "Form&er caller");
    desk.type(1, "Bob");

    desk.form().OtherCall.on_click();
    CHECK(desk.text(1) == "Ann");
    CHECK(desk.tells(hung_up));
    desk.save();
    REQUIRE(desk.rows().size() == 1);
    CHECK(desk.rows()[0][log_name] == "Ann");
    CHECK(desk.shown(line, 1).caption == "");

    desk.open(line);
    CHECK(desk.text(1) == "Bob");
    CHECK_FALSE(desk.form().OtherCall.visible);
    desk.save();
    CHECK(desk.shown(line, 1).caption == "Bob");
    desk.box_sends("F03");
    REQUIRE(desk.rows().size() == 2);
    CHECK(desk.rows()[1][log_name] == "Bob");
  }

  TEST_CASE("a right click on the line opens the new caller's empty form") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.box_sends("F03");
    desk.open(line);
    // Nobody is on the line.
    CHECK(desk.text(1) == "Ann");
    desk.box_sends("R03");
    desk.open(line);
    CHECK(desk.text(1) == "");
    CHECK(desk.form().OtherCall.visible);
    desk.form().close();
    desk.open(line);
    CHECK(desk.text(1) == "");
  }

  TEST_CASE("a report that opens the form doesn't take the user away from the caller before") {
    LineDesk desk;
    desk.console.Lineweir.AutoDataEntry.checked = true;
    desk.server_reports('R');
    desk.server_reports('P');
    REQUIRE(desk.form().visible);
    desk.type(1, "Ann");
    desk.server_reports('F');
    desk.server_reports('R');
    desk.server_reports('P');
    CHECK(desk.text(1) == "Ann");
    CHECK(desk.form().OtherCall.visible);
    desk.type(1, "a");
    CHECK(desk.text(1) == "Anna");
    desk.save();
    CHECK(desk.rows().size() == 1);
    // With nothing typed there is nothing to stay for.
    desk.open(line);
    desk.server_reports('F');
    CHECK(desk.tells(hung_up));
    desk.server_reports('R');
    desk.server_reports('P');
    CHECK_FALSE(desk.form().NoticeLabel.visible);
  }

  TEST_CASE("drafts of closed forms wait for their own call") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.form().close();
    desk.box_sends("F03");
    desk.open(line);
    CHECK(desk.text(1) == "Ann");
    CHECK(desk.tells(hung_up));
    desk.form().close();
    desk.box_sends("R03");
    desk.open(line);
    CHECK(desk.text(1) == "");
    desk.form().OtherCall.on_click();
    desk.form().DiscardCall.on_click();
    CHECK_FALSE(desk.form().loaded());
    CHECK(desk.rows().empty());
    desk.open(line);
    CHECK_FALSE(desk.form().OtherCall.visible);
  }

  TEST_CASE("what was typed on an idle line isn't the next caller's") {
    LineDesk desk;
    desk.open(line);
    desk.type(1, "Ann");
    desk.box_sends("R03");
    CHECK(desk.tells(hung_up));
    desk.open(line);
    CHECK(desk.text(1) == "");
    // An own call has begun when its caller's name is typed.
    desk.form().close();
    desk.open(5);
    desk.type(1, "Zoe");
    desk.box_sends("P05");
    CHECK_FALSE(desk.form().NoticeLabel.visible);
    CHECK(desk.text(1) == "Zoe");
  }

  TEST_CASE("a row that still shows the caller before is no data of the next") {
    LineDesk desk;
    desk.server_reports('N');
    desk.open(line);
    desk.type(1, "Ann");
    desk.type(3, "Bath");
    desk.save();
    // Taken by other equipment: the record is cleared, the row isn't.
    desk.server_reports('E');
    CHECK(desk.shown(line, 1).caption == "Ann");
    desk.server_reports('P');
    desk.open(line);
    CHECK(desk.text(1) == "");
    CHECK(desk.text(3) == "");
    // Saved for this caller, or come from another seat, the same texts count.
    desk.type(1, "Ann");
    desk.save();
    desk.open(line);
    CHECK(desk.text(1) == "Ann");
  }

  TEST_CASE("equipment of kind 2 rings a caller back, or a new one in") {
    LineDesk desk;
    desk.console.lines.ThePhoneFlag = 2;
    desk.server_reports('S');
    desk.open(line);
    desk.type(1, "Ann");
    desk.save();
    desk.open(line);
    desk.server_reports('R');
    desk.server_reports('R');
    CHECK_FALSE(desk.form().NoticeLabel.visible);
    CHECK(desk.text(1) == "Ann");
    desk.form().close();
    // Freed while the connection was made anew: the data stay in the record.
    desk.console.lines.FreshConnect = true;
    desk.server_reports('F');
    CHECK(trimmed(desk.record(line)[CallerField::CallerName]) == "Ann");
    desk.server_reports('R');
    desk.open(line);
    CHECK(desk.text(1) == "");
  }

  TEST_CASE("a line that is restored after a connection keeps its caller's data") {
    LineDesk desk;
    desk.server_reports('N');
    desk.open(line);
    desk.type(1, "Ann");
    desk.save();
    desk.console.lines.FreshConnect = true;
    desk.server_reports('F');
    desk.server_reports('N');
    desk.open(line);
    CHECK(desk.text(1) == "Ann");
  }

  TEST_CASE("a call that goes on in the group that is left is logged, and once only") {
    LineDesk desk;
    desk.server_reports('R');
    desk.server_reports('H');
    desk.open(line);
    desk.type(1, "Ann");
    desk.save();
    desk.console.line_events.leave_group();
    REQUIRE(desk.rows().size() == 1);
    CHECK(desk.rows()[0][log_name] == "Ann");

    SUBCASE("its end is seen after the console has come back to it") {
      desk.server_reports('H');
      desk.shown(line, 1).caption = "Ann";
      desk.console.lines.CallerData(line).set(CallerField::CallerName, "Ann");
      desk.console.lines.CallerData(line).set(CallerField::Comments, "Cats");
      desk.console.Lineweir.labels_of(CallerField::Comments)(line).caption = "Cats";
      desk.server_reports('F');
      REQUIRE(desk.rows().size() == 1);
      CHECK(desk.rows()[0][log_name] == "Ann");
      CHECK(desk.rows()[0][log_comments] == "Cats");
    }
    SUBCASE("the times that only the first record knows stay") {
      desk.server_reports('H');
      CallerRecord& record = desk.console.lines.CallerData(line);
      desk.shown(line, 1).caption = "Ann";
      record.set(CallerField::CallerName, "Ann");
      record.set(CallerField::TimePlacedOnAir, "09:30:00");
      record.set(CallerField::TimeOnAir, "00:05:00");
      desk.console.line_events.leave_group();
      desk.server_reports('H');
      desk.shown(line, 1).caption = "Ann";
      record.set(CallerField::CallerName, "Ann");
      record.set(CallerField::TimePlacedOnAir, "09:50:00");
      desk.server_reports('F');
      const auto row = desk.rows().back();
      CHECK(row[log_placed_on_air] == "09:30:00");
      CHECK(row[log_on_air] == "00:05:00");
    }
    SUBCASE("another caller is on the line by then") {
      desk.server_reports('H');
      desk.shown(line, 1).caption = "Bob";
      desk.console.lines.CallerData(line).set(CallerField::CallerName, "Bob");
      desk.server_reports('F');
      REQUIRE(desk.rows().size() == 2);
    }
  }

  TEST_CASE("another studio group has other callers on its lines") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.shown(line, 3).caption = "Bath";
    desk.console.line_events.leave_group();
    CHECK(desk.tells("The caller is in the studio group that was left"));
    desk.box_sends("N03");
    desk.open(line);
    CHECK(desk.text(1) == "");
    CHECK(desk.text(3) == "");
    desk.form().OtherCall.on_click();
    desk.connect_socket();
    desk.save();
    REQUIRE(desk.rows().size() == 1);
    CHECK(desk.rows()[0][log_name] == "Ann");
    CHECK(desk.platform.winsock1.take_writes().empty());
    CHECK(desk.shown(line, 1).caption == "");
  }

  TEST_CASE("who is still there when the console comes back has what was typed for him") {
    LineDesk desk;
    const auto wait = [&](int seconds) {
      desk.platform.loop.advance(platform::Milliseconds(seconds * 1000));
    };
    const auto clock_runs_since = [&](int seconds) {
      const int now = seconds_of_day(desk.platform.clock.now());
      desk.console.lines.ClockBase(line) = hms_text(now - seconds);
    };
    desk.server_reports('H');
    desk.open(line);
    desk.type(1, "Ann");
    bool closed = false;
    SUBCASE("in the open window") {}
    SUBCASE("in a window that was closed") {
      desk.form().unload();
      closed = true;
    }
    wait(20);
    desk.console.line_events.leave_group();
    desk.console.program.GroupNumber = 2;
    desk.server_reports('H');
    clock_runs_since(100);
    desk.console.caller_data.lines_changed();
    // The line of another group.
    CHECK(desk.console.caller_data.lines_with_unsaved_data().empty());
    desk.console.line_events.leave_group();
    desk.console.program.GroupNumber = 1;
    wait(10);

    desk.server_reports('H');
    SUBCASE("his clock ran before") {
      clock_runs_since(30);
      desk.console.caller_data.lines_changed();
      CHECK(desk.form().loaded() == !closed);
      CHECK(desk.console.caller_data.lines_with_unsaved_data() == std::vector<int>{line});
      desk.open(line);
      CHECK(desk.text(1) == "Ann");
      CHECK_FALSE(desk.form().NoticeLabel.visible);
      CHECK_FALSE(desk.form().DiscardCall.visible);
      CHECK_FALSE(desk.form().OtherCall.visible);
      desk.connect_socket();
      desk.save();
      CHECK(desk.shown(line, 1).caption == "Ann");
      CHECK(desk.console.caller_data.lines_with_unsaved_data().empty());
    }
    SUBCASE("the clock began since") {
      clock_runs_since(8);
      desk.console.caller_data.lines_changed();
      CHECK(desk.console.caller_data.lines_with_unsaved_data().empty());
      desk.open(line);
      CHECK(desk.text(1) == "");
      CHECK(desk.form().OtherCall.visible);
    }
    SUBCASE("something was typed for him anew") {
      desk.open(line);
      desk.type(1, "Anna");
      clock_runs_since(30);
      desk.console.caller_data.lines_changed();
      CHECK(desk.text(1) == "Anna");
      CHECK(desk.form().OtherCall.visible);
    }
  }
}

}  // namespace
}  // namespace lineweir::test
