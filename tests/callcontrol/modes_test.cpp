#include "callcontrol/modes.h"

#include <doctest/doctest.h>

#include <array>
#include <string>
#include <vector>

#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

using Writes = std::vector<std::string>;

// A console whose socket stands, in talent mode.
struct SocketDesk : ScriptedConsole {
  SocketDesk() {
    platform.winsock1.stand_connected();
    console.Lineweir.WinsockMenu.checked = true;
  }
};

std::string mode_frame(int mode) {
  return std::string("\x04\x04\x12\xFF\x01", 5) + static_cast<char>(mode) +
         std::string("\x00\xFF\x00\x00\x05\x05", 6);
}

TEST_SUITE("callcontrol/modes: producer") {
  TEST_CASE("captions, title and checks") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    form.ScreenerMode.on_click();
    CHECK(form.ScreenerMode.checked);
    CHECK_FALSE(form.StudioMode.checked);
    CHECK(form.Label9.caption == "Next");
    CHECK(form.Label10.caption == "Ans");
    CHECK(form.CenterLabel1.caption == "R&EADY");
    CHECK(form.CenterLabel2.caption == "&ANSWER NEXT");
    CHECK(form.caption == "Lineweir - Producer      Studio #1 - Group 1      ");
  }

  TEST_CASE("the handset decides what works") {
    for (const int handset : {0, 1, 2}) {
      CAPTURE(handset);
      ScriptedConsole desk;
      MainForm& form = desk.console.Lineweir;
      if (handset == 1) form.MitelPhone1.on_click();
      if (handset == 2) form.MitelPhone2.on_click();
      form.ScreenerMode.on_click();
      const bool chosen = handset != 0;
      for (const Picture* button :
           {&form.Drop1, &form.Hold1, &form.NextButton, &form.NextToConfButton, &form.OnHybrid1(0),
            &form.OnHybrid1(9)}) {
        CHECK(button->enabled == chosen);
      }
      CHECK(form.Drop1.picture == (chosen ? "DropLargeUp" : "DropLargeDisabled"));
      CHECK(form.OnHybrid2(0).enabled);
      CHECK(form.OnHybrid2(0).picture == "HybridNormUp");
      CHECK_FALSE(form.Drop2.enabled);
      CHECK_FALSE(form.Hold2.enabled);
      CHECK(form.Drop2.visible);
      CHECK(form.Hold2.visible);
    }
  }

  TEST_CASE("the drop and hold buttons become wide and cover their neighbours") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    form.ScreenerMode.on_click();
    CHECK(form.Drop1.width == 750);
    CHECK(form.Hold1.width == 750);
    CHECK(form.Drop1Image.width == 750);
    CHECK(form.Drop1Label.left == 200);
    CHECK(form.Drop2.left == 675);
    form.StudioMode.on_click();
    CHECK(form.Drop1.width == 375);
    CHECK(form.Drop1Label.left == 40);
    CHECK(form.Drop2.visible);
    CHECK(form.Hold2.visible);
  }

  TEST_CASE("passive mode holds when the lines are laid out anew") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    form.PassiveMode.on_click();
    desk.console.layout.set_line_count(20);
    for (const int line : {0, 19}) {
      CAPTURE(line);
      CHECK_FALSE(form.OnHybrid1(line).enabled);
      CHECK_FALSE(form.OnHybrid2(line).enabled);
    }
  }

  TEST_CASE("a console without the main hybrid answers all the same") {
    ScriptedConsole desk;
    desk.console.program.MainHybridOn = false;
    desk.console.program.ConfHybridOn = false;
    desk.console.Lineweir.MitelPhone2.checked = true;
    desk.console.Lineweir.ScreenerMode.on_click();
    CHECK(desk.console.Lineweir.OnHybrid1(2).enabled);
    CHECK(desk.console.Lineweir.OnHybrid2(2).enabled);
  }

  TEST_CASE("remote next is switched off with one R") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    desk.platform.comm1.open();
    form.RemoteNext.checked = true;
    form.RemoteNextTimer.enabled = true;
    form.ScreenerMode.on_click();
    CHECK(desk.platform.comm1.take_writes() == Writes{"R"});
    CHECK_FALSE(form.RemoteNext.checked);
    CHECK_FALSE(form.RemoteNext.enabled);
    CHECK_FALSE(form.RemoteNextTimer.enabled);
    form.ScreenerMode.on_click();
    CHECK(desk.platform.comm1.take_writes().empty());
  }

  TEST_CASE("the icons are set again from the letters") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    desk.console.lines.StatusLetter(1) = 'S';
    desk.console.lines.StatusLetter(2) = 'N';
    desk.console.rows.HybridPictureSet(3, 4, 4);
    form.ScreenerMode.on_click();
    CHECK(form.CIcon1(1).picture == "YellowIcon");
    CHECK(form.CIcon1(1).visible);
    CHECK(form.CIcon1(2).picture == "RedIcon");
    CHECK_FALSE(form.CIcon2(2).visible);
    CHECK_FALSE(form.CIcon1(3).visible);
  }

  TEST_CASE("on the serial link the mode isn't told") {
    ScriptedConsole desk;
    desk.platform.comm1.open();
    desk.console.Lineweir.ScreenerMode.on_click();
    desk.console.Lineweir.StudioMode.on_click();
    CHECK(desk.platform.comm1.take_writes().empty());
    CHECK(desk.platform.winsock1.take_writes().empty());
  }

  TEST_CASE("the switch console's port is closed and opened again") {
    ScriptedConsole desk;
    desk.platform.comm2.open();
    desk.platform.comm2.arrive("\x01");
    desk.console.Lineweir.ScreenerMode.on_click();
    CHECK(desk.platform.comm2.is_open());
    desk.platform.comm2.close();
    desk.console.Lineweir.StudioMode.on_click();
    CHECK_FALSE(desk.platform.comm2.is_open());
  }

  TEST_CASE("a switch console that can't be opened again doesn't spoil the mode") {
    SocketDesk desk;
    desk.platform.comm2.open();
    desk.platform.comm2.fail_openings(failure_number::port_hardware_missing, 1);
    desk.console.Lineweir.ScreenerMode.on_click();
    CHECK(desk.console.Lineweir.CenterLabel1.caption == "R&EADY");
    CHECK(desk.platform.winsock1.take_writes() == Writes{mode_frame(1)});
  }
}

