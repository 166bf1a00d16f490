#include "callcontrol/hybrid_choice.h"

#include <doctest/doctest.h>

#include "support/rows_of.h"

namespace lineweir::test {
namespace {

void set_box(Console& console, int hybrid, bool on) {
  CheckBox& box = console.DisplayOptionForm.HybridCheck(hybrid);
  box.value = on ? 1 : 0;
  box.on_click();
}

bool picture_shows(const Picture& button, bool enabled, std::string_view picture) {
  return button.enabled == enabled && button.picture == picture;
}

TEST_SUITE("callcontrol/hybrid_choice") {
  TEST_CASE("each box switches its own hybrid") {
    ScriptedConsole desk;
    Console& console = desk.console;
    set_box(console, 0, false);
    CHECK_FALSE(console.program.MainHybridOn);
    CHECK(console.program.ConfHybridOn);
    set_box(console, 1, false);
    CHECK_FALSE(console.program.ConfHybridOn);
    set_box(console, 0, true);
    CHECK(console.program.MainHybridOn);
  }

  TEST_CASE("in talent mode the buttons of the hybrid follow, for every row count") {
    ScriptedConsole desk;
    Console& console = desk.console;
    const MainForm& form = console.Lineweir;
    for (const int rows : {1, 10, 11, 18, 19, 20}) {
      CAPTURE(rows);
      show_rows(console, rows);
      const bool right = rows >= 19;
      const char* up = right ? "ButtonRightUp" : "Center1Up";

      set_box(console, 0, false);
      CHECK(picture_shows(form.OnHybrid1(rows - 1), false, "HybridDisabledNorm"));
      // Beside 19 and 20 rows the main button keeps its up picture, the conference button doesn't.
      CHECK(picture_shows(form.NextButton, false, right ? "ButtonRightUp" : "CenterDisabled"));
      CHECK(picture_shows(form.Drop1, false, "DropSmallDisabled"));
      CHECK(picture_shows(form.Hold1, false, "DropSmallDisabled"));
      CHECK(picture_shows(form.NextToConfButton, true, up));
      CHECK(picture_shows(form.OnHybrid2(0), true, "HybridNormUp"));
      set_box(console, 0, true);
      CHECK(picture_shows(form.OnHybrid1(rows - 1), true, "HybridNormUp"));
      CHECK(picture_shows(form.NextButton, true, up));
      CHECK(picture_shows(form.Drop1, true, "DropSmallUp"));

      set_box(console, 1, false);
      CHECK(picture_shows(form.OnHybrid2(rows - 1), false, "HybridDisabledNorm"));
      CHECK(picture_shows(form.NextToConfButton, false,
                          right ? "ButtonRightDisabled" : "CenterDisabled"));
      CHECK(picture_shows(form.Drop2, false, "DropSmallDisabled"));
      CHECK(picture_shows(form.Hold2, false, "DropSmallDisabled"));
      CHECK(picture_shows(form.Drop1, true, "DropSmallUp"));
      set_box(console, 1, true);
      CHECK(picture_shows(form.NextToConfButton, true, up));
      CHECK(picture_shows(form.Drop2, true, "DropSmallUp"));
      CHECK(picture_shows(form.OnHybrid2(0), true, "HybridNormUp"));
    }
  }

  TEST_CASE("large drop and hold buttons of the main hybrid stay large") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    form.Drop1.picture = "DropLargeUp";
    form.Hold1.picture = "DropLargeDisabled";
    set_box(console, 0, false);
    CHECK(picture_shows(form.Drop1, false, "DropLargeDisabled"));
    CHECK(picture_shows(form.Hold1, false, "DropLargeDisabled"));
    set_box(console, 0, true);
    CHECK(picture_shows(form.Drop1, true, "DropLargeUp"));
    CHECK(picture_shows(form.Hold1, true, "DropLargeUp"));
  }

  TEST_CASE("in producer mode the buttons stay as they are") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    form.MitelPhone1.on_click();
    form.ScreenerMode.on_click();
    set_box(console, 0, false);
    CHECK_FALSE(console.program.MainHybridOn);
    CHECK(picture_shows(form.Drop1, true, "DropLargeUp"));
    CHECK(picture_shows(form.OnHybrid1(0), true, "HybridNormUp"));
  }

  TEST_CASE("passive mode keeps its lock") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    form.PassiveMode.on_click();
    set_box(console, 0, false);
    set_box(console, 0, true);
    CHECK_FALSE(form.NextButton.enabled);
    CHECK_FALSE(form.OnHybrid1(0).enabled);
    CHECK_FALSE(form.Drop1.enabled);
  }
}

}  // namespace
}  // namespace lineweir::test
