#include <doctest/doctest.h>

#include "support/next_run.h"
#include "wire/server_packet_codec.h"

namespace lineweir::test {
namespace {

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
    SUBCASE("which is another one") {
      LaterRun next(draft_file(unlinked));
      next.box_sends("F03");
      CHECK(next.rows().size() == 1);
    }
    SUBCASE("which is this one") {
      report_same_call(unlinked);
      CHECK(unlinked.rows().size() == 1);
    }
  }

  TEST_CASE("who is on the line still is logged as far as he was known, and never twice") {
    LaterRun next(left_with_ann_on_air());
    next.connect_socket();
    const std::string told = encode_caller_data({"", {{"Ann", "", "Bath"}}});
    SUBCASE("with what was saved before") { report_same_call(next); }
    SUBCASE("as the server tells of him, in front of the lines or behind them") {
      next.receive(line, told);
      report_same_call(next);
      next.receive(line, told);
    }
    SUBCASE("as another console has written something else since") {
      report_same_call(next);
      next.receive(line, encode_caller_data({"HOST", {{"Anna", "", "Bath"}}}));
      CHECK(next.shown(line, 1).caption == "Anna");
    }
    SUBCASE("in a run behind the next") {
      report_same_call(next);
      CHECK(draft_file(next) == "");
    }
    SUBCASE("with what is saved of him now") {
      report_same_call(next);
      next.receive(line, told);
      next.open(line);
      next.type(9, "Later");
      next.save();
      next.server_reports('F');
      CHECK(next.rows().at(0)[log_comments] == "Later");
    }
    SUBCASE("behind another studio group") {
      report_same_call(next);
      next.console.line_events.leave_group();
      next.console.program.GroupNumber = 2;
      next.server_reports('F');
      next.console.line_events.leave_group();
      next.console.program.GroupNumber = 1;
      report_same_call(next);
      save_ann(next);
      next.console.line_events.leave_group();
      report_same_call(next);
      save_ann(next);
    }
    CHECK(next.rows().size() == 1);
    next.server_reports('F');
    const auto rows = next.rows();
    REQUIRE(rows.size() == 1);
    CHECK(rows[0][log_name] == "Ann");
    CHECK(rows[0][log_city] == "Bath");
    // Not the time at which this run saw him first.
    CHECK(rows[0][log_placed_on_air] == "10:00:00 AM");
    CHECK(draft_file(next) == "");
  }

  TEST_CASE("the row of one whom a further run sees hang up is brought up to date by that") {
    LaterRun next(left_with_ann_on_air());
    report_same_call(next);
    next.open(line);
    next.type(1, "Ann");
    next.type(3, "Bath");
    next.type(9, "Later");
    next.connect_socket();
    next.save();
    LaterRun third(draft_file(next));
    third.platform.databases = next.platform.databases;
    third.server_reports('F');
    REQUIRE(third.rows().size() == 1);
    CHECK(third.rows()[0][log_comments] == "Later");
  }

  TEST_CASE("over remote objects he is told again, and his row brought up to date") {
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
    wait(next, 60);
    next.server_reports('F');
    REQUIRE(next.rows().size() == 1);
    CHECK(next.rows()[0][log_placed_on_air] == "10:00:00 AM");
    CHECK(next.rows()[0][log_on_air] != "");
  }

