#include "callcontrol/next_caller.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

using Words = std::vector<std::string>;

enum class Road { Serial, Socket, Remote };

struct Desk : ScriptedConsole {
  explicit Desk(Road road = Road::Serial) {
    console.Lineweir.Timer1.enabled = false;
    if (road == Road::Serial) platform.comm1.open();
    if (road == Road::Socket) {
      platform.winsock1.stand_connected();
      console.Lineweir.WinsockMenu.checked = true;
    }
    if (road == Road::Remote) {
      platform.remote_objects.set_present(true);
      console.remote.SerialInputObject = platform.remote_objects.create("Quorlink.SerialInput");
      console.Lineweir.NetworkConnectionOption.checked = true;
    }
  }

  void wait(int line, char letter, std::string_view shown) {
    console.lines.StatusLetter(line) = letter;
    console.Lineweir.LineTime(line).caption = shown;
  }
  void find() { console.next_caller.FindNext(); }
  int next() const { return console.lines.TheNextCall; }

  std::string strip(int line) const { return console.Lineweir.DataRow(line).picture; }
  std::string mark(int line) const { return console.Lineweir.MyMark(13 * line).picture; }
  std::string status(int line) const { return console.Lineweir.LineStatus(line).caption; }

  Words words() { return platform.comm1.take_writes(); }
  Words frames() { return platform.winsock1.take_writes(); }
  std::vector<std::vector<std::int64_t>> set_next_calls() {
    std::vector<std::vector<std::int64_t>> calls;
    for (const auto& call : platform.remote_objects.take_calls()) {
      if (call.member != "SetNextCall") continue;
      calls.push_back({std::get<std::int64_t>(call.arguments.at(0)),
                       std::get<std::int64_t>(call.arguments.at(1))});
    }
    return calls;
  }
};

std::string frame(int command, int line, int alt_info, int console, int bank,
                  std::string_view buffer = {}) {
  std::string bytes = "\x04\x04";
  for (const int field : {command, line, 1, alt_info, console, bank, 0}) {
    bytes += static_cast<char>(field);
  }
  bytes += static_cast<char>(buffer.size());
  bytes += buffer;
  if (buffer.size() % 2 == 1) bytes += '\xFF';
  return bytes + "\x05\x05";
}
std::string next_call_frame(int line) { return frame(8, line, 0, 0, 255); }

TEST_SUITE("callcontrol/next_caller: who is at the handset") {
  TEST_CASE("nobody is on a line that isn't there") {
    Desk desk;
    for (const int line : {-1, 10, 11}) CHECK_FALSE(desk.console.next_caller.at_handset(line));
  }

  TEST_CASE("where the server decides both buttons always find work") {
    Desk desk;
    const NextCaller& next = desk.console.next_caller;
    for (const bool producer : {false, true}) {
      if (producer) desk.console.Lineweir.ScreenerMode.on_click();
      desk.console.lines.ThePhoneFlag = 1;
      CHECK_FALSE(next.NextButton_finds_work());
      CHECK_FALSE(next.NextToConf_finds_work());
      desk.console.lines.ThePhoneFlag = 4;
      CHECK(next.NextButton_finds_work());
      CHECK(next.NextToConf_finds_work());
    }
  }
}

