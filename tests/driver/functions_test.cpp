#include <doctest/doctest.h>

#include "driver_fixture.h"
#include "support/listen.h"

namespace lineweir::test {
namespace {

TEST_CASE_FIXTURE(LaunchedFixture, "Functions give their results") {
  CHECK(say("call GetCadence 3") == "= \"\\u0000\\u0000\"");
  CHECK(say("call getbit \"\\u0080\" 8") == "= true");
  CHECK(say("call ByteToBits \"\\u0005\"") == "= \"00000101\"");
  CHECK(say("call BitsToByte \"0000000x\"") == "= \"\\u0000\"");
  CHECK(say("call ReturnByte true") == "= \"1\"");
  CHECK(say("call NumToBool \"2\"") == "= false");
  CHECK(say("call TextWrit_SizeEncode 300") == "= \"\\u0001,\"");
  CHECK(say("call TextWrit_ZeroFill \"5\" 3") == "= \"005\"");
  CHECK(say("call TextWrit_NullRemove \"\\u0000a\\u0000\"") == "= \"a\"");
  CHECK(say("call GetPhoneText") == "= \"\"");
}

TEST_CASE_FIXTURE(LaunchedFixture, "A function without a result answers ok") {
  say("set StatusLetter(4) \"H\"");
  CHECK(say("call SetStatusText 4") == "ok");
  CHECK(say("get LineStatus(4).Caption") == "= \"Held\"");
  CHECK(say("call HybridPictureSet 4 1 0") == "ok");
  CHECK(say("get CIcon1(4).Picture") == "= \"RedIcon\"");
}

TEST_CASE_FIXTURE(LaunchedFixture, "A function that fails within is reported and gives nothing") {
  CHECK(say("call GetBit \"a\" 9") == "= false");
  CHECK(say("trace") == "= [\"TextWrit_GetBit Error - Subscript out of range\"]");
}

TEST_CASE_FIXTURE(LaunchedFixture, "Handlers are called by element and event") {
  say("serial Comm1 reply \"M\" \"Line monitor ON\"");
  say("set Port.Visible false");
  CHECK(say("call PortOn_Click") == "ok");
  CHECK(say("get PortOn.Checked") == "= true");
  CHECK(say("call Lineweir_Timer5_Timer") == "ok");
  CHECK(say("get Timer5.Interval") == "= 100");
  CHECK(say("call Form_KeyDown 113 0") == "ok");
  say("call ShowMessage \"x\"");
  CHECK(say("call MyMsgbox_OKButton_Click") == "ok");
  CHECK(say("get MyMsgbox.Visible") == "= false");
}

TEST_CASE_FIXTURE(LaunchedFixture, "The time clock's handler has a name of its own") {
  CHECK(say("call TimerClockMenuItem_Click") == "ok");
  CHECK(say("get TimeClockMenuItem.Checked") == "= true");
  CHECK(say("get picRealTimeClock.Visible") == "= true");
  CHECK(say("call Lineweir_TimerClockMenuItem_Click") == "ok");
  CHECK(say("get picRealTimeClock.Visible") == "= false");
}

TEST_CASE_FIXTURE(LaunchedFixture, "The hands' lengths are those of their design") {
  CHECK(say("get SecondRadius") == "= 560");
  CHECK(say("get MinuteRadius") == "= 480");
  CHECK(say("get HourRadius") == "= 330");
}

TEST_CASE_FIXTURE(LaunchedFixture, "An element of an array is named by its index") {
  int clicked = -1;
  listen(session.console().Lineweir.OnHybrid1(3).on_click, [&] { clicked = 3; });
  CHECK(say("call OnHybrid1_Click 3") == "ok");
  CHECK(clicked == 3);
  CHECK(say("call OnHybrid1_Click").starts_with("error "));
  CHECK(say("call OnHybrid1_Click 99").starts_with("error "));
  CHECK(say("call OnHybrid1_Click 3 4") == "error 0 arguments are wanted");
}

TEST_CASE_FIXTURE(LaunchedFixture, "What can't be called is refused") {
  CHECK(say("call Nothing") == "error no such function: Nothing");
  CHECK(say("call Nothing_Click") == "error no such function: Nothing_Click");
  CHECK(say("call PortOn_Fly") == "error no such function: PortOn_Fly");
  CHECK(say("call _") == "error no such function: _");
  CHECK(say("call GetCadence") == "error 1 arguments are wanted");
  CHECK(say("call GetCadence 3 4") == "error 1 arguments are wanted");
  CHECK(say("call GetCadence \"3\"") == "error not a number: \"3\"");
  CHECK(say("call GetCadence 99999999999").starts_with("error not a number in range"));
  CHECK(say("call GetBit \"ab\" 1") == "error not one character: \"ab\"");
  CHECK(say("call GetCadence -1").starts_with("error "));
}

}  // namespace
}  // namespace lineweir::test
