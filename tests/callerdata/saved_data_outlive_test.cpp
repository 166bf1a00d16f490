#include <doctest/doctest.h>

#include "base/time_text.h"
#include "support/next_run.h"
#include "wire/server_packet_codec.h"

namespace lineweir::test {
namespace {

void save_ann(LineDesk& desk) {
  desk.connect_socket();
  desk.open(line);
  desk.type(1, "Ann");
  desk.type(3, "Bath");
  desk.save();
}

// What a console leaves that is killed while Ann is on air and her data are saved.
std::string left_with_ann_on_air() {
  LineDesk desk;
  desk.box_sends("N03");
  save_ann(desk);
  CHECK(desk.rows().empty());
  return draft_file(desk);
}

// A session has begun, and the server has told from when on the call on the line lasts.
void report_same_call(LineDesk& desk) {
  desk.console.lines.FreshConnect = true;
  desk.console.lines.ClockBase(line) = "09:59:00";
  desk.server_reports('N');
}

TEST_SUITE("callerdata/saved data outlive the program") {
  TEST_CASE("who has hung up by the next run is logged as far as it was known") {
    NextRun next(left_with_ann_on_air());
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
    NextRun next(left_with_ann_on_air());
    next.box_sends("N03");
    CHECK(next.rows().size() == 1);
    next.open(line);
    CHECK(next.text(1) == "");
    CHECK_FALSE(next.form().OtherCall.visible);
  }

  TEST_CASE("until lines are reported it stays for a further run") {
    NextRun unlinked(left_with_ann_on_air());
    unlinked.console.lines.FreshConnect = true;
    unlinked.console.caller_data.lines_changed();
    CHECK(unlinked.rows().empty());
    NextRun next(draft_file(unlinked));
    next.box_sends("F03");
    CHECK(next.rows().size() == 1);
  }

  TEST_CASE("who is on the line still is logged once, when he hangs up") {
    NextRun next(left_with_ann_on_air());
    report_same_call(next);
    SUBCASE("with what the server tells of him") {
      next.connect_socket();
      next.open(line);
      next.type(1, "Anna");
      next.save();
    }
    SUBCASE("with what was saved before") {}
    SUBCASE("in a run behind the next") {
      CHECK(draft_file(next) != "");
      NextRun third(draft_file(next));
      report_same_call(third);
      CHECK(third.rows().empty());
      third.box_sends("F03");
      CHECK(third.rows().size() == 1);
    }
    CHECK(next.rows().empty());
    next.box_sends("F03");
    REQUIRE(next.rows().size() == 1);
    CHECK(next.rows()[0][log_name].substr(0, 3) == "Ann");
    CHECK(draft_file(next) == "");
  }

  TEST_CASE("what was typed behind it completes the row") {
    LineDesk desk;
    desk.box_sends("N03");
    save_ann(desk);
    desk.open(line);
    desk.type(1, "a");
    desk.form().close();
    NextRun next(draft_file(desk));
    CHECK(next.take_messages().size() == 1);
    SUBCASE("behind the report of the lines") {
      next.box_sends("F03");
      CHECK(next.rows().size() == 1);
      next.open(line);
    }
    SUBCASE("in front of it") { next.open(line); }
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
