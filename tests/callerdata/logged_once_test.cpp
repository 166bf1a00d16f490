#include <doctest/doctest.h>

#include "support/next_run.h"
#include "wire/server_packet_codec.h"

namespace lineweir::test {
namespace {

void put_texts(LineDesk& desk, const std::string& name, const std::string& city) {
  desk.connect_socket();
  desk.open(line);
  desk.form().TheText(1).text = name;
  desk.form().TheText(3).text = city;
}

// The server has told the line free as a session began.
void tell_free_at_first(LineDesk& desk) {
  desk.console.lines.FreshConnect = true;
  desk.server_reports('F');
}

TEST_SUITE("callerdata/each call is logged once") {
  TEST_CASE("who hung up while the link was away is logged once") {
    LineDesk desk;
    desk.server_reports('N');
    save_ann(desk);
    tell_free_at_first(desk);
    const auto rows = desk.rows();
    REQUIRE(rows.size() == 1);
    desk.receive(line, "");
    desk.server_reports('R');
    CHECK(desk.rows() == rows);
  }

  TEST_CASE("so is one whose data the server tells again then") {
    LineDesk desk;
    desk.server_reports('N');
    save_ann(desk);
    tell_free_at_first(desk);
    desk.receive(line, encode_caller_data({"", {{"Ann", "", "Bath"}}}));
    for (const char letter : {'N', 'F'}) desk.server_reports(letter);
    CHECK(desk.rows().size() == 1);
  }

  TEST_CASE("a line of which the server's report says nothing may have its caller still") {
    LaterRun next(left_with_ann_on_air());
    next.server_sends("F00F00F00");
    CHECK(next.rows().empty());
    next.server_sends("F00F00F00N00");
    CHECK(next.rows().size() == 1);
  }

  TEST_CASE("who was told free by mistake, and is there, is logged once") {
    LineDesk desk;
    desk.server_reports('N');
    save_ann(desk);
    tell_free_at_first(desk);
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
    tell_free_at_first(desk);
    CHECK(desk.rows().size() == 1);
    SUBCASE("under another name, which is others' to log") {
      desk.receive(line, encode_caller_data({"HOST", {{"Bob"}}}));
      desk.server_reports('N');
      desk.server_reports('F');
      CHECK(desk.rows().size() == 1);
    }
    SUBCASE("under the same name") {
      desk.receive(line, encode_caller_data({"HOST", {{"Ann", "", "Bath"}}}));
      desk.server_reports('N');
      put_texts(desk, "Ann", "Bath");
      desk.save();
      desk.server_reports('F');
      CHECK(desk.rows().size() == 2);
    }
    SUBCASE("over remote objects") {
      desk.platform.remote_objects.call_back(
          "ReturnCallerData",
          {encode_caller_data({"HOST", {{"Ann"}}}), std::int64_t{line + 1}, std::int64_t{1}});
      desk.server_reports('N');
      desk.server_reports('F');
      CHECK(desk.rows().size() == 2);
    }
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

  TEST_CASE("a box tells of one line after the other") {
    LaterRun next(left_with_ann_on_air());
    for (const char* report : {"F00", "F01", "F02"}) next.box_sends(report);
    CHECK(next.rows().empty());
    next.box_sends("N03");
    CHECK(next.rows().size() == 1);
    save_ann(next);
    next.box_sends("F03");
    CHECK(next.rows().size() == 1);
  }

  TEST_CASE("more that is saved of him goes into his row, whatever field it is in") {
    LaterRun next(left_with_ann_on_air());
    report_same_call(next);
    for (const int entry : {gender_entry, entry_of(CallerField::Station), user_entry}) {
      put_texts(next, "Ann", "Bath");
      next.form().TheText(entry).text = "Female";
      next.save();
    }
    next.server_reports('F');
    CHECK(next.rows().size() == 1);
  }

  TEST_CASE("what is saved of him after he was told free by mistake goes into his row") {
    LaterRun next(left_with_ann_on_air());
    report_same_call(next);
    tell_free_at_first(next);
    next.server_reports('N');
    save_ann(next);
    next.server_reports('F');
    CHECK(next.rows().size() == 1);
  }

  TEST_CASE("behind a former caller whose record stayed the next one is another") {
    LineDesk desk;
    desk.console.lines.ThePhoneFlag = 2;
    desk.server_reports('N');
    save_ann(desk);
    tell_free_at_first(desk);
    const auto rows = desk.rows();
    for (const char letter : {'R', 'N'}) desk.server_reports(letter);
    wait(desk, 30);
    SUBCASE("of whom nothing is known") {
      desk.server_reports('F');
      CHECK(desk.rows() == rows);
    }
    SUBCASE("of whom not even a name is known") {
      put_texts(desk, "", "");
      desk.form().TheText(9).text = "Cats";
      desk.save();
      desk.server_reports('F');
      REQUIRE(desk.rows().size() == 2);
      CHECK(desk.rows()[0] == rows[0]);
      CHECK(desk.rows()[1][log_comments] == "Cats");
    }
  }

  TEST_CASE("the same caller calls again") {
    LaterRun next(left_with_ann_on_air());
    SUBCASE("some days later") {
      wait(next, 3 * 86400);
      report_same_call(next);
    }
    SUBCASE("as the clock of the call tells") { report_same_call(next, "10:00:30"); }
    CHECK(next.rows().size() == 1);
    put_texts(next, "Ann", "Bath");
    next.save();
    next.server_reports('F');
    CHECK(next.rows().size() == 2);
  }

  TEST_CASE("a form that was open at his end is saved into the row as it is by then") {
    LineDesk desk;
    SUBCASE("and not into the one of the run before") {
      desk.box_sends("N03");
      save_ann(desk);
      desk.open(line);
      desk.type(9, "Cats");
      desk.form().close();
      LaterRun next(draft_file(desk));
      next.box_sends("N03");
      put_texts(next, "Ann", "Bath");
      next.form().TheText(7).text = "WXYZ";
      next.save();
      SUBCASE("in a form that is opened then") {
        next.box_sends("F03");
        next.open(line);
      }
      SUBCASE("in a form that stood open") {
        next.open(line);
        next.form().OtherCall.on_click();
        next.box_sends("F03");
      }
      CHECK(next.text(9) == "Cats");
      next.save();
      REQUIRE(next.rows().size() == 1);
      CHECK(next.rows()[0][log_comments] == "Cats");
    }
    SUBCASE("nor is the record that stays on the line logged behind it") {
      desk.server_reports('N');
      save_ann(desk);
      desk.open(line);
      desk.type(1, "a");
      tell_free_at_first(desk);
      desk.save();
      desk.server_reports('R');
      REQUIRE(desk.rows().size() == 1);
      CHECK(desk.rows()[0][log_name] == "Anna");
    }
  }

  TEST_CASE("a record that stays is of its day and in its log") {
    LineDesk desk;
    desk.server_reports('N');
    save_ann(desk);
    tell_free_at_first(desk);
    const auto rows = desk.rows();
    REQUIRE(rows.size() == 1);
    constexpr const char* other = "other.lwl";
    SUBCASE("") { wait(desk, 86400); }
    SUBCASE("") {
      desk.platform.databases.create(other)->create_table(std::string(call_log_table),
                                                          new_log_columns("Sponsor"));
      desk.console.Lineweir.Data1.database_name = other;
    }
    desk.server_reports('R');
    CHECK(desk.rows() == rows);
    if (desk.console.Lineweir.Data1.database_name == other) {
      CHECK(desk.platform.databases.rows(other, call_log_table).empty());
    }
  }

  TEST_CASE("a run that is killed while it replaces his row leaves one") {
    LaterRun next(left_with_ann_on_air());
    report_same_call(next);
    put_texts(next, "Ann", "Bath");
    next.form().TheText(9).text = "Later";
    next.save();
    const auto tell = next.console.call_log.on_logging;
    std::string at_the_kill;
    next.console.call_log.on_logging = [&](int at, const EndedCall& ended) {
      tell(at, ended);
      at_the_kill = draft_file(next);
    };
    next.server_reports('F');
    CHECK(next.rows().size() == 1);
    LaterRun before(left_with_ann_on_air());
    report_same_call(before);
    CHECK(before.rows().size() == 1);
    for (LaterRun* killed : {&before, &next}) {
      LaterRun third(at_the_kill);
      third.platform.databases = killed->platform.databases;
      third.box_sends("F03");
      REQUIRE(third.rows().size() == 1);
      CHECK(third.rows()[0][log_comments] == "Later");
    }
  }
}

}  // namespace
}  // namespace lineweir::test
