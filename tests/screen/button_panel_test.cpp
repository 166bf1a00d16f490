#include "screen/button_panel.h"

#include <doctest/doctest.h>

#include <array>
#include <string>
#include <vector>

#include "screen/button_faces.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

bool shows(const Picture& button, bool enabled, std::string_view picture) {
  return button.enabled == enabled && button.picture == picture;
}

bool all_show(const ControlArray<Picture>& buttons, bool enabled) {
  for (int line = 0; line < buttons.upper_bound(); ++line) {
    const auto face = enabled ? hybrid_faces.up : hybrid_faces.disabled;
    if (!shows(buttons(line), enabled, face)) return false;
  }
  return true;
}

constexpr std::array row_counts = {1, 10, 11, 18, 19, 20};

TEST_SUITE("screen/button_panel") {
  TEST_CASE("each picture of a button belongs to one family") {
    for (const ButtonFaces& faces : button_families) {
      CHECK(faces_holding(faces.up)->up == faces.up);
      CHECK(faces_holding(faces.down)->up == faces.up);
      if (!faces.disabled.empty()) CHECK(faces_holding(faces.disabled)->up == faces.up);
    }
    CHECK(faces_holding("DataRowWhite") == nullptr);
    CHECK(faces_holding("") == nullptr);
  }

  TEST_CASE("the centre buttons change family with 19 rows") {
    for (int rows = 0; rows <= 18; ++rows) CHECK(center_button_faces(rows).up == "Center1Up");
    for (int rows = 19; rows <= 20; ++rows) CHECK(center_button_faces(rows).up == "ButtonRightUp");
  }

  TEST_CASE("in talent mode each hybrid has its buttons") {
    ScriptedConsole desk;
    Console& console = desk.console;
    const MainForm& form = console.Lineweir;
    for (const int rows : row_counts) {
      for (const bool main : {true, false}) {
        for (const bool conference : {true, false}) {
          CAPTURE(rows);
          CAPTURE(main);
          CAPTURE(conference);
          console.program.VisibleLines = rows;
          console.program.MainHybridOn = main;
          console.program.ConfHybridOn = conference;
          console.modes.SetEnabledDisabled();

          const ButtonFaces& center = rows >= 19 ? right_faces : center_faces;
          const auto small = [](bool on) { return on ? "DropSmallUp" : "DropSmallDisabled"; };
          CHECK(all_show(form.OnHybrid1, main));
          CHECK(all_show(form.OnHybrid2, conference));
          CHECK(shows(form.Drop1, main, small(main)));
          CHECK(shows(form.Hold1, main, small(main)));
          CHECK(shows(form.Drop2, conference, small(conference)));
          CHECK(shows(form.Hold2, conference, small(conference)));
          CHECK(shows(form.NextButton, main, main ? center.up : center.disabled));
          CHECK(shows(form.NextToConfButton, conference, conference ? center.up : center.disabled));
        }
      }
    }
  }

  TEST_CASE("in producer mode the handset decides, whatever the hybrids") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    form.ScreenerMode.checked = true;
    form.StudioMode.checked = false;
    for (const int rows : row_counts) {
      for (const int handset : {0, 1, 2}) {
        for (const bool hybrids : {true, false}) {
          CAPTURE(rows);
          CAPTURE(handset);
          console.program.VisibleLines = rows;
          console.program.MainHybridOn = hybrids;
          console.program.ConfHybridOn = hybrids;
          form.MitelPhone1.checked = handset == 1;
          form.MitelPhone2.checked = handset == 2;
          console.modes.SetEnabledDisabled();

          const bool chosen = handset != 0;
          const ButtonFaces& center = rows >= 19 ? right_faces : center_faces;
          const auto large = chosen ? "DropLargeUp" : "DropLargeDisabled";
          CHECK(all_show(form.OnHybrid1, chosen));
          CHECK(all_show(form.OnHybrid2, true));
          CHECK(shows(form.Drop1, chosen, large));
          CHECK(shows(form.Hold1, chosen, large));
          CHECK_FALSE(form.Drop2.enabled);
          CHECK_FALSE(form.Hold2.enabled);
          CHECK(shows(form.NextButton, chosen, chosen ? center.up : center.disabled));
          CHECK(shows(form.NextToConfButton, chosen, chosen ? center.up : center.disabled));
        }
      }
    }
  }

  TEST_CASE("equipment of kind 4 keeps its buttons") {
    ScriptedConsole desk;
    Console& console = desk.console;
    console.lines.ThePhoneFlag = 4;
    console.program.MainHybridOn = false;
    console.modes.SetEnabledDisabled();
    CHECK(shows(console.Lineweir.Drop1, true, "DropSmallUp"));
    console.lines.ThePhoneFlag = 3;
    console.modes.SetEnabledDisabled();
    CHECK(shows(console.Lineweir.Drop1, false, "DropSmallDisabled"));
  }

  TEST_CASE("producer mode ends remote next, talent mode with equipment 1 or 3 gives it back") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    desk.platform.comm1.open();
    form.ScreenerMode.checked = true;
    form.RemoteNext.checked = true;
    form.RemoteNextTimer.enabled = true;
    console.modes.SetEnabledDisabled();
    CHECK_FALSE(form.RemoteNext.checked);
    CHECK_FALSE(form.RemoteNext.enabled);
    CHECK_FALSE(form.RemoteNextTimer.enabled);
    CHECK(desk.platform.comm1.take_writes() == std::vector<std::string>{"R"});
    console.modes.SetEnabledDisabled();
    CHECK(desk.platform.comm1.take_writes().empty());

    form.ScreenerMode.checked = false;
    console.lines.ThePhoneFlag = 2;
    console.modes.SetEnabledDisabled();
    CHECK_FALSE(form.RemoteNext.enabled);
    for (const int kind : {1, 3}) {
      form.RemoteNext.enabled = false;
      console.lines.ThePhoneFlag = kind;
      console.modes.SetEnabledDisabled();
      CHECK(form.RemoteNext.enabled);
    }
    form.RemoteNext.enabled = false;
    console.program.RemoteNextAllowed = false;
    console.modes.SetEnabledDisabled();
    CHECK_FALSE(form.RemoteNext.enabled);
  }

  TEST_CASE("passive mode lies over what the mode gives") {
    ScriptedConsole desk;
    Console& console = desk.console;
    const MainForm& form = console.Lineweir;
    console.Lineweir.PassiveMode.checked = true;
    console.modes.SetEnabledDisabled();
    CHECK(all_show(form.OnHybrid1, false));
    CHECK(all_show(form.OnHybrid2, false));
    for (const Picture* button : {&form.Drop1, &form.Hold1, &form.Drop2, &form.Hold2}) {
      CHECK(shows(*button, false, "DropSmallDisabled"));
    }
    for (const Picture* button : {&form.NextButton, &form.NextToConfButton, &form.Dial}) {
      CHECK(shows(*button, false, "CenterDisabled"));
    }
    CHECK(form.OptionsButton.enabled);
  }

  TEST_CASE("switching the main hybrid leaves its drop buttons their size") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    for (const ButtonFaces* size : {&drop_large_faces, &drop_small_faces}) {
      for (const auto& before : {size->up, size->disabled}) {
        form.Drop1.picture = before;
        form.Hold1.picture = before;
        console.panel.follow_hybrid(Hybrid::Main, false);
        CHECK(shows(form.Drop1, false, size->disabled));
        CHECK(shows(form.Hold1, false, size->disabled));
        CHECK(all_show(form.OnHybrid1, false));
        console.panel.follow_hybrid(Hybrid::Main, true);
        CHECK(shows(form.Drop1, true, size->up));
        CHECK(shows(form.Hold1, true, size->up));
        CHECK(all_show(form.OnHybrid1, true));
      }
      form.Drop1.picture = size->down;
      console.panel.follow_hybrid(Hybrid::Main, false);
      CHECK(shows(form.Drop1, false, size->down));
    }
    CHECK(all_show(form.OnHybrid2, true));
    CHECK(shows(form.Drop2, true, "DropSmallUp"));
  }

  TEST_CASE("the main next button that is switched off beside 19 rows shows its up face") {
    ScriptedConsole desk;
    Console& console = desk.console;
    const MainForm& form = console.Lineweir;
    for (const int rows : row_counts) {
      CAPTURE(rows);
      console.program.VisibleLines = rows;
      const bool right = rows >= 19;
      console.panel.follow_hybrid(Hybrid::Main, false);
      CHECK(shows(form.NextButton, false, right ? "ButtonRightUp" : "CenterDisabled"));
      console.panel.follow_hybrid(Hybrid::Main, true);
      CHECK(shows(form.NextButton, true, right ? "ButtonRightUp" : "Center1Up"));
      console.panel.follow_hybrid(Hybrid::Conference, false);
      CHECK(shows(form.NextToConfButton, false, right ? "ButtonRightDisabled" : "CenterDisabled"));
      console.panel.follow_hybrid(Hybrid::Conference, true);
      CHECK(shows(form.NextToConfButton, true, right ? "ButtonRightUp" : "Center1Up"));
    }
  }

  TEST_CASE("switching the conference hybrid makes its drop buttons small") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    form.Drop2.picture = drop_large_faces.up;
    console.panel.follow_hybrid(Hybrid::Conference, false);
    CHECK(shows(form.Drop2, false, "DropSmallDisabled"));
    CHECK(shows(form.Hold2, false, "DropSmallDisabled"));
    CHECK(all_show(form.OnHybrid2, false));
    console.panel.follow_hybrid(Hybrid::Conference, true);
    CHECK(shows(form.Drop2, true, "DropSmallUp"));
    CHECK(all_show(form.OnHybrid2, true));
    CHECK(all_show(form.OnHybrid1, true));
  }

  TEST_CASE("the centre buttons take the faces of their place and keep their state") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    // The server's buttons: nobody sets them anew.
    console.lines.ThePhoneFlag = 4;
    form.NextButton.picture = pictures::Center1Down;
    form.NextToConfButton.picture = pictures::CenterDisabled;
    console.program.VisibleLines = 19;
    console.panel.fit_center_buttons();
    CHECK(form.NextButton.picture == "ButtonRightDown");
    CHECK(form.NextToConfButton.picture == "ButtonRightDisabled");
    CHECK(form.Dial.picture == "ButtonRightUp");
    console.panel.fit_center_buttons();
    CHECK(form.Dial.picture == "ButtonRightUp");
    console.program.VisibleLines = 18;
    console.panel.fit_center_buttons();
    CHECK(form.NextButton.picture == "Center1Down");
    CHECK(form.NextToConfButton.picture == "CenterDisabled");
    CHECK(form.Dial.picture == "Center1Up");
  }

  TEST_CASE("a rebuilt screen of twenty rows has the dial button of the right column") {
    ScriptedConsole desk;
    desk.console.layout.set_line_count(20);
    desk.console.layout.RedefineScreen();
    CHECK(desk.console.Lineweir.Dial.picture == "ButtonRightUp");
    CHECK(desk.console.Lineweir.NextButton.picture == "ButtonRightUp");
  }

  TEST_CASE("the lettering of the drop buttons stands at a part of the button's width") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    form.Drop1.width = 750;
    form.Hold1.width = 750;
    form.Drop1.picture = pictures::DropLargeDisabled;
    form.LabelMoveTimer.enabled = true;
    desk.console.Lineweir.LabelMoveTimer.on_timer();
    CHECK_FALSE(form.LabelMoveTimer.enabled);
    CHECK(form.Drop1Label.left == 200);
    CHECK(form.Hold1Label.left == 200);

    form.Drop1.width = 375;
    form.Hold1.width = 375;
    form.Drop1.picture = pictures::DropSmallDown;
    desk.console.Lineweir.LabelMoveTimer.on_timer();
    CHECK(form.Drop1Label.left == 40);
    CHECK(form.Hold1Label.left == 40);
  }

  TEST_CASE("the lettering is placed once after the start") {
    ScriptedConsole desk;
    CHECK(desk.console.Lineweir.LabelMoveTimer.enabled);
    desk.platform.loop.advance(platform::Milliseconds(50));
    CHECK_FALSE(desk.console.Lineweir.LabelMoveTimer.enabled);
  }
}

}  // namespace
}  // namespace lineweir::test
