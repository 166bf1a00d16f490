#include <doctest/doctest.h>

#include "driver_fixture.h"

namespace lineweir::test {
namespace {

// A state that no scenario looks at: its path, a new value, and whether the console has that.
struct Named {
  const char* path;
  const char* value;
  bool (*is_held)(Console& console);
};

TEST_CASE_FIXTURE(LaunchedFixture, "A state is set where the console itself keeps it") {
  for (const Named& state : {
           Named{"EmptyLineOverride", "true",
                 [](Console& c) { return c.program.EmptyLineOverride; }},
           Named{"StartDirectory", "\"/studio\"",
                 [](Console& c) { return c.program.StartDirectory == "/studio"; }},
           Named{"ClientId", "\"7\"", [](Console& c) { return c.program.ClientId == "7"; }},
           Named{"CallerFlagAllowed", "false",
                 [](Console& c) { return !c.program.CallerFlagAllowed; }},
           Named{"UserPassword", "\"secret\"",
                 [](Console& c) { return c.login.UserPassword.trimmed() == "secret"; }},
           Named{"ProfileBlock", "\"Ann\"",
                 [](Console& c) { return c.login.ProfileBlock == "Ann"; }},
           Named{"TheOldName", "\"Ben\"",
                 [](Console& c) { return c.LoginForm.TheOldName == "Ben"; }},
           Named{"ForcedGroup", "3", [](Console& c) { return c.login.ForcedGroup == 3; }},
           Named{"PreviousVisibleLines", "4",
                 [](Console& c) { return c.faces.PreviousVisibleLines == 4; }},
           Named{"RestartingSocket", "true", [](Console& c) { return c.window.RestartingSocket; }},
           Named{"SetStateTo", "2", [](Console& c) { return c.profile_window.SetStateTo == 2; }},
           Named{"SetStateToHeight", "5000",
                 [](Console& c) { return c.profile_window.SetStateToHeight == 5000; }},
           Named{"SetStateToWidth", "6000",
                 [](Console& c) { return c.profile_window.SetStateToWidth == 6000; }},
           Named{"SetStateMessGroup", "5",
                 [](Console& c) { return c.profile_window.SetStateMessGroup == 5; }},
           Named{"ColumnsLocked", "true", [](Console& c) { return c.display.ColumnsLocked; }},
       }) {
    CAPTURE(state.path);
    CHECK_FALSE(state.is_held(session.console()));
    CHECK(say(std::string("set ") + state.path + ' ' + state.value) == "ok");
    CHECK(state.is_held(session.console()));
    CHECK(say(std::string("get ") + state.path).starts_with("= "));
  }
}

TEST_CASE_FIXTURE(LaunchedFixture, "The rows' places on the screen can be read") {
  CHECK(say("get RowTop(0)") == "= 420");
  CHECK(say("get RowTop(3)") == "= 1365");
  CHECK(say("set RowTop(3) 1") == "error can't be set: RowTop(3)");
}

TEST_CASE_FIXTURE(LaunchedFixture, "A colour and an interval may be any number, a place may not") {
  for (const char* path : {"LineName(3).ForeColor", "LineName(3).BackColor", "Shape1.FillColor",
                           "ShutDownTimer.Interval"}) {
    CAPTURE(path);
    CHECK(say(std::string("set ") + path + " 16777215") == "ok");
    CHECK(say(std::string("get ") + path) == "= 16777215");
  }
  CHECK(say("set LineName(3).Width 16777215") == "error not a number in range: 16777215");
}

}  // namespace
}  // namespace lineweir::test
