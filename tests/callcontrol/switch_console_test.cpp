#include "callcontrol/switch_console.h"

#include <doctest/doctest.h>

#include <map>
#include <string>
#include <vector>

#include "base/text.h"
#include "callcontrol/switch_console_lamps.h"
#include "lines/cadence.h"
#include "support/dial_desk.h"

namespace lineweir::test {
namespace {

using Words = std::vector<std::string>;

// A console whose switch console is on.
struct SwitchDesk : DialDesk {
  explicit SwitchDesk(int lines = 10) {
    main.Line20Mode.checked = lines > 10;
    console.layout.set_line_count(lines);
    console.layout.RedefineScreen();
    main.RemoteOn.on_click();
    for (int line = 0; line < lines; ++line) show(line);
  }

  MainForm& main = console.Lineweir;

  void show(int line) {
    main.OnHybrid1(line).visible = true;
    main.OnHybrid2(line).visible = true;
  }
  // What pressing the key writes to the equipment.
  Words press(int code) {
    words();
    platform.comm2.arrive(std::string(1, static_cast<char>(code)));
    platform.loop.run_pending();
    return words();
  }
  Words lamps() {
    platform.comm2.take_writes();
    main.SwitchConsoleTimer.tick();
    return platform.comm2.take_writes();
  }
};

std::string lamp(int first, int second, int address) {
  return {static_cast<char>(first), static_cast<char>(second), static_cast<char>(address)};
}

TEST_SUITE("callcontrol/switch_console: keys with ten lines") {
  TEST_CASE("row keys take the line to main or to the conference") {
    SwitchDesk desk;
    for (int line = 0; line < 10; ++line) {
      const std::string number = "0" + std::to_string(line);
      CHECK(desk.press(1 + line) == Words{"N" + number});
      CHECK(desk.press(31 + line) == Words{"C" + number});
    }
  }

  TEST_CASE("drop and hold") {
    SwitchDesk desk;
    desk.letter(2, 'N');
    desk.letter(3, 'C');
    CHECK(desk.press(81) == Words{"F02"});
    CHECK(desk.press(82) == Words{"H02"});
    CHECK(desk.press(84) == Words{"F03"});
    CHECK(desk.press(85) == Words{"H03"});
  }

  TEST_CASE("large drop and hold buttons hide the conference's from the keys") {
    SwitchDesk desk;
    desk.letter(3, 'C');
    desk.main.Drop1.picture = "DropLargeUp";
    CHECK(desk.press(84).empty());
    CHECK(desk.press(85) == Words{"H03"});
    desk.main.Hold1.picture = "DropLargeUp";
    CHECK(desk.press(85).empty());
    desk.main.Drop1.picture = "DropLargeDown";
    CHECK(desk.press(84) == Words{"F03"});
  }

  TEST_CASE(
      "the next key takes the next caller to main, where that is disabled to the conference") {
    SwitchDesk desk;
    desk.letter(5, 'S');
    desk.console.lines.TheNextCall = 5;
    CHECK(desk.press(88) == Words{"N05"});
    desk.main.NextButton.enabled = false;
    CHECK(desk.press(88) == Words{"C05"});
    desk.main.NextToConfButton.enabled = false;
    CHECK(desk.press(88).empty());
  }

  TEST_CASE("the producer's next key answers the next call and never marks ready") {
    SwitchDesk desk;
    desk.produce(1);
    desk.letter(1, 'P');
    desk.letter(4, 'R');
    desk.main.LineTime(4).caption = "00:00:09";
    CHECK(desk.press(88) == Words{"P04"});
    desk.main.NextToConfButton.enabled = false;
    CHECK(desk.press(88).empty());
  }

  TEST_CASE("every code outside the table does nothing") {
    SwitchDesk desk;
    for (int line = 0; line < 10; ++line) desk.letter(line, 'N');
    for (int code = 0; code < 256; ++code) {
      if (switch_console_key(code, false).action != SwitchConsoleAction::Nothing) continue;
      CAPTURE(code);
      CHECK(desk.press(code).empty());
      CHECK_FALSE(desk.form.visible);
    }
  }

  TEST_CASE("what is disabled, hidden or not there isn't pressed") {
    SwitchDesk desk;
    desk.main.OnHybrid1(0).enabled = false;
    desk.main.OnHybrid1(1).visible = false;
    desk.main.OnHybrid2(0).enabled = false;
    desk.main.OnHybrid2(1).visible = false;
    for (const int code : {1, 2, 31, 32}) CHECK(desk.press(code).empty());
    desk.letter(2, 'N');
    desk.letter(3, 'C');
    for (Picture* button :
         {&desk.main.Drop1, &desk.main.Hold1, &desk.main.Drop2, &desk.main.Hold2}) {
      button->enabled = false;
    }
    for (const int code : {81, 82, 84, 85}) CHECK(desk.press(code).empty());
  }

  TEST_CASE("passive mode keeps the keys from the host") {
    SwitchDesk desk;
    for (int line = 0; line < 10; ++line) desk.letter(line, line % 2 == 0 ? 'N' : 'C');
    desk.main.PassiveMode.on_click();
    for (int code = 0; code < 256; ++code) {
      CAPTURE(code);
      CHECK(desk.press(code).empty());
    }
    CHECK_FALSE(desk.form.visible);
    CHECK(desk.console.dial_pad.DialCollection.empty());
  }

  TEST_CASE("of characters that arrive together the first is the key") {
    SwitchDesk desk;
    desk.platform.comm2.arrive("\x03\x04");
    desk.platform.loop.run_pending();
    CHECK(desk.words() == Words{"N02"});
  }

  TEST_CASE("other events, and data events without data, are passed over") {
    SwitchDesk desk;
    desk.platform.comm2.on_comm(1);
    desk.platform.comm2.on_comm(platform::comm_event_receive);
    CHECK(desk.words().empty());
    CHECK(desk.take_trace().empty());
  }
}

TEST_SUITE("callcontrol/switch_console: keys with twenty lines") {
  TEST_CASE("each line has a main key, and there is no line 20") {
    SwitchDesk desk(20);
    std::map<int, int> key_of_line = {{0, 82}, {10, 85}};
    for (int line = 1; line <= 9; ++line) key_of_line[line] = line;
    for (int line = 11; line <= 19; ++line) key_of_line[line] = line + 20;
    for (const auto& [line, code] : key_of_line) {
      CAPTURE(line);
      CHECK(desk.press(code) == Words{numbered_word('N', line)});
    }
    CHECK(desk.press(10) == Words{"N10"});
    desk.take_trace();
    CHECK(desk.press(40).empty());
    CHECK(desk.take_trace().empty());
  }

  TEST_CASE("drop, hold and next") {
    SwitchDesk desk(20);
    desk.letter(12, 'N');
    CHECK(desk.press(81) == Words{"F12"});
    CHECK(desk.press(84) == Words{"H12"});
    desk.console.lines.TheNextCall = 15;
    CHECK(desk.press(88) == Words{"N15"});
  }

  TEST_CASE("every code outside the table does nothing") {
    SwitchDesk desk(20);
    for (int line = 0; line < 20; ++line) desk.letter(line, 'N');
    for (int code = 0; code < 256; ++code) {
      if (switch_console_key(code, true).action != SwitchConsoleAction::Nothing) continue;
      CAPTURE(code);
      CHECK(desk.press(code).empty());
    }
  }
}

TEST_SUITE("callcontrol/switch_console: digits") {
  TEST_CASE("each digit key opens the dial pad and dials on the line on air") {
    for (const int lines : {10, 20}) {
      SwitchDesk desk(lines);
      desk.letter(3, 'N');
      for (int code = 61; code <= 72; ++code) desk.press(code);
      CHECK(desk.form.visible);
      CHECK(desk.form.Text1.text == "1234567890*#");
      CHECK(desk.dial.DialLine == 3);
      desk.pass(12 * 200);
      CHECK(desk.words() == Words{"T01", "T02", "T03", "T04", "T05", "T06", "T07", "T08", "T09",
                                  "T00", "T11", "T12"});
    }
  }

  TEST_CASE("the digit is dialled once for each line that the seat talks on") {
    SwitchDesk desk;
    desk.letter(3, 'N');
    desk.letter(4, 'P');
    desk.letter(5, 'C');
    desk.press(65);
    CHECK(desk.form.Text1.text == "55");
    desk.form.close();
    desk.produce(1);
    desk.press(65);
    CHECK(desk.form.Text1.text == "5");
    CHECK(desk.dial.DialLine == 4);
  }

  TEST_CASE("with nobody to talk to a digit does nothing") {
    SwitchDesk desk;
    desk.letter(0, 'R');
    desk.letter(1, 'P');
    desk.press(65);
    CHECK_FALSE(desk.form.visible);
    CHECK(desk.words().empty());
  }

  TEST_CASE("a disabled key of the dial pad isn't pressed") {
    SwitchDesk desk;
    desk.letter(3, 'N');
    desk.open();
    desk.form.DialButton(5).enabled = false;
    desk.press(65);
    CHECK(desk.form.Text1.text == "");
  }
}

TEST_SUITE("callcontrol/switch_console: lamps") {
  TEST_CASE("ten lines: one message a line, hidden lines dark") {
    SwitchDesk desk;
    const std::string letters = "NCHSRPOE ";
    for (int line = 0; line < 9; ++line) {
      desk.letter(line, letters[static_cast<std::size_t>(line)]);
    }
    desk.letter(9, 'N');
    desk.main.OnHybrid1(9).visible = false;
    CHECK(desk.lamps() == Words{lamp(12, 8, 192), lamp(8, 12, 193), lamp(24, 24, 194),
                                lamp(88, 88, 195), lamp(16, 16, 196), lamp(8, 8, 197),
                                lamp(8, 8, 198), lamp(8, 8, 199), lamp(0, 0, 200),
                                lamp(0, 0, 201)});
  }

  TEST_CASE("twenty lines: a line and its partner ten above have one address") {
    SwitchDesk desk(20);
    desk.letter(0, 'N');
    desk.letter(10, 'H');
    desk.letter(1, 'R');
    desk.letter(11, 'S');
    const Words lamps = desk.lamps();
    REQUIRE(lamps.size() == 20);
    CHECK(lamps[0] == lamp(12, 24, 254));
    CHECK(lamps[10] == lamp(12, 24, 254));
    CHECK(lamps[1] == lamp(16, 88, 192));
    CHECK(lamps[11] == lamp(16, 88, 192));
    for (int position = 1; position <= 9; ++position) {
      const auto place = static_cast<std::size_t>(position);
      CHECK(code_of(lamps[place].back()) == 191 + position);
      CHECK(code_of(lamps[place + 10].back()) == 191 + position);
    }
  }

  TEST_CASE("twenty lines: a hidden line sends the last message again, none where there is none") {
    SwitchDesk desk(20);
    desk.letter(2, 'N');
    desk.letter(12, 'H');
    for (int line = 0; line < 20; ++line) desk.main.OnHybrid1(line).visible = line == 2;
    const std::string only = lamp(12, 0, 193);
    CHECK(desk.lamps() == Words(18, only));
    desk.main.OnHybrid1(2).visible = false;
    CHECK(desk.lamps().empty());
    CHECK(desk.lamps().empty());
  }

  TEST_CASE("the timer runs while the console is on, four times a second") {
    SwitchDesk desk;
    CHECK(desk.main.SwitchConsoleTimer.enabled);
    desk.platform.comm2.take_writes();
    desk.pass(1000);
    CHECK(desk.platform.comm2.take_writes().size() == 40);
    desk.main.RemoteOff.on_click();
    CHECK_FALSE(desk.main.SwitchConsoleTimer.enabled);
    desk.pass(1000);
    CHECK(desk.platform.comm2.take_writes().empty());
  }

  TEST_CASE("a closed port gets nothing") {
    SwitchDesk desk;
    desk.platform.comm2.close();
    CHECK(desk.lamps().empty());
    CHECK(desk.take_trace().empty());
  }

  TEST_CASE("the lamps of a tick fit into a quarter of it, at 960 characters a second") {
    for (const int lines : {10, 20}) {
      SwitchDesk desk(lines);
      for (int line = 0; line < lines; ++line) desk.letter(line, 'S');
      std::size_t characters = 0;
      for (const std::string& message : desk.lamps()) characters += message.size();
      CHECK(characters == static_cast<std::size_t>(lines * 3));
      const double milliseconds = static_cast<double>(characters) * 1000 / 960;
      CHECK(milliseconds <= desk.main.SwitchConsoleTimer.interval / 4.0);
    }
  }
}

}  // namespace
}  // namespace lineweir::test
