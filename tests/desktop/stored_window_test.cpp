#include <doctest/doctest.h>

#include <QScreen>
#include <array>

#include "desktop/twips.h"
#include "shown_console.h"
#include "state/settings_record.h"

namespace lineweir {
namespace {

using test::ShownConsole;

SettingsRecord usual_settings() {
  test::ScriptedConsole desk;
  return desk.console.settings.collect();
}

TEST_SUITE("a window from stored settings") {
  TEST_CASE("any font size ends in a window whose states can be read") {
    for (const int size : {-32768, -1, 0, 1, 7, 72, 200, 32767}) {
      CAPTURE(size);
      SettingsRecord record = usual_settings();
      record.MessageFontSize = size;
      record.TextGrowOn = true;
      ShownConsole desk(record);
      desk.form().LineStatus(0).caption = "Set Busy";
      desk.form().LineTime(0).caption = "9:59:59";
      desk.settle();
      CHECK(desk.window().isVisible());
      CHECK_FALSE(desk.window().grab().isNull());
      CHECK(desk.widget(desk.form().LineStatus(0)).caption_fits());
      CHECK(desk.widget(desk.form().LineTime(0)).caption_fits());
    }
  }

  TEST_CASE("any stored size opens within the screen, and not smaller than can be read") {
    constexpr std::array extremes = {-32768, -1, 0, 1, 32767};
    for (const int width : extremes) {
      for (const int height : extremes) {
        CAPTURE(width);
        CAPTURE(height);
        SettingsRecord record = usual_settings();
        record.WindowWidth = width;
        record.WindowHeight = height;
        ShownConsole desk(record);
        const QSize room = desk.window().screen()->availableGeometry().size();
        const QSize least = desk.window().minimumSize();
        CHECK(desk.canvas().width() <= std::max(room.width(), least.width()));
        CHECK(desk.canvas().height() <= std::max(room.height(), least.height()));
        CHECK(desk.window().width() >= least.width());
        CHECK(desk.window().height() >= least.height());
        // What the form knows is what is on the screen.
        CHECK(pixel_edge(desk.form().width) == desk.canvas().width());
        CHECK(pixel_edge(desk.form().height - 285) == desk.canvas().height());
      }
    }
  }

  TEST_CASE(
      "of any stored column widths nothing shows beyond the row, and what has no room is told") {
    for (const int width : {-32768, -1, 0, 1, 32767}) {
      CAPTURE(width);
      SettingsRecord record = usual_settings();
      record.ColumnWidth.fill(width);
      record.ColumnShown.fill(-1);
      for (std::size_t i = 0; i < record.ColumnOrder.size(); ++i) {
        record.ColumnOrder[i] = static_cast<int>(i);
      }
      ShownConsole desk(record);
      const Control& row = desk.form().DataRow(0);
      const QRect strip = desk.widget(row).geometry();
      for (int column = 0; column < column_count; ++column) {
        CAPTURE(column);
        const Control& control = desk.form().column_labels(column)(0);
        const ElementWidget& label = desk.widget(control);
        if (!label.isVisible()) continue;
        if (!label.geometry().isEmpty()) {
          CHECK(strip.contains(label.geometry()));
          continue;
        }
        if (control.width < twips_per_pixel) continue;
        // What begins beyond the strip's end has no pixel on the screen, and the dialog says so.
        CHECK(control.left >= row.left + row.width);
        const std::string& heading = desk.console.DisplayOptionForm.CheckItem(column).caption;
        const std::string& told = desk.console.DisplayOptionForm.RoomLabel.caption;
        CHECK(told.find(heading) != std::string::npos);
      }
    }
  }
}

TEST_SUITE("the main form's place") {
  TEST_CASE("the form knows where its window is as soon as it is shown") {
    platform::ScriptedPlatform platform;
    Console console(platform.services());
    Desktop desktop(console);
    console.startup.Main("");
    REQUIRE(desktop.main_frame().main_window() != nullptr);
    const QPoint place = desktop.main_frame().main_window()->pos();
    CHECK(place != QPoint(0, 0));
    CHECK(console.Lineweir.left == twips_of(place.x()));
    CHECK(console.Lineweir.top == twips_of(place.y()));
    // So does the first message box.
    console.messages.ShowMessage("No server");
    desktop.flush();
    CHECK(desktop.main_frame().main_window()->pos() == place);
    CHECK(console.MyMsgbox.left == console.Lineweir.left + 2000);
    CHECK(
        desktop.dialog(console.MyMsgbox)->window()->pos() ==
        QPoint(pixel_edge(console.Lineweir.left + 2000), pixel_edge(console.Lineweir.top + 1000)));
  }

  TEST_CASE("a message of the start follows the main form to its place") {
    platform::ScriptedPlatform platform;
    SettingsRecord record = usual_settings();
    record.CommPort = 1;
    record.PortState = true;
    platform.files.replace(std::string(settings_file_name), encode_settings(record));
    Console console(platform.services());
    Desktop desktop(console);
    // Nothing answers at the port.
    console.startup.Main("");
    REQUIRE(console.MyMsgbox.visible);
    CHECK(console.Lineweir.left != 0);
    CHECK(console.MyMsgbox.left == console.Lineweir.left + 2000);
    CHECK(console.MyMsgbox.top == console.Lineweir.top + 1000);
  }
}

}  // namespace
}  // namespace lineweir