TEST_SUITE("callcontrol/next_caller: FindNext") {
  TEST_CASE("the ready line that has waited longest becomes the next call") {
    Desk desk;
    desk.wait(2, 'S', "0:01:00");
    desk.wait(5, 'S', "0:02:00");
    desk.wait(7, 'R', "0:09:00");
    desk.find();
    CHECK(desk.next() == 5);
    CHECK_FALSE(desk.console.lines.NextCallSet);
    CHECK(desk.strip(5) == "DataRowGreen");
    CHECK(desk.mark(5) == "MarkGreen");
    CHECK(desk.status(5) == "Next");
    CHECK(desk.words().empty());
  }

  TEST_CASE("equal waits: the lower line is next and stays it") {
    Desk desk(Road::Socket);
    desk.wait(3, 'S', "0:01:00");
    desk.wait(4, 'S', "0:01:00");
    for (int pass = 0; pass < 5; ++pass) desk.find();
    CHECK(desk.next() == 3);
    CHECK(desk.frames() == Words{next_call_frame(3)});
  }

  TEST_CASE("a choice overtaken moves its mark and is told once") {
    for (const Road road : {Road::Serial, Road::Socket, Road::Remote}) {
      Desk desk(road);
      desk.wait(1, 'S', "0:01:00");
      desk.find();
      desk.frames();
      desk.set_next_calls();
      desk.wait(8, 'S', "0:05:00");
      desk.find();
      desk.find();
      CHECK(desk.next() == 8);
      CHECK(desk.strip(1) == "DataRowWhite");
      CHECK(desk.mark(1) == "MarkWhite");
      CHECK(desk.status(1) == "Ready");
      CHECK(desk.strip(8) == "DataRowGreen");
      CHECK(desk.frames() == (road == Road::Socket ? Words{next_call_frame(8)} : Words{}));
      const auto calls = desk.set_next_calls();
      if (road == Road::Remote) {
        CHECK(calls == std::vector<std::vector<std::int64_t>>{{9, 1}});
      } else {
        CHECK(calls.empty());
      }
    }
  }

  TEST_CASE("no ready line left is told once, then there is silence") {
    for (const Road road : {Road::Socket, Road::Remote}) {
      Desk desk(road);
      desk.wait(1, 'S', "0:01:00");
      desk.find();
      desk.frames();
      desk.set_next_calls();
      desk.wait(1, 'P', "0:01:00");
      for (int pass = 0; pass < 3; ++pass) desk.find();
      CHECK(desk.next() == no_line);
      if (road == Road::Socket) {
        CHECK(desk.frames() == Words{next_call_frame(255)});
      } else {
        CHECK(desk.set_next_calls() == std::vector<std::vector<std::int64_t>>{{0, 1}});
      }
    }
  }

  TEST_CASE("what the row of a former choice shows, by its letter") {
    struct Row {
      char letter;
      std::string_view strip;
      std::string_view status;
    };
    for (const Row& row : {Row{'N', "DataRowRed", "On Air"}, Row{'C', "DataRowRed", "On Air"},
                           Row{'H', "DataRowWhite", "Held"}, Row{'L', "DataRowWhite", "Locked"},
                           Row{'K', "DataRowWhite", "Locked"}, Row{'B', "DataRowWhite", "Set Busy"},
                           Row{'P', "DataRowWhite", ""}, Row{'O', "DataRowWhite", ""},
                           Row{'Y', "DataRowWhite", ""}, Row{'R', "DataRowWhite", ""},
                           Row{' ', "DataRowWhite", ""}, Row{'\x81', "DataRowWhite", ""}}) {
      CAPTURE(row.letter);
      Desk desk;
      desk.wait(4, 'S', "0:01:00");
      desk.find();
      desk.console.lines.StatusLetter(4) = row.letter;
      desk.find();
      CHECK(desk.next() == no_line);
      CHECK(desk.strip(4) == row.strip);
      CHECK(desk.status(4) == row.status);
    }
  }

  TEST_CASE("a pinned choice stands against a longer wait") {
    Desk desk;
    desk.wait(1, 'S', "0:01:00");
    desk.find();
    desk.console.lines.NextCallSet = true;
    desk.wait(2, 'S', "0:09:00");
    desk.find();
    CHECK(desk.next() == 1);
    desk.console.lines.NextCallSet = false;
    desk.find();
    CHECK(desk.next() == 2);
  }

  TEST_CASE("with equipment of kind 4 the server chooses") {
    Desk desk(Road::Socket);
    desk.console.lines.ThePhoneFlag = 4;
    desk.wait(1, 'S', "0:01:00");
    desk.find();
    CHECK(desk.next() == no_line);
    CHECK(desk.frames().empty());
  }

  TEST_CASE("without the bar the next call is told by its text alone") {
    Desk desk;
    desk.console.Lineweir.NextBarDisable.on_click();
    CHECK(desk.console.Lineweir.NextBarDisable.checked);
    desk.wait(1, 'S', "0:01:00");
    desk.find();
    CHECK(desk.strip(1) == "DataRowWhite");
    CHECK(desk.status(1) == "Next");
    // The bar comes back with the next change only.
    desk.console.Lineweir.NextBarDisable.on_click();
    desk.find();
    CHECK(desk.strip(1) == "DataRowWhite");
    desk.wait(2, 'S', "0:02:00");
    desk.find();
    CHECK(desk.strip(2) == "DataRowGreen");
  }

  TEST_CASE("it runs at the end of each tick of the clocks") {
    Desk desk;
    desk.console.lines.StatusLetter(6) = 'S';
    desk.console.lines.ClockRunning(6) = 1;
    desk.console.lines.ClockBase(6) = "09:59:00";
    desk.console.Lineweir.Timer1.enabled = true;
    desk.platform.loop.advance(platform::Milliseconds(100));
    CHECK(desk.next() == 6);
  }

  TEST_CASE("a choice that can't be told is marked all the same, and the user is told") {
    Desk desk;
    Words shown;
    desk.console.messages.on_shown = [&](const std::string& text) { shown.push_back(text); };
    desk.console.Lineweir.WinsockMenu.checked = true;
    desk.wait(1, 'S', "0:01:00");
    desk.find();
    desk.find();
    CHECK(shown == Words{"Lineweir is not currently connected to a server."});
    CHECK(desk.strip(1) == "DataRowGreen");
  }

  TEST_CASE("a next call whose line goes away with the lines is none any more") {
    Desk desk;
    desk.console.layout.set_line_count(20);
    desk.wait(15, 'S', "0:01:00");
    desk.find();
    CHECK(desk.next() == 15);
    desk.console.layout.set_line_count(10);
    CHECK(desk.next() == no_line);
    desk.wait(3, 'S', "0:01:00");
    desk.find();
    CHECK(desk.next() == 3);
  }
}