TEST_SUITE("callcontrol/modes: talent") {
  TEST_CASE("captions, title and checks") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    form.ScreenerMode.on_click();
    form.StudioMode.on_click();
    CHECK(form.StudioMode.checked);
    CHECK_FALSE(form.ScreenerMode.checked);
    CHECK(form.Label9.caption == "Conf");
    CHECK(form.Label10.caption == "Main");
    CHECK(form.CenterLabel1.caption == "&NEXT TO MAIN");
    CHECK(form.CenterLabel2.caption == "NE&XT TO CONF");
    CHECK(form.caption == "Lineweir - Talent        Studio #1 - Group 1      ");
    CHECK(form.RemoteNext.enabled);
    CHECK(form.Drop1.picture == "DropSmallUp");
    CHECK(form.Drop2.picture == "DropSmallUp");
    CHECK(form.Drop2.enabled);
  }

  TEST_CASE("the hybrids decide what works") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    desk.console.program.MainHybridOn = false;
    form.StudioMode.on_click();
    for (const Picture* button :
         {&form.Drop1, &form.Hold1, &form.NextButton, &form.OnHybrid1(0), &form.OnHybrid1(9)}) {
      CHECK_FALSE(button->enabled);
    }
    for (const Picture* button :
         {&form.Drop2, &form.Hold2, &form.NextToConfButton, &form.OnHybrid2(0)}) {
      CHECK(button->enabled);
    }
    CHECK(form.Drop1.picture == "DropSmallDisabled");
    CHECK(form.OnHybrid1(4).picture == "HybridDisabledNorm");
  }
}

