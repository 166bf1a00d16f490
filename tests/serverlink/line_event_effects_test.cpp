#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "serverlink/event_desk.h"
#include "support/all_letters.h"

namespace lineweir::test {
namespace {

constexpr int effect_line = EventDesk::line;

TEST_SUITE("serverlink/line events: the data form") {
  TEST_CASE("it opens when a line that rang, or was held in producer mode, is taken") {
    EventDesk desk;
    MainForm& form = desk.console.Lineweir;
    int opened = 0;
    for (const char letter : reported_letters()) {
      for (const char old : stored_letters()) {
        for (const bool producer : {false, true}) {
          for (const bool automatic : {false, true}) {
            for (const int kind : {1, 2}) {
              if (letter == old) continue;
              form.ScreenerMode.checked = producer;
              form.AutoDataEntry.checked = automatic;
              desk.console.Form4.visible = false;
              desk.prepare({letter, old, kind});
              desk.report(letter);
              const bool answers = one_of(letter, "PO") || status_letter(letter) == nullptr ||
                                   (letter == 'E' && kind == 2);
              const bool opens = automatic && answers && (old == 'R' || (old == 'H' && producer));
              CAPTURE(letter);
              CAPTURE(old);
              CAPTURE(kind);
              REQUIRE(desk.console.Form4.visible == opens);
              if (!opens) continue;
              ++opened;
              CHECK(desk.console.Form4.caption == "Caller Data - Line 6");
              CHECK(desk.console.lines.CurrentDataLine == effect_line);
            }
          }
        }
      }
    }
    CHECK(opened >= 27);
  }
}

TEST_SUITE("serverlink/line events: what the server is told") {
  TEST_CASE("a new ring tells that the line has no caller's data any more") {
    EventDesk desk;
    desk.platform.winsock1.stand_connected();
    desk.console.Lineweir.WinsockMenu.checked = true;
    desk.prepare({'R', 'N', 1});
    desk.report('R');
    CHECK(desk.platform.winsock1.take_writes() ==
          std::vector<std::string>{
              std::string("\x04\x04\x06\x05\x01\xFF\x00\xFF\x00\x00\x05\x05", 12)});
    desk.prepare({'R', 'N', 2});
    desk.report('R');
    CHECK(desk.platform.winsock1.take_writes().empty());
  }

  TEST_CASE("over remote objects the empty text is written to the line") {
    EventDesk desk;
    desk.platform.remote_objects.set_present(true);
    desk.console.remote.SerialInputObject =
        desk.platform.remote_objects.create("Quorlink.SerialInput");
    desk.console.Lineweir.NetworkConnectionOption.checked = true;
    desk.prepare({'R', 'N', 1});
    desk.report('R');
    const auto calls = desk.platform.remote_objects.take_calls();
    REQUIRE(calls.size() == 1);
    CHECK(calls[0].member == "CallerDataServer");
    CHECK(calls[0].arguments ==
          std::vector<platform::RemoteValue>{std::int64_t{6}, std::int64_t{1}, ""});
  }

  TEST_CASE("a lost connection is told to the user and the report is applied all the same") {
    EventDesk desk;
    std::vector<std::string> shown;
    desk.console.messages.on_shown = [&](const std::string& text) { shown.push_back(text); };
    desk.console.Lineweir.WinsockMenu.checked = true;
    desk.prepare({'R', 'N', 1});
    desk.report('R');
    CHECK(shown == std::vector<std::string>{"Lineweir is not currently connected to a server."});
    CHECK(desk.console.lines.StatusLetter(effect_line) == 'R');
    CHECK(desk.console.Lineweir.CIcon1(effect_line).picture == "YellowIcon");
  }
}

TEST_SUITE("serverlink/line events: failures") {
  TEST_CASE("a step that goes on failing is tried 21 times, reported, and the next goes on") {
    EventDesk desk;
    std::vector<std::string> trace;
    desk.console.program.DebugMode = true;
    desk.console.trace.on_line = [&](const std::string& text) { trace.push_back(text); };
    desk.prepare({'F', 'S', 1});
    desk.console.lines.HoldStamp(effect_line) = "no time";
    desk.report('F');
    REQUIRE(trace.size() == 1);
    CHECK(trace[0].starts_with("Lineweir_Timer4_Timer Error - "));
    CHECK(desk.console.lines.StatusLetter(effect_line) == ' ');
    CHECK(desk.console.lines.HoldStamp(effect_line) == "");
    CHECK(logged_rows(desk).size() == 1);
  }

  TEST_CASE("a failure of one line doesn't keep the others from their reports") {
    EventDesk desk;
    desk.console.lines.StatusLetter(0) = 'S';
    desk.console.lines.HoldStamp(0) = "no time";
    desk.console.lines.FreshConnect = true;
    desk.report_text("F00N01");
    CHECK(desk.console.lines.StatusLetter(0) == ' ');
    CHECK(desk.console.lines.StatusLetter(1) == 'N');
    CHECK_FALSE(desk.console.lines.FreshConnect);
  }

  TEST_CASE("a call log that takes no calls doesn't keep the report waiting") {
    EventDesk desk;
    desk.prepare({'F', 'N', 1});
    desk.platform.failing_databases.fail(failure_number::database_in_use);
    const auto before = desk.platform.loop.now();
    desk.report('F');
    CHECK(desk.console.lines.StatusLetter(effect_line) == ' ');
    CHECK(desk.platform.loop.now() - before < platform::Milliseconds(50));
    CHECK(logged_rows(desk).empty());
    desk.platform.failing_databases.fail(0);
    desk.platform.loop.advance(platform::Milliseconds(500));
    CHECK(logged_rows(desk).size() == 1);
  }
}

}  // namespace
}  // namespace lineweir::test