TEST_SUITE("callcontrol/next_caller: pins") {
  TEST_CASE("the producer pins a line by hand on the serial link") {
    Desk desk;
    desk.console.Lineweir.ScreenerMode.on_click();
    desk.wait(1, 'S', "0:05:00");
    desk.wait(2, 'H', "0:01:00");
    desk.find();
    desk.console.Lineweir.OnHybrid2(2).on_click();
    CHECK(desk.next() == 2);
    CHECK(desk.console.lines.NextCallSet);
    CHECK(desk.strip(1) == "DataRowWhite");
    CHECK(desk.status(1) == "Ready");
    CHECK(desk.strip(2) == "DataRowGreen");
    CHECK(desk.status(2) == "Next");
    desk.find();
    CHECK(desk.next() == 2);
    // A new pin replaces it.
    desk.console.Lineweir.OnHybrid2(1).on_click();
    CHECK(desk.next() == 1);
    CHECK(desk.status(2) == "Held");
    CHECK(desk.words().empty());
  }

  TEST_CASE("on the socket the server is asked for a line that is taken") {
    struct Row {
      char letter;
      bool asked;
    };
    for (const Row& row : {Row{'S', true}, Row{'H', true}, Row{'R', true}, Row{'N', true},
                           Row{'E', true}, Row{'F', false}, Row{' ', false}}) {
      CAPTURE(row.letter);
      Desk desk(Road::Socket);
      desk.console.Lineweir.ScreenerMode.on_click();
      desk.frames();
      desk.wait(4, row.letter, "0:01:00");
      desk.console.Lineweir.OnHybrid2(4).on_click();
      CHECK(desk.frames() == (row.asked ? Words{next_call_frame(4)} : Words{}));
      CHECK(desk.next() == no_line);
    }
  }

  TEST_CASE("with equipment of kind 4 the line goes to the handset, if it may be commanded") {
    for (const char letter : std::string("SE")) {
      Desk desk(Road::Socket);
      desk.console.program.ConsoleNumber = 3;
      desk.console.Lineweir.ScreenerMode.on_click();
      desk.console.lines.ThePhoneFlag = 4;
      desk.frames();
      desk.wait(4, letter, "0:01:00");
      desk.console.Lineweir.OnHybrid2(4).on_click();
      CHECK(desk.frames() == (letter == 'E' ? Words{} : Words{frame(4, 4, 3, 3, 0, "P")}));
    }
  }

  TEST_CASE("over remote objects the present choice is sent again, not the clicked line") {
    Desk desk(Road::Remote);
    desk.console.Lineweir.ScreenerMode.on_click();
    desk.wait(1, 'S', "0:05:00");
    desk.find();
    desk.set_next_calls();
    desk.console.Lineweir.OnHybrid2(6).on_click();
    CHECK(desk.set_next_calls() == std::vector<std::vector<std::int64_t>>{{2, 1}});
    CHECK(desk.next() == 1);
  }

  TEST_CASE("the server's call-back pins a line of this group") {
    Desk desk(Road::Remote);
    desk.wait(1, 'S', "0:05:00");
    desk.find();
    NextCaller& next_caller = desk.console.next_caller;
    next_caller.ReturnNextCall(4, 2);
    CHECK(desk.next() == 1);
    next_caller.ReturnNextCall(0, 1);
    CHECK(desk.next() == 1);
    next_caller.ReturnNextCall(2, 1);
    CHECK_FALSE(desk.console.lines.NextCallSet);
    next_caller.ReturnNextCall(4, 1);
    CHECK(desk.next() == 3);
    CHECK(desk.console.lines.NextCallSet);
    CHECK(desk.strip(1) == "DataRowWhite");
    CHECK(desk.status(1) == "Ready");
    CHECK(desk.strip(3) == "DataRowGreen");
    CHECK(desk.status(3) == "Next");
  }

  TEST_CASE("a line that this console doesn't have is passed over") {
    Desk desk;
    desk.wait(1, 'S', "0:05:00");
    desk.find();
    for (const int line : {11, 255, 32767, -1, -32768}) {
      desk.console.next_caller.ReturnNextCall(line, 1);
      CHECK(desk.next() == 1);
      CHECK(desk.strip(1) == "DataRowGreen");
    }
  }
}

