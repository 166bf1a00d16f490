#include <doctest/doctest.h>

#include "base/time_text.h"
#include "support/next_run.h"
#include "wire/server_packet_codec.h"

namespace lineweir::test {
namespace {

void save_as(LineDesk& desk, const std::string& name) {
  desk.connect_socket();
  desk.open(line);
  desk.type(1, name);
  desk.type(3, "Bath");
  desk.save();
}

void save_ann(LineDesk& desk) { save_as(desk, "Ann"); }

void wait(LineDesk& desk, int seconds) {
  desk.platform.loop.advance(platform::Milliseconds(seconds * 1000));
}

// What a console leaves that is killed while Ann is on air and her data are saved.
std::string left_with_ann_on_air() {
  LineDesk desk;
  desk.box_sends("N03");
  save_ann(desk);
  CHECK(desk.rows().empty());
  return draft_file(desk);
}

// A minute later.
struct LaterRun : NextRun {
  explicit LaterRun(const std::string& file) : NextRun(file) { wait(*this, 60); }
};

// A session has begun, and the server has told from when on the call on the line lasts.
void report_same_call(LineDesk& desk, const std::string& began = "09:59:00", char letter = 'N') {
  desk.console.lines.FreshConnect = true;
  desk.console.lines.ClockBase(line) = began;
  desk.server_reports(letter);
}

TEST_SUITE("callerdata/saved data outlive the program") {
  TEST_CASE("who has hung up by the next run is logged as far as it was known") {
    LaterRun next(left_with_ann_on_air());
    CHECK(next.take_messages().empty());
    CHECK(next.rows().empty());
    next.box_sends("F03");
    REQUIRE(next.rows().size() == 1);
    CHECK(next.rows()[0][log_name] == "Ann");
    CHECK(next.rows()[0][log_city] == "Bath");
    CHECK(next.rows()[0][log_placed_on_air] == "10:00:00 AM");
    CHECK(draft_file(next) == "");
    next.box_sends("R03F03");
    CHECK(next.rows().size() == 1);
  }

  TEST_CASE("so is one of whom it can't be told whether he is the one on the line") {
    LaterRun next(left_with_ann_on_air());
    next.box_sends("N03");
    CHECK(next.rows().size() == 1);
    next.open(line);
    CHECK(next.text(1) == "");
    CHECK_FALSE(next.form().OtherCall.visible);
  }

  TEST_CASE("until lines are reported it stays for a further run") {
    LaterRun unlinked(left_with_ann_on_air());
    // The times of the calls come in front of the lines.
    unlinked.console.lines.FreshConnect = true;
    unlinked.console.Lineweir.Timer4.enabled = true;
    wait(unlinked, 1);
    CHECK(unlinked.rows().empty());
    SUBCASE("which is this one") {
      report_same_call(unlinked);
      CHECK(unlinked.rows().empty());
      unlinked.server_reports('F');
      CHECK(unlinked.rows().size() == 1);
      return;
    }
    LaterRun next(draft_file(unlinked));
    next.box_sends("F03");
    CHECK(next.rows().size() == 1);
  }

  TEST_CASE("who is on the line still stands there again, and is logged once, when he hangs up") {
    LaterRun next(left_with_ann_on_air());
    SUBCASE("with what was saved before") { report_same_call(next); }
    SUBCASE("with what the server tells of him, in front of the lines or behind them") {
      next.connect_socket();
      const std::string told = encode_caller_data({"", {{"Ann", "", "Bath"}}});
      next.receive(line, told);
      report_same_call(next);
      next.receive(line, told);
    }
    SUBCASE("in a run behind the next") {
      report_same_call(next);
      LaterRun third(draft_file(next));
      report_same_call(third);
      CHECK(third.rows().empty());
      third.server_reports('F');
      CHECK(third.rows().size() == 1);
    }
    SUBCASE("with what is saved of him now") {
      report_same_call(next);
      next.connect_socket();
      next.open(line);
      next.type(9, "Later");
      next.save();
    }
    SUBCASE("while his form is open") {
      report_same_call(next);
      next.open(line);
      next.type(9, "Later");
      next.server_reports('F');
      CHECK(next.rows().size() == 1);
      next.save();
    }
    SUBCASE("behind another studio group") {
      report_same_call(next);
      next.console.line_events.leave_group();
      CHECK(draft_file(next) == "");
      CHECK(next.rows().size() == 1);
      next.console.program.GroupNumber = 2;
      next.server_reports('F');
      next.console.line_events.leave_group();
      next.console.program.GroupNumber = 1;
      report_same_call(next);
      next.connect_socket();
      save_ann(next);
      next.console.line_events.leave_group();
      CHECK(next.rows().size() == 1);
      report_same_call(next);
      save_ann(next);
    }
    CHECK(next.console.lines.CallerData(line).holds_data() ==
          (next.console.lines.StatusLetter(line) == 'N'));
    next.server_reports('F');
    const auto rows = next.rows();
    REQUIRE(rows.size() == 1);
    CHECK(rows[0][log_name] == "Ann");
    CHECK(rows[0][log_city] == "Bath");
    // Not the time at which this run saw him first.
    CHECK(rows[0][log_placed_on_air] == "10:00:00 AM");
    CHECK(draft_file(next) == "");
  }

  TEST_CASE("the last report in front of the kill may have begun the line's clock") {
    LineDesk desk;
    desk.server_reports('P');
    save_ann(desk);
    wait(desk, 60);
    desk.server_reports('S');
    LaterRun next(draft_file(desk));
    wait(next, 60);
    report_same_call(next, "10:01:00", 'S');
    CHECK(next.rows().empty());
    CHECK(next.shown(line, 1).caption == "Ann");
  }

  TEST_CASE("what somebody else has written since is his to log") {
    LaterRun next(left_with_ann_on_air());
    next.connect_socket();
    const std::string anna = encode_caller_data({"HOST", {{"Anna", "", "Bath"}}});
    SUBCASE("in front of the lines") {
      next.receive(line, anna);
      report_same_call(next);
    }
    SUBCASE("behind them") {
      report_same_call(next);
      next.receive(line, anna);
    }
    CHECK(next.shown(line, 1).caption == "Anna");
    next.server_reports('F');
    CHECK(next.rows().empty());
    CHECK(draft_file(next) == "");
  }

  TEST_CASE("over remote objects it is told again, and logged once") {
    LaterRun next(left_with_ann_on_air());
    const std::string told = encode_caller_data({"HOST", {{"Ann", "", "Bath"}}});
    const auto tell = [&] {
      next.platform.remote_objects.call_back("ReturnCallerData",
                                             {told, std::int64_t{line + 1}, std::int64_t{1}});
    };
    SUBCASE("in front of the lines") {
      tell();
      report_same_call(next);
    }
    SUBCASE("behind them") {
      report_same_call(next);
      tell();
    }
    CHECK(next.rows().empty());
    next.server_reports('F');
    CHECK(next.rows().size() == 1);
  }

  TEST_CASE("it takes the place of no other call's row") {
    LineDesk former;
    for (const char* name : {"Ann", "John"}) {
      CAPTURE(name);
      LineDesk desk;
      desk.box_sends("P03");
      save_as(desk, name);
      LaterRun next("");
      next.box_sends("P03");
      save_as(next, name == std::string("Ann") ? "Ann" : "Jo");
      next.box_sends("F03");
      CHECK(next.rows().size() == 1);
      next.platform.files.replace(std::string(draft_file_name), draft_file(desk));
      next.console.caller_data.restore_drafts();
      next.box_sends("F03");
      REQUIRE(next.rows().size() == 2);
      CHECK(next.rows()[1][log_name] == name);
    }
  }

  TEST_CASE("a line that isn't there any more is nobody else's") {
    LineDesk desk;
    desk.console.layout.set_line_count(lines_of_large_layout);
    desk.server_reports('N', 9);
    desk.server_sends(
        std::string(desk.console.line_events.TheStatusText).append("F10F11F12F13F14F15F16N17"));
    desk.connect_socket();
    desk.open(17);
    desk.type(1, "Ann");
    desk.save();
    LaterRun next(draft_file(desk));
    next.console.lines.FreshConnect = true;
    next.console.lines.ClockBase(9) = "09:59:00";
    next.server_reports('N', 9);
    CHECK(next.shown(9, 1).caption == "");
    REQUIRE(next.rows().size() == 1);
    CHECK(next.rows()[0][log_name] == "Ann");
  }

  TEST_CASE("a caller who is typed in again where nobody could know him is logged once") {
    LaterRun next(left_with_ann_on_air());
    next.box_sends("N03");
    CHECK(next.rows().size() == 1);
    save_ann(next);
    next.box_sends("F03");
    REQUIRE(next.rows().size() == 1);
    CHECK(next.rows()[0][log_placed_on_air] == "10:00:00 AM");
  }

  TEST_CASE("what was typed behind it completes the row") {
    LineDesk desk;
    desk.box_sends("N03");
    save_ann(desk);
    desk.open(line);
    desk.type(1, "a");
    desk.form().close();
    LaterRun next(draft_file(desk));
    CHECK(next.take_messages().size() == 1);
    SUBCASE("behind the report of the lines") {
      next.box_sends("F03");
      CHECK(next.rows().size() == 1);
      next.open(line);
    }
    SUBCASE("in front of it") { next.open(line); }
    SUBCASE("in front of it, where he is on his line") {
      next.open(line);
      CHECK(next.text(1) == "Anna");
      next.save();
      report_same_call(next);
      CHECK(next.rows().empty());
      CHECK(next.shown(line, 1).caption == "Anna");
      next.server_reports('F');
      CHECK(next.rows().size() == 1);
      return;
    }
    SUBCASE("or leaves it, where it is discarded") {
      next.open(line);
      next.form().DiscardCall.on_click();
      next.box_sends("F03");
      REQUIRE(next.rows().size() == 1);
      CHECK(next.rows()[0][log_name] == "Ann");
      return;
    }
    CHECK(next.text(1) == "Anna");
    next.save();
    next.box_sends("F03");
    REQUIRE(next.rows().size() == 1);
    CHECK(next.rows()[0][log_name] == "Anna");
    CHECK(next.rows()[0][log_city] == "Bath");
    CHECK(draft_file(next) == "");
  }

  TEST_CASE("a call that has ended is in the log, and not in the file any more") {
    LineDesk desk;
    desk.box_sends("N03");
    save_ann(desk);
    desk.box_sends("F03");
    CHECK(desk.rows().size() == 1);
    CHECK(draft_file(desk) == "");
  }

  TEST_CASE("a run that is killed while it logs doesn't log twice") {
    LineDesk desk;
    desk.box_sends("N03");
    save_ann(desk);
    const auto tell = desk.console.call_log.on_logging;
    std::string at_the_kill;
    desk.console.call_log.on_logging = [&](int at, const EndedCall& ended) {
      tell(at, ended);
      at_the_kill = draft_file(desk);
    };
    desk.platform.loop.advance(platform::Milliseconds(5000));
    desk.box_sends("F03");
    const auto rows = desk.rows();
    REQUIRE(rows.size() == 1);
    CHECK(draft_file(desk) == "");
    // The console finds what it left, and the log already has the call.
    desk.platform.files.replace(std::string(draft_file_name), at_the_kill);
    desk.console.caller_data.restore_drafts();
    desk.box_sends("F03");
    CHECK(desk.rows() == rows);
    CHECK(draft_file(desk) == "");
  }

  TEST_CASE("what others have typed is theirs to log") {
    LineDesk desk;
    desk.connect_socket();
    desk.server_reports('N');
    desk.receive(line, encode_caller_data({"HOST", {{"Ann"}}}));
    CHECK(desk.shown(line, 1).caption == "Ann");
    CHECK(draft_file(desk) == "");
  }

  TEST_CASE("a line with nobody on it has no call that could be lost") {
    LineDesk desk;
    save_ann(desk);
    CHECK(draft_file(desk) == "");
  }

  TEST_CASE("without a log there is nothing to be logged") {
    LineDesk desk;
    desk.console.Lineweir.Data1.database_name = "";
    desk.box_sends("N03");
    save_ann(desk);
    CHECK(draft_file(desk) == "");
  }
}

}  // namespace
}  // namespace lineweir::test
