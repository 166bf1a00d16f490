#pragma once

#include <string>
#include <vector>

#include "callcontrol/dial_words.h"
#include "support/scripted_console.h"

namespace lineweir::test {

// A console on the serial link with the dial pad at hand.
struct DialDesk : ScriptedConsole {
  explicit DialDesk(std::string_view command_line = "D") : ScriptedConsole(command_line) {
    platform.comm1.open();
  }

  DialPadForm& form = console.DialForm;
  DialState& dial = console.dial;

  std::vector<std::string> words() { return platform.comm1.take_writes(); }
  void letter(int line, char value) { console.lines.StatusLetter(line) = value; }
  void open() { console.Lineweir.Dial.on_click(); }
  void key(int index) { form.DialButton(index).on_click(); }
  void keys(const std::string& characters) {
    for (const char character : characters) key(dial_key_of(character));
  }
  void pass(int milliseconds) { platform.loop.advance(platform::Milliseconds(milliseconds)); }
  void tick() { pass(200); }
  std::string lamp() const { return form.SSCommand1.picture; }

  void produce(int handset, int kind = 1) {
    console.lines.ThePhoneFlag = kind;
    console.Lineweir.MitelPhone1.checked = handset == 1;
    console.Lineweir.MitelPhone2.checked = handset == 2;
    console.Lineweir.ScreenerMode.on_click();
  }
};

}  // namespace lineweir::test
