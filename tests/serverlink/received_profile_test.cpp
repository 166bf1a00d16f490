#include "serverlink/received_profile.h"

#include <algorithm>
#include <string>
#include <vector>

#include "support/call_log_file.h"
#include "support/profile_blocks.h"
#include "support/rows_of.h"

namespace lineweir::test {
namespace {

struct ReceivedProfileDesk : ScriptedConsole {
  EditedProfile profile() { return EditedProfile(console); }
  MainForm& form() { return console.Lineweir; }
};

TEST_SUITE("serverlink/received profile") {
  TEST_CASE("a console's own profile leaves it as it is") {
    ReceivedProfileDesk desk;
    const std::string before = block_of(desk.console);
    desk.profile().apply();
    CHECK(block_of(desk.console) == before);
    CHECK(desk.take_trace().empty());
    CHECK(desk.take_messages().empty());
  }

  TEST_CASE("the profile after a choice by hand is passed over, once") {
    ReceivedProfileDesk desk;
    const EditedProfile profile = desk.profile().flag(36, true);
    desk.console.login.SkipProfile = true;
    profile.apply();
    CHECK_FALSE(desk.form().SyncTimeMenu.checked);
    CHECK_FALSE(desk.console.login.SkipProfile);
    profile.apply();
    CHECK(desk.form().SyncTimeMenu.checked);
  }

  TEST_CASE("a profile changes nothing while the user chooses what the rows show") {
    ReceivedProfileDesk desk;
    desk.console.DisplayOptionForm.show();
    desk.profile().flag(36, true).apply();
    CHECK_FALSE(desk.form().SyncTimeMenu.checked);
  }

  TEST_CASE("the timer applies a block of more than 30 characters, once") {
    for (const std::size_t length : {30U, 31U}) {
      ReceivedProfileDesk desk;
      MainForm& form = desk.form();
      form.EventClockMenu.on_click();
      const bool before = form.EventClockMenu.checked;
      desk.console.login.ProfileBlock = desk.profile().flag(29, !before).block().substr(0, length);
      form.UserProfileTimer.enabled = true;
      desk.platform.loop.advance(platform::Milliseconds(499));
      CHECK(form.EventClockMenu.checked == before);
      desk.platform.loop.advance(platform::Milliseconds(1));
      CHECK(form.EventClockMenu.checked == (length == 31 ? !before : before));
      CHECK_FALSE(form.UserProfileTimer.enabled);
    }
  }

  TEST_CASE("the window gets the size of its group's profile, unless it is nearly the present") {
    ReceivedProfileDesk desk;
    const EditedProfile same = desk.profile();
    const int height = desk.form().height;
    const int width = desk.form().width;
    const int stored = height - 285;
    EditedProfile(same)
        .field(1, std::to_string(stored + 49))
        .field(2, std::to_string(width - 49))
        .apply();
    CHECK(desk.form().height == height);
    CHECK(desk.form().width == width);
    EditedProfile(same)
        .field(1, std::to_string(stored + 50))
        .field(2, std::to_string(width - 49))
        .apply();
    CHECK(desk.form().height == height + 50);
    CHECK(desk.form().width == width - 49);
    EditedProfile(same).field(1, "9000").field(2, "12000").field(3, "2").apply();
    CHECK(desk.form().height == height + 50);
    EditedProfile(same).field(1, "9000").field(2, "12000").field(4, "2").apply();
    CHECK(desk.form().window_state == int{window_maximised});
    CHECK(desk.form().height == height + 50);
  }

  TEST_CASE("a profile of a console with menus gives one without them a lower window") {
    ReceivedProfileDesk desk;
    const EditedProfile with_menus = desk.profile().field(1, "9000");
    desk.form().OptionsButton.on_click();
    REQUIRE_FALSE(desk.form().Options.visible);
    with_menus.apply();
    CHECK(desk.form().height == 9000);
    desk.form().OptionsButton.on_click();
    desk.profile().field(1, "9500").apply();
    CHECK(desk.form().height == 9500 + 285);
  }

  TEST_CASE("a window that isn't shown yet waits with its size") {
    ReceivedProfileDesk desk;
    const EditedProfile profile = desk.profile().field(1, "9000").field(2, "12345");
    desk.form().hide();
    profile.apply();
    CHECK(desk.form().SetStateTimer.enabled);
    CHECK(desk.console.profile_window.SetStateToHeight == 9285);
    CHECK(desk.console.profile_window.SetStateToWidth == 12345);
    CHECK(desk.console.profile_window.SetStateMessGroup == 1);
    desk.form().show();
    desk.platform.loop.advance(platform::Milliseconds(100));
    CHECK(desk.form().height == 9285);
    CHECK(desk.form().width == 12345);
  }

  TEST_CASE("a window stays in the hands of its user, whatever size and state a profile names") {
    for (const char* side : {"1", "0", "-5", "32767", "-32768"}) {
      ReceivedProfileDesk desk;
      desk.profile().field(1, side).field(2, side).field(4, "7").apply();
      CHECK(desk.form().window_state == int{window_normal});
      CHECK(desk.form().height >= 1500);
      CHECK(desk.form().width >= 1500);
      CHECK(desk.form().width <= INT16_MAX);
      CHECK(desk.form().height <= INT16_MAX);
    }
  }

  TEST_CASE("the operator's name, warnings, hot list and offset come with the profile") {
    ReceivedProfileDesk desk;
    desk.profile()
        .field(7, "Bea")
        .field(9, "120")
        .field(10, "20")
        .field(11, "/lists/" + std::string(40, 'H'))
        .field(47, "12")
        .apply();
    CHECK(desk.console.program.OperatorName == "Bea");
    CHECK(desk.console.clock_state.Warning1 == 120);
    CHECK(desk.console.clock_state.Warning2 == 20);
    CHECK(desk.console.program.MessageFile == "/lists/" + std::string(23, 'H'));
    CHECK(desk.console.clock_state.DelayOffset == 12);
  }

  TEST_CASE("empty fields leave what stands, and so do values that can't be") {
    ReceivedProfileDesk desk;
    Console& console = desk.console;
    console.program.OperatorName = "Ann";
    console.program.MessageFile = "HOT.LWB";
    console.clock_state.DelayOffset = 7;
    choose_log(desk);
    const std::string before = block_of(console);
    EditedProfile empty = desk.profile();
    std::ranges::fill(empty.fields, "");
    empty.apply();
    CHECK(block_of(console) == before);
    for (const char* offset : {"60", "x"}) desk.profile().field(47, offset).apply();
    for (const char* warning : {"-2", "3599", "99999"}) desk.profile().field(9, warning).apply();
    CHECK(block_of(console) == before);
  }

  TEST_CASE("an offset below 0, which can be typed, is taken as it stands") {
    ReceivedProfileDesk desk;
    desk.profile().field(47, "-5").apply();
    CHECK(desk.console.clock_state.DelayOffset == -5);
  }

  TEST_CASE("a block that ends early leaves what was read before its end") {
    ReceivedProfileDesk desk;
    const auto apply_cut = [&](std::size_t count) {
      desk.profile()
          .field(7, "Bea")
          .field(9, "77")
          .field(46, "20")
          .field(47, "12")
          .cut(count)
          .apply();
    };
    apply_cut(6);
    CHECK(desk.console.program.OperatorName.empty());
    apply_cut(7);
    CHECK(desk.console.program.OperatorName == "Bea");
    apply_cut(43);
    CHECK(desk.console.clock_state.Warning1 == 30);
    apply_cut(44);
    CHECK(desk.console.clock_state.Warning1 == 77);
    apply_cut(46);
    CHECK(desk.console.fonts.present().size != 20);
    CHECK(desk.console.clock_state.DelayOffset == 0);
    apply_cut(47);
    CHECK(desk.console.fonts.present().size == 20);
    CHECK(desk.console.clock_state.DelayOffset == 12);
    CHECK(desk.take_trace().empty());
  }

  TEST_CASE("columns get their places, widths and marks; a gap in the places stays one") {
    ReceivedProfileDesk desk;
    EditedProfile profile = desk.profile();
    for (int column = 2; column < 13; ++column) profile.column(column, "99", "F", "0");
    profile.column(5, "0", "T", "1500").column(3, "2", "T", "2500").apply();
    const DisplayDataForm& form = desk.console.DisplayOptionForm;
    CHECK(form.List1.list.get() == std::vector<std::string>{"City", "/", "Caller Name"});
    for (int column = 2; column < 13; ++column) {
      CAPTURE(column);
      CHECK((form.CheckItem(column).value == 1) == (column == 3 || column == 5));
      CHECK(desk.form().column_labels(column)(0).visible == (column == 3 || column == 5));
    }
    CHECK(desk.form().LineCity(0).width == 1500);
    CHECK(desk.form().LineName(4).width == 2500);
    CHECK(desk.form().LineCity(0).left < desk.form().LineName(0).left);
    // A column that is shown again has the width that it had.
    CHECK(desk.console.display.width_of(11) == 2500);
  }

  TEST_CASE("no place of a column makes a list longer than there are columns") {
    for (const char* place : {"11", "50", "98", "100", "32767", "-1", "-32768"}) {
      CAPTURE(place);
      ReceivedProfileDesk desk;
      desk.profile().column(3, place, "T", "1700").apply();
      CHECK(desk.console.DisplayOptionForm.List1.list_count() <= 11);
      CHECK(desk.console.display.listed_place(3) >= 0);
    }
  }

  TEST_CASE("a column without a place fills a gap where the list has no room behind its end") {
    ReceivedProfileDesk desk;
    EditedProfile profile = desk.profile();
    for (int column = 2; column < 13; ++column) profile.column(column, "99", "F", "0");
    profile.column(2, "10", "T", "800").column(3, "10", "T", "1700").column(5, "50", "T", "1200");
    profile.apply();
    const auto headings = desk.console.DisplayOptionForm.List1.list.get();
    REQUIRE(headings.size() == 11);
    CHECK(headings[0] == "Caller Name");
    CHECK(headings[1] == "City");
    CHECK(headings[10] == "Time");
    // What is written now is read the same.
    const std::string block = block_of(desk.console);
    desk.profile().apply();
    CHECK(block_of(desk.console) == block);
  }

  TEST_CASE("fonts come with the profile, in sizes that can be read") {
    ReceivedProfileDesk desk;
    desk.profile().flag(42, true).flag(43, true).field(45, "Serif").field(46, "9").apply();
    CHECK(desk.console.fonts.present().name == "Serif");
    CHECK(desk.console.fonts.present().size == 9);
    CHECK(desk.console.fonts.present().bold);
    CHECK(desk.console.fonts.present().italic);
    CHECK(desk.form().LineName(9).font.size == 9);
    desk.profile().field(46, "32767").apply();
    CHECK(desk.console.fonts.present().size == 72);
    desk.profile().field(46, "-3").apply();
    CHECK(desk.console.fonts.present().size == 6);
  }

  TEST_CASE("the lines come and go with the profile, with the rows and what is on them") {
    ReceivedProfileDesk desk;
    Console& console = desk.console;
    desk.profile().flag(38, true).field(46, "11").apply();
    CHECK(console.lines.LineCount == 20);
    CHECK(console.program.VisibleLines == 20);
    CHECK(desk.form().LineName(19).font.size == 11);
    console.lines.StatusLetter(15) = 'P';
    console.caller_data.show_for_line(15);
    console.Form4.TheText(0).text = "Ann";
    console.dial.DialLine = 15;
    console.lines.TheNextCall = 15;
    desk.profile().flag(38, false).apply();
    CHECK(console.lines.LineCount == 10);
    CHECK(console.program.VisibleLines == 10);
    CHECK(console.dial.DialLine == no_line);
    CHECK(console.lines.TheNextCall == no_line);
    desk.platform.loop.advance(platform::Milliseconds(3000));
    // What was typed belongs to the call, which is over here.
    CHECK(console.Form4.visible);
    CHECK(console.Form4.TheText(0).text == "Ann");
    CHECK(console.Form4.DiscardCall.visible);
    CHECK(desk.take_trace().empty());
  }

  TEST_CASE("a block that ends behind the flag of the lines changes them, and no shorter one") {
    for (const std::size_t length : {37U, 38U, 43U}) {
      ReceivedProfileDesk desk;
      desk.console.received_profile.SetUserProfile(
          desk.profile().flag(38, true).flags.substr(0, length));
      CHECK(desk.console.lines.LineCount == (length == 37 ? 10 : 20));
    }
  }

  TEST_CASE("a line that comes shows what the server has told of it") {
    ReceivedProfileDesk desk;
    desk.console.login.ServerAlive = true;
    std::string status;
    for (int line = 0; line < 20; ++line) status += line == 14 ? "P14" : "F00";
    desk.console.line_events.TheStatusText = status;
    desk.profile().flag(38, true).apply();
    desk.platform.loop.advance(platform::Milliseconds(100));
    CHECK(desk.console.lines.StatusLetter(14) == 'P');
  }

  TEST_CASE("what is counted down to goes with the plan") {
    ReceivedProfileDesk desk;
    desk.form().CountDownTime.caption = "00:00:20";
    desk.form().RedClock.visible = true;
    desk.profile().apply();
    CHECK(desk.form().CountDownTime.caption == "");
    CHECK_FALSE(desk.form().RedClock.visible);
  }
}

}  // namespace
}  // namespace lineweir::test