TEST_SUITE("callcontrol/next_caller: buttons") {
  TEST_CASE("talent takes the next call to air") {
    Desk desk;
    MainForm& form = desk.console.Lineweir;
    form.NextButton.on_click();
    form.NextToConfButton.on_click();
    CHECK(desk.words().empty());
    desk.wait(6, 'S', "0:01:00");
    desk.find();
    form.NextButton.on_click();
    form.NextToConfButton.on_click();
    CHECK(desk.words() == Words{"N06", "C06"});
    desk.console.lines.StatusLetter(6) = 'E';
    form.NextButton.on_click();
    form.NextToConfButton.on_click();
    CHECK(desk.words().empty());
    desk.console.program.EmptyLineOverride = true;
    form.NextButton.on_click();
    CHECK(desk.words() == Words{"N06"});
  }

  TEST_CASE("ready marks every line at this console's handset") {
    Desk desk;
    MainForm& form = desk.console.Lineweir;
    form.ScreenerMode.on_click();
    desk.wait(0, 'P', "");
    desk.wait(3, 'O', "");
    desk.wait(4, 'P', "");
    desk.wait(5, 'S', "");
    form.NextButton.on_click();
    CHECK(desk.words().empty());
    form.MitelPhone1.checked = true;
    form.NextButton.on_click();
    CHECK(desk.words() == Words{"S00", "S04"});
    form.MitelPhone1.checked = false;
    form.MitelPhone2.checked = true;
    form.NextButton.on_click();
    CHECK(desk.words() == Words{"S03"});
  }

  TEST_CASE("answer next takes the ringing line that has waited longest and opens its data") {
    for (const int handset : {0, 1, 2}) {
      Desk desk;
      MainForm& form = desk.console.Lineweir;
      form.ScreenerMode.on_click();
      form.MitelPhone1.checked = handset == 1;
      form.MitelPhone2.checked = handset == 2;
      form.NextToConfButton.on_click();
      CHECK(desk.words().empty());
      CHECK_FALSE(desk.console.Form4.visible);
      desk.wait(2, 'R', "0:00:20");
      desk.wait(7, 'R', "0:00:40");
      desk.wait(8, 'S', "0:09:00");
      form.NextToConfButton.on_click();
      CHECK(desk.words() == Words{handset == 1 ? "P07" : "O07"});
      CHECK(desk.console.Form4.visible);
      CHECK(desk.console.Form4.caption == "Caller Data - Line 8");
      CHECK(desk.console.lines.CurrentDataLine == 7);
    }
  }

  TEST_CASE("with equipment of kind 4 the server is asked, on the socket whatever the mode") {
    Desk desk(Road::Socket);
    MainForm& form = desk.console.Lineweir;
    desk.console.program.ConsoleNumber = 7;
    desk.console.lines.ThePhoneFlag = 4;
    form.WinsockMenu.checked = false;
    form.NextButton.on_click();
    form.NextToConfButton.on_click();
    CHECK(desk.frames() == Words{frame(15, 255, 65, 7, 0, "N"), frame(15, 255, 66, 7, 1, "N")});
    form.StudioMode.checked = false;
    form.NextButton.on_click();
    form.NextToConfButton.on_click();
    CHECK(desk.frames() == Words{frame(15, 255, 65, 7, 0, "S"), frame(15, 255, 7, 7, 255, "A")});
  }
}

}  // namespace
}  // namespace lineweir::test