  TEST_CASE("what was typed behind it") {
    LineDesk desk;
    desk.box_sends("N03");
    save_ann(desk);
    desk.open(line);
    desk.type(1, "a");
    desk.form().close();
    LaterRun next(draft_file(desk));
    CHECK(next.take_messages().size() == 1);
    next.connect_socket();
    std::string name = "Anna";
    SUBCASE("completes the row, behind the report of the lines") {
      next.box_sends("F03");
      CHECK(next.rows().size() == 1);
      next.open(line);
      CHECK(next.text(1) == name);
      next.save();
    }
    SUBCASE("completes the row, in front of it") {
      next.open(line);
      CHECK(next.text(1) == name);
      next.save();
      CHECK(next.rows().empty());
      SUBCASE("") { next.box_sends("F03"); }
      SUBCASE("where he is on his line") { report_same_call(next); }
    }
    SUBCASE("is for him who is on his line") {
      report_same_call(next);
      next.open(line);
      CHECK(next.text(1) == name);
      CHECK_FALSE(next.form().OtherCall.visible);
      next.form().close();
      name = "Ann";
    }
    SUBCASE("leaves the row where it is discarded") {
      next.open(line);
      next.form().DiscardCall.on_click();
      next.box_sends("F03");
      CHECK(draft_file(next) == "");
      name = "Ann";
    }
    REQUIRE(next.rows().size() == 1);
    CHECK(next.rows()[0][log_name] == name);
    CHECK(next.rows()[0][log_city] == "Bath");
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

  TEST_CASE("nor does one that is killed while it logs for the run before it") {
    LaterRun next(left_with_ann_on_air());
    const auto tell = next.console.call_log.on_logging;
    std::string at_the_kill;
    next.console.call_log.on_logging = [&](int at, const EndedCall& ended) {
      tell(at, ended);
      at_the_kill = draft_file(next);
    };
    next.box_sends("F03");
    CHECK(next.rows().size() == 1);
    LaterRun third(at_the_kill);
    third.platform.databases = next.platform.databases;
    third.box_sends("F03");
    CHECK(third.rows() == next.rows());
  }

  TEST_CASE("what was typed behind the last saving isn't logged by the next run") {
    LineDesk desk;
    desk.box_sends("N03");
    save_ann(desk);
    desk.open(line);
    desk.type(1, "a");
    desk.form().close();
    desk.box_sends("F03");
    CHECK(desk.rows().size() == 1);
    CHECK(draft_file(desk).find(",no,") == std::string::npos);
    CHECK(draft_file(desk).find("Anna") != std::string::npos);
  }

  TEST_CASE("who was seen in another group is there still when the console comes back to it") {
    LaterRun next(left_with_ann_on_air());
    next.console.program.GroupNumber = 2;
    next.server_reports('F');
    CHECK(next.rows().size() == 1);
    next.console.line_events.leave_group();
    next.console.program.GroupNumber = 1;
    report_same_call(next);
    save_ann(next);
    next.server_reports('F');
    CHECK(next.rows().size() == 1);
  }

  TEST_CASE("what is typed in a group before its lines are known is nobody's of the group before") {
    LineDesk desk;
    desk.server_reports('H');
    desk.console.line_events.leave_group();
    desk.console.program.GroupNumber = 2;
    desk.open(line);
    desk.type(1, "Ann");
    desk.console.caller_data.keep_draft();
    LaterRun next(draft_file(desk));
    report_same_call(next, "09:59:00", 'H');
    next.open(line);
    CHECK(next.text(1) == "");
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

  TEST_CASE("while the link is gone nobody knows whether he is still there") {
    LineDesk desk;
    desk.server_reports('H');
    desk.open(line);
    desk.type(1, "Ann");
    wait(desk, 600);
    desk.console.caller_data.keep_draft();
    LaterRun next(draft_file(desk));
    wait(next, 600);
    // He has waited since the lines were reported last.
    report_same_call(next, "10:03:00", 'H');
    next.open(line);
    CHECK(next.text(1) == "");
    CHECK(next.form().OtherCall.visible);
  }

  TEST_CASE("they are kept from when a log is chosen") {
    LineDesk desk;
    const std::string file = desk.console.Lineweir.Data1.database_name;
    desk.console.Lineweir.Data1.database_name = "";
    desk.box_sends("N03");
    save_ann(desk);
    CHECK(draft_file(desk) == "");
    desk.console.Lineweir.Data1.database_name = file;
    CHECK(draft_file(desk).find("Ann") != std::string::npos);
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
