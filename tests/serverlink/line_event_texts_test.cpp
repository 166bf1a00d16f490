#include <doctest/doctest.h>

#include "serverlink/event_desk.h"

namespace lineweir::test {
namespace {

constexpr int text_line = EventDesk::line;

TEST_SUITE("serverlink/line events: texts") {
  std::string letters_of(const Console& console) {
    std::string letters;
    for (int i = 0; i < console.lines.LineCount; ++i) letters += console.lines.StatusLetter(i);
    return letters;
  }

  TEST_CASE("the item's place gives the line, its digits don't count") {
    EventDesk desk;
    desk.report_text("N99C??SxxR  H00P77O00E00Y00B00");
    CHECK(letters_of(desk.console) == "NCSRHPOEYB");
  }

  TEST_CASE("a line whose item is missing, or has the code 0, isn't touched") {
    for (const std::string& text : {std::string(), std::string("F00F01F02F03F04"),
                                    std::string(18, '\0'), std::string("F00F01F02F03F04\0", 16)}) {
      EventDesk desk;
      const LinePicture before = desk.prepare({'N', 'S'});
      desk.report_text(text);
      CHECK(differences(line_picture(desk.console, text_line), before) == "");
      CHECK(desk.console.lines.RingConfirm[text_line]);
    }
  }

  TEST_CASE("an item that is cut short counts by its letter") {
    EventDesk desk;
    desk.report_text("N");
    CHECK(letters_of(desk.console) == "N         ");
    desk.report_text("N00C");
    CHECK(letters_of(desk.console) == "NC        ");
  }

  TEST_CASE("only blanks are trimmed from the text") {
    EventDesk desk;
    desk.report_text("   N00C01   ");
    CHECK(letters_of(desk.console) == "NC        ");
    desk.report_text("\tN00");
    CHECK(desk.console.lines.StatusLetter(0) == '\t');
  }

  TEST_CASE("letters of code 128 and above are stored") {
    EventDesk desk;
    desk.report_text(
        "\x80"
        "00\xFF"
        "01");
    CHECK(desk.console.lines.StatusLetter(0) == '\x80');
    CHECK(desk.console.lines.StatusLetter(1) == '\xFF');
    CHECK(desk.console.lines.ClockRunning(0) == 1);
  }

  TEST_CASE("twenty lines") {
    EventDesk desk;
    desk.console.layout.set_line_count(20);
    desk.console.layout.RedefineScreen();
    std::string text;
    for (int i = 0; i < 20; ++i) text += i % 2 == 0 ? "R00" : "S00";
    desk.report_text(text);
    CHECK(letters_of(desk.console) == "RSRSRSRSRSRSRSRSRSRS");
  }

  TEST_CASE("the timer fires once, and a second text before it replaces the first") {
    EventDesk desk;
    desk.console.line_events.TheStatusText = "N00";
    desk.console.Lineweir.Timer4.enabled = true;
    desk.console.line_events.TheStatusText = "S00";
    desk.platform.loop.advance(platform::Milliseconds(9));
    CHECK(desk.console.lines.StatusLetter(0) == ' ');
    desk.platform.loop.advance(platform::Milliseconds(1));
    CHECK(desk.console.lines.StatusLetter(0) == 'S');
    CHECK_FALSE(desk.console.Lineweir.Timer4.enabled);
  }

  TEST_CASE("the text at the start frees ten lines") {
    EventDesk desk;
    desk.console.Lineweir.Timer4.on_timer();
    CHECK(letters_of(desk.console) == "          ");
  }
}

}  // namespace
}  // namespace lineweir::test
