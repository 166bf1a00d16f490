#include "serverlink/user_profile.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "support/profile_blocks.h"
#include "support/rows_of.h"

namespace lineweir {
namespace {

using test::fields_of;
using test::flags_of;
using test::ScriptedConsole;

TEST_CASE("each option has its flag in the profile") {
  ScriptedConsole desk;
  MainForm& form = desk.console.Lineweir;
  const std::vector<std::pair<std::size_t, MenuItem*>> places = {
      {1, &form.Com1},
      {2, &form.Com2},
      {3, &form.Com3},
      {4, &form.Com4},
      {5, &form.NetworkConnectionOption},
      {6, &form.WinsockMenu},
      {7, &form.PortOn},
      {8, &form.Off},
      {9, &form.RemoteCom1},
      {10, &form.RemoteCom2},
      {11, &form.RemoteCom3},
      {12, &form.RemoteCom4},
      {13, &form.RemoteOn},
      {14, &form.RemoteOff},
      {25, &form.PassiveMode},
      {26, &form.StudioMode},
      {27, &form.ScreenerMode},
      {28, &form.RemoteNext},
      {29, &form.EventClockMenu},
      {30, &form.TimeClockMenuItem},
      {31, &form.AutoDataEntry},
      {32, &form.MitelPhone1},
      {33, &form.MitelPhone2},
      {34, &form.DimLineNumMenu},
      {35, &form.StudioLinNumMenu},
      {36, &form.SyncTimeMenu},
      {37, &form.DigiClock},
      {38, &form.Line20Mode},
      {39, &form.TextGrowToggle},
      {40, &form.ServerShowData},
      {41, &form.NextBarDisable},
  };
  for (const auto& [place, item] : places) {
    CAPTURE(place);
    for (const bool checked : {true, false}) {
      item->checked = checked;
      CHECK(flags_of(desk.console)[place - 1] == (checked ? '1' : '0'));
    }
  }
}

TEST_CASE("the flags of the log's fields and of the message font stand in the profile") {
  ScriptedConsole desk;
  for (std::size_t field = 0; field < 10; ++field) {
    desk.console.caller_data.LogFieldOn.fill(false);
    desk.console.caller_data.LogFieldOn[field] = true;
    std::string wanted(10, '0');
    wanted[field] = '1';
    CHECK(flags_of(desk.console).substr(14, 10) == wanted);
  }
  for (const bool bold : {true, false}) {
    desk.console.fonts.FontChange({"Serif", 9, bold, !bold});
    CHECK(flags_of(desk.console).substr(41) == (bold ? "10" : "01"));
  }
}

TEST_CASE("the digital clock is kept only while there is room for it") {
  ScriptedConsole desk;
  desk.console.Lineweir.DigiClock.checked = true;
  desk.console.program.VisibleLines = 10;
  CHECK(flags_of(desk.console)[36] == '1');
  desk.console.program.VisibleLines = 11;
  CHECK(flags_of(desk.console)[36] == '0');
}

TEST_CASE("the profile's fields stand in their order") {
  ScriptedConsole desk;
  Console& console = desk.console;
  console.program.GroupNumber = 3;
  console.program.OperatorName = " Ann ";
  console.clock_state.Warning1 = 45;
  console.clock_state.Warning2 = 15;
  console.program.MessageFile = "HOT.LWB";
  console.clock_state.DelayOffset = -7;
  console.fonts.FontChange({"Serif", 9, false, false});
  const auto fields = fields_of(console);
  REQUIRE(fields.size() == 47);
  const std::vector<std::string> first = {"6970", "9420", "3",  "0",  "NoName.TXT", "",
                                          "Ann",  "3",    "45", "15", "HOT.LWB"};
  CHECK(std::vector<std::string>(fields.begin(), fields.begin() + 11) == first);
  const std::vector<std::string> last = {"Serif", "9", "-7"};
  CHECK(std::vector<std::string>(fields.end() - 3, fields.end()) == last);
}

TEST_CASE("each column has its place, mark and width in the profile") {
  ScriptedConsole desk;
  const DisplayDataForm& form = desk.console.DisplayOptionForm;
  // Neither the window's size nor a hidden line is in a width that is kept.
  test::resize(desk.console, 18840, 7255);
  form.LineCheck(0).value = 0;
  desk.console.row_choice.RefreshVisibleRows();
  desk.console.display.fill_width_boxes();
  const auto fields = fields_of(desk.console);
  REQUIRE(fields.size() == 47);
  for (int column = first_optional_column; column < column_count; ++column) {
    CAPTURE(column);
    const std::size_t group = 11 + 3 * static_cast<std::size_t>(column - first_optional_column);
    const bool shown = form.CheckItem(column).value == 1;
    const int place = desk.console.display.listed_place(column);
    CHECK(fields[group] == std::to_string(shown ? place : 99));
    CHECK(fields[group + 1] == (shown ? "T" : "F"));
    const ColumnRule& rule = column_rules[static_cast<std::size_t>(column)];
    CHECK(fields[group + 2] == (shown ? std::to_string(rule.width) : "0"));
  }
}

TEST_CASE("the height is kept without the menus") {
  ScriptedConsole desk;
  const auto with_menus = fields_of(desk.console);
  desk.console.Lineweir.OptionsButton.on_click();
  REQUIRE_FALSE(desk.console.Lineweir.Options.visible);
  CHECK(fields_of(desk.console)[0] == with_menus[0]);
}

TEST_CASE("a name that is given becomes the user's, and stands in front of the profile") {
  ScriptedConsole desk;
  desk.console.login.UserName = "Ann";
  CHECK(desk.console.user_profile.PrepareUserData("").starts_with("Ann\3"));
  CHECK(desk.console.user_profile.PrepareUserData("Bea").starts_with("Bea\3"));
  CHECK(desk.console.login.UserName.trimmed() == "Bea");
}

TEST_CASE("a minimised window is restored before its size is kept") {
  ScriptedConsole desk;
  desk.console.Lineweir.window_state = window_minimised;
  CHECK(fields_of(desk.console)[3] == "0");
  CHECK(desk.console.Lineweir.window_state == int{window_normal});
}

TEST_CASE("a profile is sent to a server that keeps profiles, and nowhere else") {
  ScriptedConsole desk;
  Console& console = desk.console;
  const auto sent = [&] {
    console.user_profile.SendUserProfile("Bea");
    return desk.platform.winsock1.take_writes();
  };
  CHECK(sent().empty());
  CHECK(console.login.UserName.trimmed().empty());

  desk.platform.winsock1.stand_connected();
  console.Lineweir.WinsockMenu.checked = true;
  console.lines.ThePhoneFlag = 4;
  CHECK(sent().empty());
  console.lines.ThePhoneFlag = 3;
  const auto frames = sent();
  REQUIRE(frames.size() == 1);
  CHECK(frames[0].substr(2, 1) == "\x17");
  CHECK(frames[0].find(console.user_profile.PrepareUserData("Bea")) == 10);
  CHECK(console.login.UserName.trimmed() == "Bea");
}

TEST_CASE("a profile that can't be sent is reported and told in no box") {
  ScriptedConsole desk;
  desk.console.Lineweir.WinsockMenu.checked = true;
  desk.take_trace();
  desk.console.user_profile.SendUserProfile("");
  CHECK(desk.take_messages().empty());
  REQUIRE(desk.trace.size() == 1);
  CHECK(desk.trace[0].starts_with("Lineweir_SendUserProfile Error - "));
}

}  // namespace
}  // namespace lineweir
