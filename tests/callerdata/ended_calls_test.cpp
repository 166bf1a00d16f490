#include <doctest/doctest.h>

#include "callerdata/caller_data.h"
#include "support/line_desk.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

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

}  // namespace
}  // namespace lineweir::test
