#include <doctest/doctest.h>

#include "support/next_run.h"
#include "wire/server_packet_codec.h"

namespace lineweir::test {
namespace {

TEST_SUITE("callerdata/each call is logged once") {
  TEST_CASE("who hung up while the link was away is logged once") {
    LineDesk desk;
    desk.server_reports('N');
    save_ann(desk);
    desk.console.lines.FreshConnect = true;
    desk.server_reports('F');
    const auto rows = desk.rows();
    REQUIRE(rows.size() == 1);
    desk.receive(line, "");
    desk.server_reports('R');
    CHECK(desk.rows() == rows);
  }

  TEST_CASE("who was told free by mistake, and is there, is logged once") {
    LineDesk desk;
    desk.server_reports('N');
    save_ann(desk);
    desk.console.lines.FreshConnect = true;
    desk.server_reports('F');
    CHECK(desk.rows().size() == 1);
    desk.server_reports('N');
    desk.open(line);
    desk.type(9, "Later");
    desk.save();
    desk.server_reports('F');
    REQUIRE(desk.rows().size() == 1);
    CHECK(desk.rows()[0][log_comments] == "Later");
    CHECK(desk.rows()[0][log_placed_on_air] == "10:00:00 AM");
  }

  TEST_CASE("who comes when others' data have taken the place of his has a row of his own") {
    LineDesk desk;
    desk.server_reports('N');
    save_ann(desk);
    desk.console.lines.FreshConnect = true;
    desk.server_reports('F');
    CHECK(desk.rows().size() == 1);
    desk.receive(line, encode_caller_data({"HOST", {{"Ann"}}}));
    desk.server_reports('N');
    save_ann(desk);
    desk.server_reports('F');
    CHECK(desk.rows().size() == 2);
  }

  TEST_CASE("the next caller of the same name on the line has a row of his own") {
    LineDesk desk;
    desk.box_sends("N03");
    save_as(desk, "John");
    LaterRun next(draft_file(desk));
    next.box_sends("F03");
    CHECK(next.rows().size() == 1);
    next.box_sends("P03");
    save_as(next, "John");
    next.box_sends("F03");
    CHECK(next.rows().size() == 2);
  }

  TEST_CASE("a former caller's row that is changed is his row still") {
    LineDesk desk;
    desk.box_sends("N03");
    save_ann(desk);
    desk.open(line);
    desk.type(9, "Cats");
    desk.form().close();
    LaterRun next(draft_file(desk));
    next.box_sends("N03");
    next.open(line);
    next.form().OtherCall.on_click();
    CHECK(next.text(9) == "Cats");
    next.save();
    CHECK(next.rows().at(0)[log_comments] == "Cats");
    next.connect_socket();
    next.open(line);
    next.type(1, "Ann");
    next.type(3, "Bath");
    next.type(9, "Cats");
    next.save();
    next.box_sends("F03");
    CHECK(next.rows().size() == 1);
  }

  TEST_CASE("a caller who is typed in again where nobody could know him is logged once") {
    LaterRun next(left_with_ann_on_air());
    next.box_sends("N03");
    CHECK(next.rows().size() == 1);
    save_ann(next);
    SUBCASE("at his end") {
      next.box_sends("F03");
      REQUIRE(next.rows().size() == 1);
      CHECK(next.rows()[0][log_placed_on_air] == "10:00:00 AM");
    }
    SUBCASE("by a run behind it") {
      LaterRun third(draft_file(next));
      third.platform.databases = next.platform.databases;
      third.box_sends("N03");
      CHECK(third.rows().size() == 1);
      third.box_sends("F03");
      CHECK(third.rows().size() == 1);
    }
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

  TEST_CASE("in another log he has a row of its own") {
    LaterRun next(left_with_ann_on_air());
    report_same_call(next);
    CHECK(next.rows().size() == 1);
    constexpr const char* other = "other.lwl";
    next.platform.databases.create(other)->create_table(std::string(call_log_table),
                                                        new_log_columns("Sponsor"));
    next.console.Lineweir.Data1.database_name = other;
    save_ann(next);
    next.server_reports('F');
    CHECK(next.rows().size() == 1);
    CHECK(next.platform.databases.rows(other, call_log_table).size() == 1);
  }
}

}  // namespace
}  // namespace lineweir::test
