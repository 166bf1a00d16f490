#include "callcontrol/dial_pad.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "support/bytes.h"
#include "support/dial_desk.h"

namespace lineweir::test {
namespace {

using Words = std::vector<std::string>;

constexpr char reserved_to(int console) { return static_cast<char>(128 + console); }

TEST_SUITE("callcontrol/dial_pad: opening and closing") {
  TEST_CASE("the lists hold the lines and the banks; with no active line they show the first") {
    DialDesk desk;
    desk.dial.DialLine = 3;
    desk.dial.DialSeizeLine = 3;
    desk.open();
    CHECK(desk.form.visible);
    CHECK(desk.form.Combo1.list_count() == 10);
    CHECK(desk.form.Combo1.list.get().back() == "Line 10");
    CHECK(desk.form.Combo2.list.get() == Words{"Main", "Conf"});
    CHECK(desk.form.Combo1.text == "Line 1");
    CHECK(desk.form.Combo2.text == "Main");
    CHECK(desk.dial.DialLine == no_line);
    CHECK(desk.dial.DialSeizeLine == no_line);
    CHECK(desk.lamp() == "GreyPic");
    CHECK(desk.form.focused() == &desk.form.Text1);
  }

  TEST_CASE("with twenty lines the list has twenty") {
    DialDesk desk;
    desk.console.layout.set_line_count(20);
    desk.letter(14, 'N');
    desk.open();
    CHECK(desk.form.Combo1.list_count() == 20);
    CHECK(desk.form.Combo1.text == "Line 15");
    CHECK(desk.dial.DialLine == 14);
  }

  TEST_CASE("talent: it opens on the first line on air, and on its hybrid") {
    for (const char letter : {'N', 'C'}) {
      DialDesk desk;
      desk.letter(1, 'P');
      desk.letter(4, letter);
      desk.letter(5, letter == 'N' ? 'C' : 'N');
      desk.open();
      CHECK(desk.dial.DialLine == 4);
      CHECK(desk.form.Combo1.text == "Line 5");
      CHECK(desk.form.Combo2.text == (letter == 'N' ? "Main" : "Conf"));
      CHECK(desk.lamp() == "RedPic");
    }
  }

  TEST_CASE("producer: it opens on the first line at a handset") {
    for (const char letter : {'P', 'O'}) {
      DialDesk desk;
      desk.produce(1);
      desk.letter(1, 'N');
      desk.letter(6, letter);
      desk.open();
      CHECK(desk.dial.DialLine == 6);
      CHECK(desk.form.Combo1.text == "Line 7");
      CHECK(desk.form.Combo2.text == "Main");
      CHECK(desk.lamp() == "GreenPic");
    }
  }

  TEST_CASE("opened again it shows no lamp of a line that has gone meanwhile") {
    DialDesk desk;
    desk.letter(0, 'N');
    desk.open();
    CHECK(desk.lamp() == "RedPic");
    desk.form.close();
    desk.letter(0, 'F');
    desk.open();
    CHECK(desk.lamp() == "GreyPic");
  }

  TEST_CASE("closing unloads it: the clock stands, the digits and the words are gone") {
    DialDesk desk;
    desk.letter(0, 'N');
    CHECK_FALSE(desk.form.Timer5.enabled);
    desk.open();
    CHECK(desk.form.Timer5.enabled);
    CHECK(desk.form.Timer5.interval == 200);
    CHECK_FALSE(desk.form.Timer1.on_timer);
    CHECK_FALSE(desk.form.Timer2.on_timer);
    desk.keys("12");
    desk.form.close();
    CHECK_FALSE(desk.form.loaded());
    CHECK_FALSE(desk.form.Timer5.enabled);
    desk.pass(2000);
    desk.open();
    CHECK(desk.form.Text1.text == "");
    desk.pass(2000);
    CHECK(desk.words().empty());
  }
}

TEST_SUITE("callcontrol/dial_pad: seizing") {
  TEST_CASE("talent: the chosen hybrid takes the line, if its row button is enabled") {
    for (const bool conference : {false, true}) {
      DialDesk desk;
      desk.open();
      desk.form.Combo1.select(2);
      desk.form.Combo2.select(conference ? 1 : 0);
      desk.form.SSCommand1.on_click();
      CHECK(desk.words() == Words{conference ? "C02" : "N02"});
      CHECK(desk.dial.DialSeizeLine == 2);
      CHECK(desk.dial.DialLine == no_line);
      MainForm& main = desk.console.Lineweir;
      (conference ? main.OnHybrid2 : main.OnHybrid1)(3).enabled = false;
      desk.form.Combo1.select(3);
      desk.form.SSCommand1.on_click();
      CHECK(desk.words().empty());
      CHECK(desk.dial.DialSeizeLine == 3);
    }
  }

  TEST_CASE("the last line of the list is line 10") {
    DialDesk desk;
    desk.open();
    desk.form.Combo1.select(9);
    desk.form.SSCommand1.on_click();
    CHECK(desk.words() == Words{"N09"});
  }

  TEST_CASE("the word carries the hybrid's bank") {
    for (const bool conference : {false, true}) {
      DialDesk desk;
      desk.platform.winsock1.stand_connected();
      desk.console.Lineweir.WinsockMenu.checked = true;
      desk.open();
      desk.form.Combo2.select(conference ? 1 : 0);
      desk.form.SSCommand1.on_click();
      const std::string bank(1, conference ? '\1' : '\0');
      CHECK(desk.platform.winsock1.take_writes() ==
            Words{"\4\4\4" + std::string(1, '\0') + "\1" + bank + std::string(1, '\0') + bank +
                  std::string(1, '\0') + "\1N\xFF\5\5"});
    }
  }

  TEST_CASE("producer: the word is that of the row's main button") {
    struct Row {
      int kind;
      int handset;
      Words expected;
    };
    for (const Row& row : std::vector<Row>{{1, 0, {"P01"}},
                                           {1, 2, {"P01"}},
                                           {2, 0, {}},
                                           {2, 1, {"P01"}},
                                           {2, 2, {"O01"}},
                                           {3, 1, {"C01"}},
                                           {3, 2, {}},
                                           {4, 1, {"P01"}},
                                           {4, 2, {"O01"}}}) {
      CAPTURE(row.kind);
      CAPTURE(row.handset);
      DialDesk desk;
      desk.produce(row.handset, row.kind);
      desk.console.Lineweir.AutoDataEntry.checked = true;
      desk.letter(1, 'R');
      desk.open();
      desk.form.Combo1.select(1);
      desk.form.Combo2.select(1);
      desk.form.SSCommand1.on_click();
      CHECK(desk.words() == row.expected);
      CHECK(desk.dial.DialSeizeLine == 1);
      CHECK_FALSE(desk.console.Form4.visible);
    }
  }

  TEST_CASE("a line taken by other equipment is left alone, unless the program was started so") {
    for (const bool overridden : {false, true}) {
      DialDesk desk(overridden ? "E" : "");
      desk.letter(0, 'E');
      desk.open();
      desk.form.SSCommand1.on_click();
      CHECK(desk.words() == (overridden ? Words{"N00"} : Words{}));
      desk.produce(1, 2);
      desk.form.SSCommand1.on_click();
      CHECK(desk.words() == (overridden ? Words{"P00"} : Words{}));
    }
  }

  TEST_CASE("the button seizes again while no report has come, and not once the line is there") {
    DialDesk desk;
    desk.open();
    desk.form.SSCommand1.on_click();
    desk.form.SSCommand1.on_click();
    CHECK(desk.words() == Words{"N00", "N00"});
    desk.letter(0, 'N');
    desk.tick();
    CHECK(desk.dial.DialLine == 0);
    CHECK(desk.dial.DialSeizeLine == no_line);
    desk.form.SSCommand1.on_click();
    CHECK(desk.words().empty());
  }

  TEST_CASE("a list that names no line seizes nothing, and says so in the trace") {
    DialDesk desk;
    desk.open();
    desk.form.Combo1.list_index = -1;
    desk.form.Combo1.text = "";
    desk.take_trace();
    desk.form.SSCommand1.on_click();
    CHECK(desk.words().empty());
    CHECK(desk.dial.DialSeizeLine == no_line);
    const auto trace = desk.take_trace();
    REQUIRE(trace.size() == 1);
    CHECK(trace.front().starts_with("DialForm_SSCommand1_Click Error - "));
  }
}

TEST_SUITE("callcontrol/dial_pad: keys") {
  TEST_CASE("the first key seizes the line, each tick then sends one tone") {
    DialDesk desk;
    desk.open();
    desk.keys("50*#");
    CHECK(desk.form.Text1.text == "50*#");
    CHECK(desk.words() == Words{"N00"});
    Words sent;
    for (int tick = 0; tick < 6; ++tick) {
      desk.tick();
      const Words words = desk.words();
      CHECK(words.size() == (tick < 4 ? 1 : 0));
      sent.insert(sent.end(), words.begin(), words.end());
    }
    CHECK(sent == Words{"T05", "T00", "T11", "T12"});
  }

  TEST_CASE("with equipment of kind 3 the host's 0 is T10") {
    DialDesk desk;
    desk.console.lines.ThePhoneFlag = 3;
    desk.letter(0, 'N');
    desk.open();
    desk.keys("019");
    desk.pass(600);
    CHECK(desk.words() == Words{"T10", "T01", "T09"});
  }

  TEST_CASE("digits are appended to the trimmed text") {
    DialDesk desk;
    desk.letter(0, 'N');
    desk.open();
    desk.form.Text1.text = "  1 2  ";
    desk.keys("3");
    CHECK(desk.form.Text1.text == "1 23");
  }

  TEST_CASE("producer: tones go to the handset chosen") {
    for (const int handset : {1, 2}) {
      DialDesk desk;
      desk.produce(handset);
      desk.letter(0, 'P');
      desk.open();
      desk.keys("7#");
      desk.pass(400);
      CHECK(desk.words() == (handset == 1 ? Words{"P27", "P32"} : Words{"O27", "O32"}));
    }
  }

  TEST_CASE("a server that dials for the screener gets the digits on the line seized") {
    DialDesk desk;
    desk.produce(1, 4);
    desk.console.program.ConsoleNumber = 2;
    desk.platform.winsock1.stand_connected();
    desk.console.Lineweir.WinsockMenu.checked = true;
    desk.open();
    desk.form.Combo1.select(6);
    desk.platform.winsock1.take_writes();
    desk.keys("5*");
    CHECK(desk.dial.DialSeizeLine == 6);
    CHECK(desk.platform.winsock1.take_writes().size() == 1);
    desk.pass(400);
    const std::string head = std::string("\4\4\x0E\6\1\2\2\xFF", 8) + std::string("\0\1", 2);
    CHECK(desk.platform.winsock1.take_writes() == Words{head + "5\xFF\5\5", head + "*\xFF\5\5"});
  }

  TEST_CASE("the bank of a tone is that of the list when the key was pressed") {
    DialDesk desk;
    desk.letter(0, 'N');
    desk.open();
    desk.keys("1");
    desk.form.Combo2.select(1);
    desk.keys("2");
    CHECK(desk.console.dial_pad.DialCollection.at(0) == CommandWord{"T01", 0});
    CHECK(desk.console.dial_pad.DialCollection.at(1) == CommandWord{"T02", 1});
  }

  TEST_CASE("a line that is seized and not yet there isn't seized by each key") {
    DialDesk desk;
    desk.open();
    desk.keys("123");
    CHECK(desk.words() == Words{"N00"});
  }

  TEST_CASE("each key has its character") {
    DialDesk desk;
    desk.letter(0, 'N');
    desk.open();
    for (int key : std::initializer_list<int>{'0', '1', '9', '*', '#'}) desk.form.on_key_press(key);
    CHECK(desk.form.Text1.text == "019*#");
  }

  TEST_CASE("characters typed anywhere in the window press the keys") {
    DialDesk desk;
    desk.letter(0, 'N');
    desk.open();
    for (int character : std::initializer_list<int>{'4', '#', 'x', 13}) {
      int key = character;
      desk.form.on_key_press(key);
      CHECK(key == (character == '4' || character == '#' ? 0 : character));
    }
    CHECK(desk.form.Text1.text == "4#");
    desk.form.DialButton(7).enabled = false;
    int key = '7';
    desk.form.on_key_press(key);
    CHECK(desk.form.Text1.text == "4#");
  }

  TEST_CASE("boxes swallow characters, but let Tab and Escape through") {
    DialDesk desk;
    desk.open();
    for (Control* box :
         {static_cast<Control*>(&desk.form.Combo1), static_cast<Control*>(&desk.form.Combo2),
          static_cast<Control*>(&desk.form.Text1)}) {
      for (int character = 1; character < 256; ++character) {
        int key = character;
        box->on_key_press(key);
        CHECK(key == (character == 9 || character == 27 ? character : 0));
      }
    }
    CHECK(desk.form.Text1.text == "");
  }
}

TEST_SUITE("callcontrol/dial_pad: the line's state") {
  TEST_CASE("the lamp follows the chosen line, and the line becomes the one dialled on") {
    struct Row {
      bool talent;
      char letter;
      const char* lamp;
    };
    for (const Row& row : std::vector<Row>{{true, 'N', "RedPic"},
                                           {true, 'C', "RedPic"},
                                           {true, 'P', "GreyPic"},
                                           {true, 'R', "GreyPic"},
                                           {false, 'P', "GreenPic"},
                                           {false, 'O', "GreenPic"},
                                           {false, 'N', "GreyPic"},
                                           {false, ' ', "GreyPic"}}) {
      CAPTURE(row.letter);
      DialDesk desk;
      if (!row.talent) desk.produce(1);
      desk.open();
      desk.form.Combo1.select(3);
      desk.form.SSCommand1.on_click();
      desk.letter(3, row.letter);
      desk.tick();
      CHECK(desk.lamp() == row.lamp);
      const bool there = std::string(row.lamp) != "GreyPic";
      CHECK(desk.dial.DialLine == (there ? 3 : no_line));
      CHECK(desk.dial.DialSeizeLine == (there ? no_line : 3));
    }
  }

  TEST_CASE("a line reserved to a console lights its lamp there, and is never dialled on") {
    for (const int kind : {1, 4}) {
      for (const int console : {2, 3}) {
        DialDesk desk;
        desk.console.lines.ThePhoneFlag = kind;
        desk.console.program.ConsoleNumber = 2;
        desk.letter(0, reserved_to(console));
        desk.open();
        desk.tick();
        CHECK(desk.lamp() == (kind == 4 && console == 2 ? "GreenPic" : "GreyPic"));
        CHECK(desk.dial.DialLine == no_line);
      }
    }
  }

  TEST_CASE("when the line drops, digits and lamp go out; words left in the queue still go") {
    DialDesk desk;
    desk.letter(2, 'N');
    desk.open();
    desk.keys("123");
    desk.tick();
    CHECK(desk.lamp() == "RedPic");
    CHECK(desk.form.Text1.text == "123");
    desk.letter(2, ' ');
    desk.dial.DialSeizeLine = 2;
    desk.tick();
    CHECK(desk.lamp() == "GreyPic");
    CHECK(desk.form.Text1.text == "");
    CHECK(desk.dial.DialLine == no_line);
    CHECK(desk.dial.DialSeizeLine == no_line);
    desk.pass(400);
    CHECK(desk.words() == Words{"T01", "T02", "T03"});
  }

  TEST_CASE("a line that passes from one hybrid to the other stays the one dialled on") {
    DialDesk desk;
    desk.letter(2, 'N');
    desk.open();
    desk.keys("1");
    desk.letter(2, 'C');
    desk.tick();
    CHECK(desk.dial.DialLine == 2);
    CHECK(desk.form.Text1.text == "1");
    CHECK(desk.lamp() == "RedPic");
  }

  TEST_CASE("when the mode changes under a line, the lamp goes out with it") {
    DialDesk desk;
    desk.letter(2, 'N');
    desk.open();
    desk.keys("1");
    desk.produce(1);
    desk.tick();
    CHECK(desk.lamp() == "GreyPic");
    CHECK(desk.dial.DialLine == no_line);
    CHECK(desk.form.Text1.text == "");
  }

  TEST_CASE("a line that is gone from the table is let go") {
    DialDesk desk;
    desk.console.layout.set_line_count(20);
    for (const int gone : {10, 15}) {
      desk.console.layout.set_line_count(20);
      desk.letter(gone, 'N');
      desk.open();
      CHECK(desk.dial.DialLine == gone);
      desk.console.layout.set_line_count(10);
      desk.tick();
      CHECK(desk.dial.DialLine == no_line);
      CHECK(desk.lamp() == "GreyPic");
      for (const std::string& line : desk.take_trace()) CHECK(line.find("Error") == line.npos);
      desk.form.close();
    }
  }
}

TEST_SUITE("callcontrol/dial_pad: dial and drop") {
  TEST_CASE("on the socket the dial button tells the server, once there is a line") {
    DialDesk desk;
    desk.platform.winsock1.stand_connected();
    desk.console.Lineweir.WinsockMenu.checked = true;
    desk.console.program.ConsoleNumber = 3;
    desk.open();
    desk.form.SSCommand2.on_click();
    CHECK(desk.platform.winsock1.take_writes().empty());
    desk.letter(4, 'C');
    desk.form.Combo1.select(4);
    desk.tick();
    const auto frame = [](char bank) {
      return std::string("\4\4\x10\4\1\3\3", 7) + bank + std::string("\0\0", 2) + "\5\5";
    };
    desk.form.SSCommand2.on_click();
    desk.form.Combo2.select(1);
    int enter = 13;
    desk.form.Text1.on_key_press(enter);
    CHECK(desk.platform.winsock1.take_writes() == Words{frame('\0'), frame('\1')});
    desk.produce(1);
    desk.letter(4, 'P');
    desk.platform.winsock1.take_writes();
    desk.form.SSCommand2.on_click();
    CHECK(desk.platform.winsock1.take_writes() == Words{frame('\xFF')});
  }

  TEST_CASE("on the other roads the dial button does nothing") {
    DialDesk desk;
    desk.letter(4, 'N');
    desk.open();
    desk.form.SSCommand2.on_click();
    CHECK(desk.words().empty());
    CHECK(desk.platform.winsock1.take_writes().empty());
  }

  TEST_CASE("without a connection the dial button says so") {
    DialDesk desk;
    desk.letter(4, 'N');
    desk.console.Lineweir.WinsockMenu.checked = true;
    desk.open();
    desk.form.SSCommand2.on_click();
    CHECK(desk.take_messages() == Words{"Lineweir is not currently connected to a server."});
  }

  TEST_CASE("drop drops the chosen hybrid; the next tick takes the digits away") {
    for (const bool conference : {false, true}) {
      DialDesk desk;
      desk.letter(1, 'N');
      desk.letter(2, 'C');
      desk.open();
      desk.keys("12");
      desk.form.Combo2.select(conference ? 1 : 0);
      desk.form.TheDrop.on_click();
      CHECK(desk.words() == Words{conference ? "F02" : "F01"});
      CHECK(desk.form.Text1.text == "12");
      CHECK(desk.form.Timer5.enabled);
      desk.tick();
      CHECK(desk.form.Text1.text == "");
    }
  }

  TEST_CASE("digits that are typed behind a drop stay") {
    for (const bool opened_anew : {false, true}) {
      CAPTURE(opened_anew);
      DialDesk desk;
      desk.open();
      desk.form.TheDrop.on_click();
      if (opened_anew) {
        desk.form.close();
        desk.open();
      } else {
        desk.tick();
      }
      desk.keys("1");
      desk.tick();
      CHECK(desk.form.Text1.text == "1");
    }
  }

  TEST_CASE("the producer's drop is that of the handset, whatever the bank says") {
    DialDesk desk;
    desk.produce(1);
    desk.letter(1, 'P');
    desk.letter(2, 'C');
    desk.open();
    desk.form.Combo2.select(1);
    desk.form.TheDrop.on_click();
    CHECK(desk.words() == Words{"F01"});
  }
}

TEST_SUITE("callcontrol/dial_pad: in passive mode") {
  TEST_CASE("an open pad is locked: neither its keys nor its drop do anything") {
    for (const bool producer : {false, true}) {
      CAPTURE(producer);
      DialDesk desk;
      if (producer) desk.produce(1);
      desk.letter(2, producer ? 'P' : 'N');
      desk.open();
      desk.console.Lineweir.PassiveMode.on_click();
      desk.letter(2, 'N');
      desk.words();
      desk.keys("12*");
      int digit = '5';
      desk.form.on_key_press(digit);
      desk.form.SSCommand1.on_click();
      desk.form.SSCommand2.on_click();
      desk.form.TheDrop.on_click();
      desk.pass(2000);
      CHECK(desk.words().empty());
      CHECK(desk.form.Text1.text == "");
    }
  }

  TEST_CASE("no line is seized, and the pad works again behind the lock") {
    DialDesk desk;
    desk.open();
    desk.console.Lineweir.PassiveMode.on_click();
    desk.key(1);
    CHECK(desk.dial.DialSeizeLine == no_line);
    desk.console.Lineweir.PassiveMode.on_click();
    desk.key(1);
    desk.pass(1000);
    CHECK(desk.words() == Words{"N00", "T01"});
  }
}

}  // namespace
}  // namespace lineweir::test