TEST_SUITE("callcontrol/modes: passive") {
  void check_locked(const MainForm& form) {
    for (const Picture* button : {&form.Drop1, &form.Hold1, &form.Drop2, &form.Hold2}) {
      CHECK_FALSE(button->enabled);
      CHECK(button->picture == "DropSmallDisabled");
    }
    for (const Picture* button : {&form.NextButton, &form.NextToConfButton, &form.Dial}) {
      CHECK_FALSE(button->enabled);
      CHECK(button->picture == "CenterDisabled");
    }
    for (int line = 0; line < 10; ++line) {
      CHECK_FALSE(form.OnHybrid1(line).enabled);
      CHECK_FALSE(form.OnHybrid2(line).enabled);
      CHECK(form.OnHybrid1(line).picture == "HybridDisabledNorm");
      CHECK(form.OnHybrid2(line).picture == "HybridDisabledNorm");
    }
    CHECK(form.StudioMode.checked);
    CHECK_FALSE(form.ScreenerMode.checked);
    CHECK_FALSE(form.ScreenerMode.enabled);
    CHECK(form.CenterLabel1.caption == "&NEXT TO MAIN");
  }

  TEST_CASE("on and off pass through talent mode twice, whatever the mode before") {
    for (const bool from_producer : {false, true}) {
      SocketDesk desk;
      MainForm& form = desk.console.Lineweir;
      if (from_producer) {
        form.MitelPhone1.on_click();
        form.ScreenerMode.on_click();
        CHECK(desk.platform.winsock1.take_writes() == Writes{mode_frame(1)});
      }
      form.PassiveMode.on_click();
      CHECK(form.PassiveMode.checked);
      check_locked(form);
      CHECK(desk.platform.winsock1.take_writes() == Writes{mode_frame(0)});

      form.PassiveMode.on_click();
      CHECK_FALSE(form.PassiveMode.checked);
      CHECK(form.StudioMode.checked);
      CHECK(form.ScreenerMode.enabled);
      CHECK(form.Dial.enabled);
      CHECK(form.Dial.picture == "Center1Up");
      CHECK(form.Drop1.enabled);
      CHECK(form.OnHybrid1(9).enabled);
      CHECK(desk.platform.winsock1.take_writes() == Writes{mode_frame(0)});
    }
  }

  TEST_CASE("beside 19 rows the centre buttons show the faces of the right column") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    desk.console.program.VisibleLines = 19;
    form.PassiveMode.on_click();
    CHECK(form.Dial.picture == "ButtonRightDisabled");
    CHECK(form.NextButton.picture == "ButtonRightDisabled");
    form.PassiveMode.on_click();
    CHECK(form.Dial.picture == "ButtonRightUp");
    CHECK(form.NextButton.picture == "ButtonRightUp");
  }

  TEST_CASE("a click on talent in passive mode leaves everything locked") {
    ScriptedConsole desk;
    desk.console.Lineweir.PassiveMode.on_click();
    desk.console.Lineweir.StudioMode.on_click();
    check_locked(desk.console.Lineweir);
  }

  TEST_CASE("a check set without a click is made true") {
    for (const bool from_producer : {false, true}) {
      SocketDesk desk;
      MainForm& form = desk.console.Lineweir;
      if (from_producer) form.ScreenerMode.on_click();
      desk.platform.winsock1.take_writes();
      desk.console.modes.CheckPassiveState();
      CHECK(form.Dial.enabled);
      form.PassiveMode.checked = true;
      desk.console.modes.CheckPassiveState();
      check_locked(form);
      CHECK(desk.platform.winsock1.take_writes() ==
            (from_producer ? Writes{mode_frame(0)} : Writes{}));
    }
  }
}

TEST_SUITE("callcontrol/modes: handset, phone, equipment") {
  TEST_CASE("the handsets exclude each other and change no button by themselves") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    form.ScreenerMode.on_click();
    CHECK_FALSE(form.NextButton.enabled);
    form.MitelPhone1.on_click();
    CHECK(form.MitelPhone1.checked);
    CHECK_FALSE(form.MitelPhone2.checked);
    CHECK_FALSE(form.NextButton.enabled);
    form.MitelPhone2.on_click();
    CHECK_FALSE(form.MitelPhone1.checked);
    CHECK(form.MitelPhone2.checked);
    form.MitelPhone2.on_click();
    CHECK(form.MitelPhone2.checked);
    form.ScreenerMode.on_click();
    CHECK(form.NextButton.enabled);
  }

  TEST_CASE("auto data entry is a toggle") {
    ScriptedConsole desk;
    MenuItem& item = desk.console.Lineweir.AutoDataEntry;
    item.on_click();
    CHECK(item.checked);
    item.on_click();
    CHECK_FALSE(item.checked);
  }

  TEST_CASE("choosing a phone changes the title's end and tells the server") {
    SocketDesk desk;
    MainForm& form = desk.console.Lineweir;
    form.NextGenPhone(0).caption = "Desk";
    form.NextGenPhone(1).caption = "Booth";
    form.NextGenPhoneMenu.visible = true;
    form.NextGenPhone(1).on_click();
    CHECK_FALSE(form.NextGenPhone(0).checked);
    CHECK(form.NextGenPhone(1).checked);
    CHECK(form.caption == "Lineweir - Talent        Studio #1 - Group 1      Booth");
    CHECK(desk.console.program.ConsoleNumber == 1);
    CHECK(desk.platform.winsock1.take_writes() ==
          Writes{std::string("\x04\x04\x14\xFF\x01\x01\x01\xFF\x00\x00\x05\x05", 12)});

    form.ScreenerMode.on_click();
    form.NextGenPhone(0).on_click();
    CHECK(form.caption == "Lineweir - Producer      Studio #1 - Group 1      Desk");
    // The word anywhere in the present title counts.
    form.caption = "No Talent here";
    form.NextGenPhone(1).on_click();
    CHECK(form.caption == "Lineweir - Talent        Studio #1 - Group 1      Booth");
  }

  TEST_CASE("the menus of each kind of equipment") {
    struct Row {
      int kind;
      bool remote_next;
      bool handsets;
      bool phones;
    };
    for (const Row& row : {Row{1, true, true, false}, Row{2, false, true, false},
                           Row{3, true, true, false}, Row{4, false, false, true}}) {
      for (const bool producer : {false, true}) {
        CAPTURE(row.kind);
        CAPTURE(producer);
        ScriptedConsole desk;
        MainForm& form = desk.console.Lineweir;
        if (producer) form.ScreenerMode.on_click();
        form.RemoteNext.checked = true;
        form.RemoteNextTimer.enabled = true;
        desk.console.lines.ThePhoneFlag = row.kind;
        desk.console.modes.follow_equipment();
        const bool stays = row.remote_next && !producer;
        CHECK(form.RemoteNext.checked == stays);
        CHECK(form.RemoteNextTimer.enabled == stays);
        CHECK(form.RemoteNext.enabled == stays);
        CHECK(form.MitelOption.visible == row.handsets);
        CHECK(form.NextGenPhoneMenu.visible == row.phones);
        CHECK(form.GetPhones.enabled == row.phones);
        CHECK(form.ServerShowData.visible == row.phones);
      }
    }
  }

  TEST_CASE("behind equipment with phones the title tells of none any more") {
    SocketDesk desk;
    MainForm& form = desk.console.Lineweir;
    desk.console.lines.ThePhoneFlag = 4;
    desk.console.modes.follow_equipment();
    form.NextGenPhone(0).caption = "Desk";
    form.NextGenPhone(0).on_click();
    REQUIRE(form.caption == "Lineweir - Talent        Studio #1 - Group 1      Desk");
    desk.console.lines.ThePhoneFlag = 3;
    desk.console.modes.follow_equipment();
    CHECK(form.caption == "Lineweir - Talent        Studio #1 - Group 1      ");
  }

  TEST_CASE("an unknown kind of equipment changes nothing") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    desk.console.lines.ThePhoneFlag = 4;
    desk.console.modes.follow_equipment();
    desk.console.lines.ThePhoneFlag = 7;
    desk.console.modes.follow_equipment();
    CHECK(form.NextGenPhoneMenu.visible);
    CHECK_FALSE(form.MitelOption.visible);
  }
}

