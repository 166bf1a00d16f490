#include <doctest/doctest.h>

#include "base/time_text.h"
#include "callerdata/caller_data.h"
#include "callerdata/draft_file.h"
#include "support/line_desk.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* hung_up = "The caller has hung up";

// Column positions of the log.
constexpr std::size_t log_name = 0;
constexpr std::size_t log_city = 2;
constexpr std::size_t log_comments = 6;
constexpr std::size_t log_date = 9;
constexpr std::size_t log_placed_on_air = 11;
constexpr std::size_t log_on_air = 12;

TEST_SUITE("callerdata/a caller who hangs up") {
  TEST_CASE("the form says so, and saving writes the call's record and nothing else") {
    LineDesk desk;
    desk.connect_socket();
    desk.box_sends("N03");
    desk.platform.loop.advance(platform::Milliseconds(5000));
    desk.open(line);
    desk.type(1, "Ann");
    CHECK_FALSE(desk.form().NoticeLabel.visible);
    CHECK_FALSE(desk.form().DiscardCall.visible);
    desk.box_sends("F03");
    CHECK(desk.form().NoticeLabel.visible);
    CHECK(desk.form().NoticeLabel.caption == hung_up);
    CHECK(desk.form().DiscardCall.visible);
    CHECK_FALSE(desk.form().OtherCall.visible);
    // The call had no data.
    CHECK(desk.rows().empty());
    desk.platform.winsock1.take_writes();

    desk.type(3, "Bath");
    desk.save();
    const auto rows = desk.rows();
    REQUIRE(rows.size() == 1);
    CHECK(rows[0][log_name] == "Ann");
    CHECK(rows[0][log_city] == "Bath");
    CHECK(rows[0][log_date] == "1/5/2026");
    CHECK(rows[0][log_placed_on_air] == "10:00:00 AM");
    CHECK(rows[0][log_on_air] == "00:00:05");
    CHECK_FALSE(desk.form().loaded());
    CHECK(desk.shown(line, 1).caption == "");
    CHECK_FALSE(desk.record(line).holds_data());
    CHECK(desk.platform.winsock1.take_writes().empty());
    CHECK(desk.take_messages().empty());
  }

  TEST_CASE("a call that was logged is completed in its row") {
    LineDesk desk;
    desk.box_sends("S03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.save();
    desk.open(line);
    desk.type(9, "Bridge");
    desk.box_sends("F03");
    REQUIRE(desk.rows().size() == 1);
    CHECK(desk.rows()[0][log_comments] == "");
    desk.save();
    REQUIRE(desk.rows().size() == 1);
    CHECK(desk.rows()[0][log_name] == "Ann");
    CHECK(desk.rows()[0][log_comments] == "Bridge");
  }

  TEST_CASE("each letter that ends a call ends it for the form") {
    for (const char letter : {'F', 'R', 'E', 'B'}) {
      CAPTURE(letter);
      LineDesk box;
      box.box_sends("N03");
      box.open(line);
      box.type(1, "Ann");
      box.box_sends(std::string(1, letter) + "03");
      CHECK(box.tells(hung_up));

      LineDesk server;
      server.server_reports('N');
      server.open(line);
      server.type(1, "Ann");
      server.server_reports(letter);
      CHECK(server.tells(hung_up));
    }
    for (const char letter : {'S', 'H', 'P', 'O', 'N', 'C'}) {
      CAPTURE(letter);
      LineDesk box;
      box.box_sends("R03");
      box.open(line);
      box.box_sends(std::string(1, letter) + "03");
      CHECK_FALSE(box.form().NoticeLabel.visible);
    }
  }

  TEST_CASE("without a log the text stays until one is chosen") {
    LineDesk desk;
    desk.console.Lineweir.Data1.database_name = "";
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.box_sends("F03");
    desk.save();
    CHECK(desk.take_messages().size() == 1);
    CHECK(desk.form().loaded());
    CHECK(desk.text(1) == "Ann");
    desk.console.Lineweir.Data1.database_name = log_path;
    desk.save();
    CHECK_FALSE(desk.form().loaded());
    REQUIRE(desk.rows().size() == 1);
    CHECK(desk.rows()[0][log_name] == "Ann");
  }

  TEST_CASE("a call is completed in the log that it was written to") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.save();
    desk.open(line);
    desk.type(3, "Bath");
    desk.box_sends("F03");
    desk.platform.loop.run_pending();
    desk.console.Lineweir.Data1.database_name = "";
    desk.save();
    CHECK(desk.take_messages().empty());
    REQUIRE(desk.rows().size() == 1);
    CHECK(desk.rows()[0][log_city] == "Bath");
  }

  TEST_CASE("with nothing known of the caller nothing is logged") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.box_sends("F03");
    desk.save();
    CHECK_FALSE(desk.form().loaded());
    CHECK(desk.rows().empty());
    CHECK(desk.take_messages().empty());
  }

  TEST_CASE("without the right nothing is logged either") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.box_sends("F03");
    desk.console.program.CallerDataAllowed = false;
    desk.save();
    CHECK(desk.take_messages() == Texts{"Caller Data Entry not allowed in this user profile"});
    CHECK(desk.rows().empty());
    CHECK(desk.text(1) == "Ann");
  }

  TEST_CASE("data of others don't come into the form any more") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.box_sends("F03R03");
    desk.platform.remote_objects.call_back(
        "ReturnCallerData",
        {"Jo\2Bob\2\2Bath\2\2\2\2\2\2\2\2", std::int64_t{line + 1}, std::int64_t{1}});
    desk.platform.loop.run_pending();
    CHECK(desk.text(1) == "Ann");
    CHECK(desk.text(3) == "");
    CHECK(desk.form().NoticeLabel.caption == hung_up);
  }

  TEST_CASE("a call that ends while saving waits for the server sends nothing to the next one") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.console.Lineweir.NetworkConnectionOption.checked = true;
    desk.platform.loop.schedule(platform::Milliseconds(0), [&] {
      desk.platform.comm1.arrive("F03");
      desk.connect_remote();
    });
    desk.save();
    CHECK(desk.platform.remote_objects.take_calls().empty());
    CHECK(desk.form().loaded());
    CHECK(desk.tells(hung_up));
    CHECK(desk.text(1) == "Ann");
  }
}

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
      clock_runs_since(10);
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

