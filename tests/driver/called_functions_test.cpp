// Functions and events that no scenario calls: each does what the console itself does by that name.

#include <doctest/doctest.h>

#include "driver_fixture.h"
#include "forms/columns.h"
#include "support/listen.h"

namespace lineweir::test {
namespace {

struct CallFixture : DriverFixture {
  CallFixture() { say("launch"); }

  Console& console() { return session.console(); }
  MainForm& form() { return session.console().Lineweir; }

  // Whether the function puts back what a script has put elsewhere.
  bool puts_back(const std::string& function, const std::string& path) {
    say("call " + function);
    const std::string before = say("get " + path);
    CHECK(before != "= 1");
    CHECK(say("set " + path + " 1") == "ok");
    CHECK(say("call " + function) == "ok");
    return say("get " + path) == before;
  }

  // Whether the function sends the server one frame of this command.
  bool sends(const std::string& function, const std::string& command) {
    say("socket out");
    const std::string reply = say("call " + function);
    CHECK((reply == "ok" || reply.starts_with("= ")));
    return say("socket out").starts_with("= [\"\\u0004\\u0004" + command);
  }
};

TEST_CASE_FIXTURE(CallFixture,
                  "Functions of the layout put rows, columns and keys in their places") {
  const std::string mark = "MyMark(" + std::to_string(4 * column_count + 1) + ").Top";
  CHECK(puts_back("DrawMark", mark));
  CHECK(puts_back("DrawMark 4", mark));
  CHECK_FALSE(puts_back("DrawMark 5", mark));
  CHECK(puts_back("SetCiconPosition1 4", "CIcon1(4).Left"));
  CHECK(puts_back("SetCiconPosition2 4", "CIcon2(4).Left"));
  CHECK(puts_back("RefreshVisibleRows", "DataRow(3).Top"));
  CHECK(puts_back("TextWrit_RefreshVisibleRows", "DataRow(3).Top"));
  CHECK(puts_back("TextWrit_RefreshColumnOrder", "LineName(0).Left"));
  CHECK(puts_back("SetFieldWidths", "LineName(3).Width"));
  CHECK(puts_back("NewColumnSetup", "ColumnWidth(2)"));
  CHECK(puts_back("SetLabels", "Drop1Image.Width"));
  CHECK(puts_back("CheckTopSize", "ScreenTop.Top"));
  CHECK(puts_back("DisplayOptionForm_RedefineDisplaySreen", "DisplayOptionForm.LineCheck(3).Left"));
  CHECK(puts_back("FlashMessA_RedefineFlashMess", "FlashMessA.Left"));
}

TEST_CASE_FIXTURE(CallFixture, "Functions of the window show rows, covers and its own size") {
  say("set LineCount 20");
  CHECK(say("call Load20") == "ok");
  CHECK(say("get DataRow.Count") == "= 20");
  CHECK(say("call GetRootWidth") == "= 9420");
  say("resize 12000 9000");
  CHECK(say("call SetToRoot 0") == "ok");
  CHECK(say("get Lineweir.Width") == "= 9420");
  CHECK(say("call SetPictureAutoOff") == "ok");
  CHECK(say("get ScreenTopImage.Visible") == "= true");
  CHECK(say("call SetPictureAutoOn") == "ok");
  CHECK(say("get ScreenTopImage.Visible") == "= false");
  say("set Drop1.Enabled false");
  CHECK(say("call SetEnabledDisabled") == "ok");
  CHECK(say("get Drop1.Enabled") == "= true");
}

TEST_CASE_FIXTURE(CallFixture, "Functions of texts give and show them") {
  CHECK(say("call FindLongestName \"Hall      Main hall Bar       \"") == "= \"Main hall\"");
  say("set StudioGr(0).Caption \"Studio A\"");
  say("set StudioGr(0).Checked true");
  CHECK(say("call TextWrit_ReturnStudioGroupName") == "= \"Studio A\"");
  say("answer input \"Vote\"");
  CHECK(say("call DisplayOptionForm_UserRename") == "ok");
  CHECK(console().DisplayOptionForm.CheckItem(user_column).caption == "Vote");
  say("set ShowTimes(3) \"10:05:00\"");
  CHECK(say("call Filler") == "ok");
  CHECK(say("get Form2.Grid1.Cell(1,1)") == "= \"10:05:00\"");
  CHECK(say("call CBClientClass_ReturnMessageData \"Ann\\u0003Hello\" 1 255 16777215") == "ok");
  CHECK(say("get Text1.Text") == "= \"Ann>Hello\"");
  CHECK(say("get Text1.BackColor") == "= 255");
  CHECK(say("get Text1.ForeColor") == "= 16777215");
}

TEST_CASE_FIXTURE(CallFixture, "Functions of the session ask the server, and give its answers") {
  say("socket open");
  CHECK(sends("TextWrit_PasswordA false", "\\u0015"));
  CHECK(sends("TextWrit_PasswordB", "\\u0001"));
  CHECK(say("call TextWrit_PasswordA true") == "= 2");
  CHECK(say("call TextWrit_PasswordB") == "= 2");
  CHECK(sends("RequestAccessRights 3", "\\u0018"));
  CHECK(sends("RequestFirstUnblocked", "\\u0019"));
  CHECK(sends("SendUserProfile \"Ann\"", "\\u0017"));
  const std::string scrambled = say("call TextWrit_PassEncode \"secret\"").substr(2);
  CHECK(scrambled != "\"secret\"");
  CHECK(say("call TextWrit_PassDecode " + scrambled) == "= \"secret\"");
}

TEST_CASE_FIXTURE(CallFixture, "Functions of rights and profile take what the server has told") {
  std::string none = "\"";
  for (int place = 0; place < 12; ++place) none += "\\u0000";
  say("set UserRights " + none + '"');
  CHECK(say("call SetRights") == "ok");
  CHECK(say("get AboutLineweir.Enabled") == "= false");
  say("set GroupNumber 7");
  std::string profile = say("call PrepareUserData \"Ann\"");
  const std::string name = "= \"Ann\\u0003";
  REQUIRE(profile.starts_with(name));
  CHECK(say("set ProfileBlock \"" + profile.substr(name.size())) == "ok");
  CHECK(say("call TextWrit_ExtractMessageGroup") == "= 7");
}

TEST_CASE_FIXTURE(CallFixture, "Functions of the links hear and leave them") {
  std::string heard;
  listen(console().services.comm1.on_comm, [&](int) { heard += '1'; });
  listen(console().services.comm2.on_comm, [&](int) { heard += '2'; });
  CHECK(say("call Comm1_OnComm") == "ok");
  CHECK(say("call Comm2_OnComm") == "ok");
  CHECK(heard == "12");

  say("socket open");
  listen(console().services.winsock1.on_data_arrival, [&] { heard += 'w'; });
  CHECK(say("call Winsock1_DataArrival") == "ok");
  CHECK(heard == "12w");
  say("socket in \"abc\"");
  CHECK(say("get RecString") == "= \"\"");
  CHECK(say("call TextWrit_CheckWinsPort") == "ok");
  CHECK(say("get RecString") == "= \"abc\"");

  say("remote open");
  say("remote result DropObjectReference true");
  CHECK(say("call NetworkDisconnect") == "ok");
  CHECK(say("remote calls").starts_with("= [[\"CBServerClass\",\"DropObjectReference\","));
}

TEST_CASE_FIXTURE(CallFixture, "Handlers of every event are called by its name") {
  std::string heard;
  const auto hears = [&](const char* call, auto& event) {
    CAPTURE(call);
    heard.clear();
    listen(event, [&heard](auto... arguments) {
      ((heard += std::to_string(arguments) + ' '), ...);
      heard += '!';
    });
    CHECK(say(std::string("call ") + call) == "ok");
    return heard;
  };
  CHECK(hears("Drop1_Click", form().Drop1.on_click) == "!");
  CHECK(hears("PortOn_Click", form().PortOn.on_click) == "!");
  CHECK(hears("Form_Click", form().on_click) == "!");
  CHECK(hears("Text1_DblClick", form().Text1.on_dbl_click) == "!");
  CHECK(hears("Timer5_Timer", form().Timer5.on_timer) == "!");
  CHECK(hears("Text1_Change", form().Text1.on_change) == "!");
  CHECK(hears("Form2_Grid1_SelChange", console().Form2.Grid1.on_sel_change) == "!");
  CHECK(hears("Text1_GotFocus", form().Text1.on_got_focus) == "!");
  CHECK(hears("Form_GotFocus", form().on_got_focus) == "!");
  CHECK(hears("Text1_LostFocus", form().Text1.on_lost_focus) == "!");
  CHECK(hears("Form_LostFocus", form().on_lost_focus) == "!");
  CHECK(hears("MyMsgbox_Load", console().MyMsgbox.on_load) == "!");
  CHECK(hears("MyMsgbox_Unload", console().MyMsgbox.on_unload) == "!");
  CHECK(hears("Form_Resize", form().on_resize) == "!");
  CHECK(hears("Drop1_MouseDown 1 2", form().Drop1.on_mouse_down) == "1 2 !");
  CHECK(hears("Drop1_MouseUp 2 1", form().Drop1.on_mouse_up) == "2 1 !");
  CHECK(hears("Text1_KeyDown 65 1", form().Text1.on_key_down) == "65 1 !");
  CHECK(hears("Form_KeyDown 66 2", form().on_key_down) == "66 2 !");
  CHECK(hears("Text1_KeyPress 97", form().Text1.on_key_press) == "97 !");
}

}  // namespace
}  // namespace lineweir::test
