#include "screen/screen_faces.h"

#include <doctest/doctest.h>

#include "support/rows_of.h"

namespace lineweir::test {
namespace {

TEST_SUITE("screen/screen_faces") {
  TEST_CASE("the holders take the files of each row count and are never shown themselves") {
    ScriptedConsole desk;
    Console& console = desk.console;
    const MainForm& form = console.Lineweir;
    for (int rows = 20; rows >= 0; --rows) {
      CAPTURE(rows);
      show_rows(console, rows);
      CHECK(console.faces.PreviousVisibleLines == rows);
      const std::string bottom = rows <= 10 ? "10" : std::to_string(rows);
      const std::string top = rows <= 10 ? "10" : rows == 19 ? "19" : "20";
      CHECK(form.BlackScreenTop.picture == top + "TM.jpg");
      CHECK(form.GreyScreenTop.picture == top + "TG.jpg");
      CHECK(form.BlackScreenBottom.picture == bottom + "BM.jpg");
      CHECK(form.GreyScreenBottom.picture == bottom + "BG.jpg");
      CHECK_FALSE(form.BlackScreenTop.visible);
      CHECK_FALSE(form.GreyScreenBottom.visible);
    }
  }

  TEST_CASE("the face follows its menu item at the next rebuild") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    CHECK(form.ScreenTopImage.picture == "BlackScreenTop");
    form.GreyScreenOption.on_click();
    CHECK(form.GreyScreenOption.checked);
    CHECK(form.ScreenTopImage.picture == "BlackScreenTop");
    CHECK(form.ScreenBottomImage.picture == "BlackScreenBottom");
    console.layout.RedefineScreen();
    CHECK(form.ScreenTopImage.picture == "GreyScreenTop");
    CHECK(form.ScreenBottomImage.picture == "GreyScreenBottom");
    CHECK(form.LowCover.picture == "LowCoverGrey");
    form.GreyScreenOption.on_click();
    console.layout.RedefineScreen();
    CHECK(form.ScreenTopImage.picture == "BlackScreenTop");
    CHECK(form.ScreenBottomImage.picture == "BlackScreenBottom");
    CHECK(form.LowCover.picture == "LowCoverMetal");
  }

  TEST_CASE("the corner is covered beside 18 rows") {
    ScriptedConsole desk;
    Console& console = desk.console;
    const MainForm& form = console.Lineweir;
    for (int rows = 0; rows <= 20; ++rows) {
      show_rows(console, rows);
      CHECK(form.LowCover.visible == (rows == 18));
    }
    show_rows(console, 18);
    CHECK(form.LowCover.left == 10200);
    CHECK(form.LowCover.top == 3870);
    CHECK(form.LowCover.width == 1800);
    CHECK(form.LowCover.height == 2400);
  }

  TEST_CASE("a background of another size stretches its picture and is put in front again") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    desk.platform.loop.advance(platform::Milliseconds(1000));
    CHECK_FALSE(form.ZorderTimer.enabled);
    desk.console.layout.RedefineScreen();
    CHECK_FALSE(form.ZorderTimer.enabled);

    form.ScreenTop.width = 9000;
    CHECK(form.ZorderTimer.enabled);
    CHECK(form.ScreenTopImage.width == 9000);
    desk.platform.loop.advance(platform::Milliseconds(100));
    CHECK_FALSE(form.ZorderTimer.enabled);

    form.ScreenBottom.height = 4000;
    CHECK(form.ZorderTimer.enabled);
    CHECK(form.ScreenBottomImage.height == 4000);
    form.ZorderTimer.enabled = false;
    form.ScreenBottom.left = 30;
    form.Text1.height = 30;
    CHECK_FALSE(form.ZorderTimer.enabled);
  }

  TEST_CASE("the upper background ends where the first row begins") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    console.DisplayOptionForm.LineCheck(0).value = 0;
    console.row_choice.RefreshVisibleRows();

    console.faces.CheckTopSize();
    CHECK(form.ScreenTop.top == 0);
    CHECK(form.ScreenTopImage.visible);

    // A row that reaches into it loses what they share.
    form.DataRow(1).top = 400;
    console.faces.CheckTopSize();
    CHECK(form.DataRow(1).height == 295);
    CHECK(form.ScreenTop.top == -20);
    CHECK_FALSE(form.ScreenTopImage.visible);

    console.layout.RedefineScreen();
    CHECK(form.DataRow(1).height == 315);
    CHECK(form.ScreenTop.top == 0);
    CHECK(form.ScreenTopImage.visible);
  }

  TEST_CASE("covers are away while the boxes move") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    console.DisplayOptionForm.LineCheck(9).value = 0;
    console.row_choice.RefreshVisibleRows();
    console.faces.SetPictureAutoOn();
    for (const Picture* cover : {&form.ScreenTopImage, &form.ScreenBottomImage, &form.Drop1Image,
                                 &form.DialImage, &form.DataRowImage(0)}) {
      CHECK_FALSE(cover->visible);
    }
    console.faces.SetPictureAutoOff();
    for (const Picture* cover : {&form.ScreenTopImage, &form.ScreenBottomImage, &form.Drop1Image,
                                 &form.DialImage, &form.DataRowImage(0)}) {
      CHECK(cover->visible);
    }
    CHECK_FALSE(form.DataRowImage(9).visible);
  }

  TEST_CASE("a row's image has the strip for its width, the row itself the colour's own") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    CHECK(form.DataRowImage(2).picture == "DataRowWhite");
    console.rows.set_row_color(2, RowColor::Red);
    CHECK(form.DataRow(2).picture == "DataRowRed");
    CHECK(form.DataRowImage(2).picture == "DataRowRed");
    resize(console, 8000, 7255);
    CHECK(form.DataRow(2).picture == "DataRowRed");
    CHECK(form.DataRowImage(2).picture == "DataRowRedShort");
    console.rows.set_row_color(2, RowColor::Green);
    CHECK(form.DataRowImage(2).picture == "DataRowGreenShort");
    resize(console, 12000, 7255);
    CHECK(form.DataRowImage(2).picture == "DataRowGreenLong");
    show_rows(console, 20);
    CHECK(form.DataRow(19).picture == "DataRowWhite");
    CHECK(form.DataRowImage(19).picture == "DataRowWhiteLong");
  }

  TEST_CASE("beside more than ten rows the digital clock gives way") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    form.EventClockMenu.on_click();
    form.DigiClock.on_click();
    CHECK(form.RealTime2.visible);
    CHECK_FALSE(form.TimeClockMenuItem.enabled);
    show_rows(console, 10);
    CHECK(form.RealTime2.visible);
    show_rows(console, 11);
    CHECK_FALSE(form.DigiClock.checked);
    CHECK_FALSE(form.RealTime2.visible);
    CHECK_FALSE(form.CountDownTime2.visible);
    CHECK_FALSE(form.StatusText2.visible);
    CHECK(form.picShowTimeClock.visible);
    CHECK_FALSE(form.picRealTimeClock.visible);
    CHECK(form.EventClockMenu.enabled);
    CHECK(form.TimeClockMenuItem.enabled);
  }
}

}  // namespace
}  // namespace lineweir::test
