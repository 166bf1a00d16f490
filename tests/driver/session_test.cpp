#include <doctest/doctest.h>

#include "driver_fixture.h"
#include "support/listen.h"

namespace lineweir::test {
namespace {

TEST_CASE_FIXTURE(DriverFixture, "Without a console its commands are refused, not misunderstood") {
  for (const char* line :
       {"click PortOn", "get PortOn.Checked", "forms", "quit", "key 65 0", "call GetCadence 3",
        "socket open", "remote open", "set A 1", "list Lineweir", "close Lineweir", "minimise"}) {
    CAPTURE(line);
    CHECK(say(line) == "error not launched");
    CHECK_FALSE(fails(line));
  }
}

TEST_CASE_FIXTURE(DriverFixture, "What can't be looked at without a console is not as expected") {
  CHECK(say("expect A 1") == "error not launched");
  CHECK(fails("expect A 1"));
}

TEST_CASE_FIXTURE(DriverFixture, "launch shows the main form") {
  CHECK(say("launch") == "ok");
  CHECK(say("forms") == "= [\"Lineweir\"]");
  CHECK(say("get DebugMode") == "= false");
  CHECK(say("launch") == "error already launched");
}

TEST_CASE_FIXTURE(DriverFixture, "launch takes a command line as a word or a text") {
  say("launch D");
  CHECK(say("get DebugMode") == "= true");
  say("quit");
  say("launch \" D\"");
  CHECK(say("get DebugMode") == "= false");
}

TEST_CASE_FIXTURE(DriverFixture, "A new console may follow on the same workstation") {
  say("launch D");
  say("click Com3");
  say("set Comm1.PortOpen true");
  say("advance 1500");
  CHECK(say("quit") == "ok");
  CHECK(say("forms") == "error not launched");
  CHECK(say("advance 500") == "ok");
  CHECK(say("clock") == "= \"2026-01-05 10:00:02\"");
  CHECK(say("launch") == "ok");
  CHECK(say("get Comm1.PortOpen") == "= false");
  CHECK(say("get TheNextCall") == "= -1");
  CHECK(say("get DebugMode") == "= false");
}

TEST_CASE_FIXTURE(DriverFixture, "The user may end the program by its menu") {
  say("launch");
  CHECK(say("click ExitMenu") == "ok");
  CHECK(say("forms") == "error not launched");
}

TEST_CASE_FIXTURE(DriverFixture, "A program that ends while time passes is gone at once") {
  say("launch");
  listen(session.console().Lineweir.ShutDownTimer.on_timer,
         [this] { session.console().Lineweir.unload(); });
  say("set ShutDownTimer.Interval 500");
  say("set ShutDownTimer.Enabled true");
  CHECK(say("advance 10000") == "ok");
  CHECK(say("forms") == "error not launched");
  CHECK(say("clock") == "= \"2026-01-05 10:00:10\"");
}

TEST_CASE_FIXTURE(DriverFixture, "A program may end while it starts") {
  platform::MemoryFiles no_files;
  driver::Session other(no_files);
  other.launch("");
  CHECK(other.launched());
}

TEST_CASE_FIXTURE(DriverFixture, "The clock is set and goes on") {
  CHECK(say("clock") == "= \"2026-01-05 10:00:00\"");
  CHECK(say("clock \"2026-12-31 23:59:59\"") == "ok");
  say("advance 1000");
  CHECK(say("clock") == "= \"2027-01-01 00:00:00\"");
  CHECK(say("clock \"2026-02-30 10:00:00\"").starts_with("error "));
  CHECK(say("clock \"-026-01-05 10:00:00\"").starts_with("error "));
  CHECK(say("clock 5").starts_with("error "));
  CHECK(say("clock") == "= \"2027-01-01 00:00:00\"");
}

TEST_CASE_FIXTURE(DriverFixture, "advance takes up to a week") {
  CHECK(say("advance 0") == "ok");
  CHECK(say("advance 604800000") == "ok");
  CHECK(say("clock") == "= \"2026-01-12 10:00:00\"");
  CHECK(say("advance 604800001").starts_with("error "));
  CHECK(say("advance -1").starts_with("error "));
  CHECK(say("advance 1.5").starts_with("error "));
  CHECK(say("advance") == "error usage: advance MS");
}

TEST_CASE_FIXTURE(LaunchedFixture, "Messages and trace are told once") {
  say("call ShowMessage \"One\"");
  session.console().services.dialogs.message("Two");
  say("call ShowMessage \"Three\"");
  CHECK(say("messages") == "= [\"One\",\"Two\",\"Three\"]");
  CHECK(say("messages") == "= []");
  say("call TextWrit_WriteTrace \"a line\"");
  CHECK(say("trace") == "= [\"a line\"]");
  CHECK(say("trace") == "= []");
}

TEST_CASE_FIXTURE(LaunchedFixture, "A handler that waits forever is ended") {
  listen(session.console().Lineweir.PortOn.on_click, [this] {
    while (true) session.console().services.loop.yield();
  });
  CHECK(say("click PortOn") == "error A wait has no end");
  CHECK(say("advance 1000") == "ok");
}

TEST_CASE_FIXTURE(LaunchedFixture, "A handler's failure is told and ends nothing") {
  listen(session.console().Lineweir.PortOn.on_click,
         [] { throw std::runtime_error("two\nlines"); });
  CHECK(say("click PortOn") == "error internal error: two\\u000alines");
  CHECK(say("forms") == "= [\"Lineweir\"]");
}

}  // namespace
}  // namespace lineweir::test