TEST_SUITE("callerdata/drafts outlive the program") {
  std::string draft_file(LineDesk & desk) {
    return desk.platform.files.read(std::string(draft_file_name)).value_or("");
  }

  // Another run of the program, which finds this file.
  struct NextRun : LineDesk {
    explicit NextRun(const std::string& file) {
      platform.files.replace(std::string(draft_file_name), file);
      console.caller_data.restore_drafts();
    }
  };

  TEST_CASE("without drafts there is no file") {
    LineDesk desk;
    desk.open(line);
    desk.type(1, "Ann");
    desk.save();
    desk.platform.loop.advance(platform::Milliseconds(2000));
    CHECK_FALSE(desk.platform.files.exists(std::string(draft_file_name)));
    CHECK(desk.take_messages().empty());
  }

  TEST_CASE("half a second after it was typed a text survives the end of the program") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.platform.loop.advance(platform::Milliseconds(5000));
    desk.open(line);
    desk.type(1, "Ann \"x\", Lee");
    desk.platform.loop.advance(platform::Milliseconds(500));

    NextRun next(draft_file(desk));
    CHECK(next.take_messages() ==
          Texts{"Caller data was typed and not saved when Lineweir ended: line 4 (Ann \"x\", Lee). "
                "Open the caller data of the line to save it."});
    next.open(line);
    CHECK(next.text(1) == "Ann \"x\", Lee");
    CHECK(next.tells(hung_up));
    next.save();
    REQUIRE(next.rows().size() == 1);
    CHECK(next.rows()[0][log_name] == "Ann \"x\", Lee");
    CHECK(next.rows()[0][log_placed_on_air] == "10:00:00 AM");
    CHECK(draft_file(next) == "");
  }

  TEST_CASE("a caller who is on the line in the next run gets an empty form") {
    LineDesk desk;
    desk.open(line);
    desk.type(1, "Ann");
    desk.console.caller_data.keep_draft();
    NextRun next(draft_file(desk));
    next.box_sends("N03");
    next.open(line);
    CHECK(next.text(1) == "");
    CHECK(next.form().OtherCall.visible);
    next.form().OtherCall.on_click();
    CHECK(next.text(1) == "Ann");
  }

  TEST_CASE("a caller whose clock ran already in the run before has what was typed for him") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.console.caller_data.keep_draft();
    NextRun next(draft_file(desk));
    next.server_reports('H');
    next.console.lines.ClockBase(line) = "09:59:00";
    next.console.caller_data.lines_changed();
    next.open(line);
    CHECK(next.text(1) == "Ann");
    CHECK_FALSE(next.form().OtherCall.visible);
    next.connect_socket();
    next.save();
    CHECK(next.shown(line, 1).caption == "Ann");
    CHECK(draft_file(next) == "");
  }

  TEST_CASE("who hung up in the run before isn't the one whose clock runs in this one") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.console.caller_data.keep_draft();
    desk.box_sends("F03");
    NextRun next(draft_file(desk));
    next.server_reports('H');
    next.console.lines.ClockBase(line) = "09:59:00";
    next.console.caller_data.lines_changed();
    next.open(line);
    CHECK(next.text(1) == "");
  }

  TEST_CASE("the draft of a line that isn't there any more is found on the last one") {
    LineDesk desk;
    desk.console.layout.set_line_count(lines_of_large_layout);
    desk.open(17);
    desk.type(1, "Ann");
    desk.console.caller_data.keep_draft();
    NextRun next(draft_file(desk));
    next.open(9);
    CHECK(next.text(1) == "Ann");
  }

  TEST_CASE("a saved or discarded text leaves the file") {
    LineDesk desk;
    desk.open(line);
    desk.type(1, "Ann");
    desk.form().close();
    CHECK(draft_file(desk) != "");
    desk.open(line);
    desk.save();
    CHECK(draft_file(desk) == "");
  }

  TEST_CASE("several restored texts are told with their lines, and each is saved as its own call") {
    LineDesk desk;
    desk.box_sends("N03N04");
    desk.open(line);
    desk.type(1, "Ann");
    desk.open(4);
    desk.type(3, "Bath");
    desk.form().close();
    NextRun next(draft_file(desk));
    CHECK(next.take_messages() ==
          Texts{"Caller data was typed and not saved when Lineweir ended: line 4 (Ann), line 5. "
                "Open the caller data of the line to save it."});
    next.open(4);
    CHECK(next.text(3) == "Bath");
    CHECK(next.text(1) == "");
    next.save();
    CHECK(next.rows().size() == 1);
    next.open(line);
    CHECK(next.text(1) == "Ann");
    next.form().DiscardCall.on_click();
    CHECK(next.rows().size() == 1);
    CHECK(draft_file(next) == "");
  }

  TEST_CASE("a file that can't be read as drafts is passed over") {
    for (const char* file : {"", "x", "\"", "Line,Call log\r\n1,2\r\n", "\0\xff\n"}) {
      NextRun next(file);
      CHECK(next.take_messages().empty());
    }
  }

  TEST_CASE("the first line and the last have callers before and after as others have") {
    for (const int at : {0, 9}) {
      CAPTURE(at);
      const std::string number = at == 0 ? "00" : "09";
      LineDesk desk;
      desk.box_sends("N" + number);
      desk.open(at);
      desk.type(1, "Ann");
      desk.box_sends("F" + number);
      CHECK_FALSE(desk.form().OtherCall.visible);
      desk.box_sends("R" + number);
      CHECK(desk.form().OtherCall.visible);
      desk.open(at);
      CHECK(desk.text(1) == "");
      desk.form().OtherCall.on_click();
      CHECK(desk.text(1) == "Ann");
      desk.save();
      CHECK(desk.rows().size() == 1);
    }
  }

  TEST_CASE("what is held of one line's ended call opens no form of another line") {
    LineDesk desk;
    desk.box_sends("N03N04");
    desk.open(line);
    desk.type(1, "Ann");
    desk.box_sends("F03");
    desk.open(4);
    CHECK(desk.text(1) == "");
    CHECK_FALSE(desk.form().NoticeLabel.visible);
    desk.open(5);
    CHECK(desk.text(1) == "");
    CHECK_FALSE(desk.form().DiscardCall.visible);
    desk.open(line);
    CHECK(desk.text(1) == "Ann");
    CHECK(desk.tells(hung_up));
  }

  TEST_CASE("a text that was kept needs no further keeping until it is typed on") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    CHECK(desk.form().DraftTimer.enabled);
    desk.platform.loop.advance(platform::Milliseconds(600));
    CHECK_FALSE(desk.form().DraftTimer.enabled);
    desk.type(1, "a");
    CHECK(desk.form().DraftTimer.enabled);
    desk.form().close();
    CHECK_FALSE(desk.form().DraftTimer.enabled);
  }
}

}  // namespace
}  // namespace lineweir::test