TEST_SUITE("callcontrol/modes: failures") {
  TEST_CASE("a mode change without a connection says so and is made all the same") {
    ScriptedConsole desk;
    std::vector<std::string> shown;
    desk.console.messages.on_shown = [&](const std::string& text) { shown.push_back(text); };
    desk.console.Lineweir.WinsockMenu.checked = true;
    desk.console.Lineweir.ScreenerMode.on_click();
    CHECK(shown == Writes{"Lineweir is not currently connected to a server."});
    CHECK(desk.console.Lineweir.ScreenerMode.checked);
  }
}

TEST_SUITE("callcontrol/modes: the producer's phone") {
  TEST_CASE(
      "with equipment of kind 4 a phone is a handset, and the first is chosen from the start") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    CHECK(form.NextGenPhone(0).checked);
    desk.console.lines.ThePhoneFlag = 4;
    form.ScreenerMode.on_click();
    for (const Picture* button : {&form.NextButton, &form.NextToConfButton, &form.Drop1,
                                  &form.Hold1, &form.OnHybrid1(0), &form.OnHybrid1(9)}) {
      CAPTURE(button->name());
      CHECK(button->enabled);
    }
    CHECK(form.NextButton.picture == "Center1Up");
    CHECK(form.Drop1.picture == "DropLargeUp");
    CHECK(form.OnHybrid1(3).picture == "HybridNormUp");
    form.NextGenPhone(0).checked = false;
    form.ScreenerMode.on_click();
    CHECK_FALSE(form.NextButton.enabled);
    CHECK_FALSE(form.OnHybrid1(3).enabled);
  }

  TEST_CASE("other equipment knows no phones") {
    for (const int kind : {1, 2, 3}) {
      ScriptedConsole desk;
      desk.console.lines.ThePhoneFlag = kind;
      desk.console.Lineweir.ScreenerMode.on_click();
      CHECK_FALSE(desk.console.Lineweir.NextButton.enabled);
      CHECK_FALSE(seat_of(desk.console).has_handset());
    }
  }

  TEST_CASE("a producer whose server tells of such equipment can work at once") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    form.ScreenerMode.on_click();
    REQUIRE_FALSE(form.NextToConfButton.enabled);
    desk.console.lines.ThePhoneFlag = 4;
    desk.console.modes.follow_equipment();
    CHECK(form.NextToConfButton.enabled);
    CHECK(form.OnHybrid1(0).enabled);
    desk.console.lines.ThePhoneFlag = 1;
    desk.console.modes.follow_equipment();
    CHECK_FALSE(form.NextToConfButton.enabled);
  }

  TEST_CASE("one phone is chosen at a time") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    CHECK_FALSE(form.NextGenPhone(1).checked);
    CHECK_FALSE(form.StudioGr.load(1).checked);
    form.NextGenPhone(1).on_click();
    CHECK_FALSE(form.NextGenPhone(0).checked);
  }
}

}  // namespace
}  // namespace lineweir::test
