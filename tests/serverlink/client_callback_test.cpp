#include "serverlink/client_callback.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "base/text.h"
#include "support/call_log_file.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

using platform::RemoteValue;

struct CalledDesk : ScriptedConsole {
  CalledDesk() : ScriptedConsole("D") {
    console.Lineweir.Timer1.enabled = false;
    console.trace.on_line = [this](const std::string& line) { trace.push_back(line); };
  }
  void call(const std::string& method, const std::vector<RemoteValue>& arguments) {
    platform.remote_objects.call_back(method, arguments);
    platform.loop.run_pending();
  }
  std::vector<std::string> trace;
};

TEST_SUITE("serverlink/client_callback") {
  TEST_CASE("a status text is applied when Timer4 ticks") {
    CalledDesk desk;
    desk.call("ReturnCommand", {std::string("N00R01")});
    CHECK(desk.console.line_events.TheStatusText == "N00R01");
    CHECK(desk.console.lines.StatusLetter(0) == ' ');
    desk.platform.loop.advance(platform::Milliseconds(10));
    CHECK(desk.console.lines.StatusLetter(0) == 'N');
    CHECK(desk.console.lines.StatusLetter(1) == 'R');
  }

  TEST_CASE("a word of the equipment leaves the status text alone") {
    CalledDesk desk;
    const std::string before = desk.console.line_events.TheStatusText;
    desk.platform.comm1.open();
    desk.console.Lineweir.RemoteNext.checked = true;
    desk.call("ReturnCommand", {std::string("U07")});
    CHECK(desk.console.line_events.TheStatusText == before);
    CHECK_FALSE(desk.console.Lineweir.Timer4.enabled);
    CHECK(desk.platform.comm1.take_writes() == std::vector<std::string>{"U07"});
  }

  TEST_CASE("the next call of this group is pinned") {
    CalledDesk desk;
    desk.call("ReturnNextCall", {std::int64_t{3}, std::int64_t{2}});
    CHECK(desk.console.lines.TheNextCall == no_line);
    desk.call("ReturnNextCall", {std::int64_t{3}, std::int64_t{1}});
    CHECK(desk.console.lines.TheNextCall == 2);
    CHECK(desk.console.lines.NextCallSet);
  }

  TEST_CASE("a letter that came before the choice doesn't end it, one that comes behind does") {
    CalledDesk desk;
    desk.call("ReturnCommand", {std::string("S00H01S02")});
    desk.platform.loop.advance(platform::Milliseconds(10));
    desk.call("ReturnCommand", {std::string("S00H01R02")});
    desk.call("ReturnNextCall", {std::int64_t{3}, std::int64_t{1}});
    desk.platform.loop.advance(platform::Milliseconds(10));
    CHECK(desk.console.lines.StatusLetter(2) == 'R');
    CHECK(desk.console.lines.TheNextCall == 2);
    desk.call("ReturnCommand", {std::string("S00H01N02")});
    desk.platform.loop.advance(platform::Milliseconds(10));
    CHECK(desk.console.lines.TheNextCall == no_line);
  }

  TEST_CASE("a caller whose end comes with that nobody is known any more is logged by his name") {
    CalledDesk desk;
    choose_log(desk);
    desk.call("ReturnCommand", {std::string("F00F01N02")});
    desk.platform.loop.advance(platform::Milliseconds(10));
    desk.console.lines.CallerData(2).set(CallerField::CallerName, "Ann");
    desk.console.Lineweir.LineName(2).caption = "Ann";
    desk.call("ReturnCommand", {std::string("F00F01F02")});
    desk.call("ReturnCallerData", {std::string(), std::int64_t{3}});
    desk.platform.loop.advance(platform::Milliseconds(1000));
    REQUIRE(logged_rows(desk).size() == 1);
    CHECK(trimmed(logged_rows(desk).front()[0]) == "Ann");
  }

  TEST_CASE("arguments that don't fit are reported under the method's name") {
    CalledDesk desk;
    desk.call("ReturnNextCall", {});
    desk.call("ReturnNextCall", {std::string("3"), std::int64_t{1}});
    desk.call("ReturnNextCall", {std::int64_t{40000}, std::int64_t{1}});
    desk.call("ReturnCommand", {true});
    CHECK(desk.trace ==
          std::vector<std::string>{"CBClientClass_ReturnNextCall Error - Type mismatch",
                                   "CBClientClass_ReturnNextCall Error - Type mismatch",
                                   "CBClientClass_ReturnNextCall Error - Overflow",
                                   "CBClientClass_ReturnCommand Error - Type mismatch"});
    CHECK(desk.console.lines.TheNextCall == no_line);
  }

  TEST_CASE("a method that nobody knows is passed over") {
    CalledDesk desk;
    desk.call("ReturnSomething", {std::int64_t{3}});
    CHECK(desk.trace.empty());
  }
}

}  // namespace
}  // namespace lineweir::test
