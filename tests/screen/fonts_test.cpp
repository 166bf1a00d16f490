#include "screen/fonts.h"

#include <doctest/doctest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/rows_of.h"

namespace lineweir::test {
namespace {

const platform::FontChoice large = {"DejaVu Serif", 14, false, true};

bool has(const FontProperties& font, const platform::FontChoice& choice, bool bold) {
  return font.name == choice.name && font.size == choice.size && font.bold == bold &&
         font.italic == choice.italic;
}

TEST_SUITE("screen/fonts") {
  TEST_CASE("at first the font is a sans-serif of 8 points, the rows bold") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    for (int column = 0; column < column_count; ++column) {
      CHECK(has(form.column_labels(column)(9).font, {"DejaVu Sans", 8, false, false}, true));
    }
    CHECK(has(form.CaptionLabel(3).font, {"DejaVu Sans", 8, false, false}, false));
    // As after every later start.
    for (const Label* label : {&form.StatusText, &form.CountDownTime, &form.RealTime}) {
      CHECK(has(label->font, {"DejaVu Sans", 8, false, false}, true));
    }
    CHECK(has(form.Text1.font, {"DejaVu Sans", 8, false, false}, true));
  }

  TEST_CASE("the font in force is stored, and not that of the message display, which is bold") {
    for (const bool bold : {true, false}) {
      ScriptedConsole desk;
      platform::FontChoice choice = large;
      choice.bold = bold;
      desk.console.fonts.FontChange(choice);
      CHECK(desk.console.fonts.present().bold == bold);
      const SettingsRecord record = desk.console.settings.collect();
      CHECK(record.MessageFontName == "DejaVu Serif");
      CHECK(record.MessageFontSize == 14);
      CHECK(record.MessageFontBold == bold);
      CHECK(record.MessageFontItalic);
      ScriptedConsole next("D", encode_settings(record));
      CHECK(has(next.console.Lineweir.CaptionLabel(5).font, choice, bold));
      CHECK(next.console.settings.collect().MessageFontBold == bold);
    }
  }

  TEST_CASE("a size is kept within what can be read") {
    ScriptedConsole desk;
    const std::vector<std::pair<int, int>> sizes = {{-32768, 6}, {-1, 6},  {0, 6},   {5, 6},
                                                    {6, 6},      {72, 72}, {73, 72}, {32767, 72}};
    for (const auto& [wanted, given] : sizes) {
      CAPTURE(wanted);
      desk.console.fonts.FontChange({"DejaVu Sans", wanted, false, false});
      CHECK(desk.console.fonts.present().size == given);
      CHECK(desk.console.Lineweir.LineCity(7).font.size == given);
    }
  }

  TEST_CASE("settings that name no font leave the present one") {
    ScriptedConsole desk("D", "xx");
    CHECK(has(desk.console.Lineweir.LineName(0).font, {"DejaVu Sans", 8, false, false}, true));
    desk.console.fonts.FontChange(large);
    SettingsRecord nameless;
    nameless.MessageFontSize = 40;
    desk.console.fonts.restore(nameless);
    CHECK(has(desk.console.Lineweir.LineName(0).font, large, true));
  }

  TEST_CASE("headings take the choice whole, the rows and the clocks are bold whatever it says") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    show_rows(console, 20);
    for (const bool bold : {false, true}) {
      platform::FontChoice choice = large;
      choice.bold = bold;
      console.fonts.FontChange(choice);
      for (int column = 1; column < column_count; ++column) {
        CHECK(has(form.CaptionLabel(column).font, choice, bold));
      }
      for (const Label* label : {&form.Label1, &form.Label9, &form.Label10}) {
        CHECK(has(label->font, choice, bold));
      }
      for (int column = 0; column < column_count; ++column) {
        for (const int line : {0, 9, 19}) {
          CHECK(has(form.column_labels(column)(line).font, choice, true));
        }
      }
      for (const Label* label : {&form.StatusText, &form.CountDownTime, &form.RealTime}) {
        CHECK(has(label->font, choice, true));
      }
      CHECK(has(form.Text1.font, choice, true));
    }
    // The heading of the first column isn't among those that change.
    CHECK(form.CaptionLabel(0).font.size == 8);
  }

  TEST_CASE("the dialog opens with the present font, and its choice is taken") {
    ScriptedConsole desk;
    Console& console = desk.console;
    console.fonts.FontChange({"Sans", 10, true, false});
    desk.platform.dialogs.answer_font(large);
    console.Lineweir.FontMenuItem.on_click();
    const auto asked = desk.platform.dialogs.take_asked();
    REQUIRE(asked.size() == 1);
    const auto& preset = std::get<platform::FontChoice>(asked[0]);
    CHECK(preset.name == "Sans");
    CHECK(preset.size == 10);
    CHECK(preset.bold);
    CHECK_FALSE(preset.italic);
    CHECK(has(console.Lineweir.LineCity(0).font, large, true));
    CHECK(has(console.Lineweir.CaptionLabel(5).font, large, false));
  }

  TEST_CASE("a cancelled dialog leaves every label as it was, and is reported") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    desk.take_trace();
    form.FontMenuItem.on_click();
    CHECK(has(form.LineCity(0).font, {"DejaVu Sans", 8, false, false}, true));
    CHECK(has(form.CaptionLabel(5).font, {"DejaVu Sans", 8, false, false}, false));
    CHECK(desk.take_trace() ==
          std::vector<std::string>{"Lineweir_FontMenuItem_Click Error - Cancel was selected."});
  }

  TEST_CASE("a size beyond 16 bits is no size") {
    ScriptedConsole desk;
    desk.platform.dialogs.answer_font(platform::FontChoice{"Sans", 70000, false, false});
    desk.console.Lineweir.FontMenuItem.on_click();
    CHECK(desk.console.Lineweir.LineCity(0).font.size == 8);
  }

  TEST_CASE("text growing is a check, and so is the grey screen") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    for (MenuItem* item : {&form.TextGrowToggle, &form.GreyScreenOption, &form.Line20Mode}) {
      CHECK_FALSE(item->checked);
      item->on_click();
      CHECK(item->checked);
      item->on_click();
      CHECK_FALSE(item->checked);
    }
    CHECK(desk.console.lines.LineCount == 10);
  }

  TEST_CASE("without text growing a stretched form leaves the text's size alone") {
    ScriptedConsole desk;
    resize(desk.console, 18840, 14510);
    CHECK(desk.console.Lineweir.LineName(0).font.size == 8);
    CHECK(desk.console.Lineweir.LineName(0).width == 3400);
  }
}

}  // namespace
}  // namespace lineweir::test
