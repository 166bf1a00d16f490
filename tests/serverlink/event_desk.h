#pragma once

#include <string>
#include <string_view>

#include "support/call_log_file.h"
#include "support/full_line.h"
#include "support/scripted_console.h"

namespace lineweir::test {

// What a report meets.
struct Situation {
  char letter = 'N';
  char old = 'Y';
  int kind = 1;
  bool fresh = false;
  bool next = true;
  bool bar = true;
  bool handset_1 = false;
};

inline bool one_of(char letter, std::string_view letters) {
  return letters.find(letter) != std::string_view::npos;
}

// A console whose line 5 is told of by the server. The other lines have no item in the text.
struct EventDesk : ScriptedConsole {
  static constexpr int line = 5;

  EventDesk() {
    choose_log(*this);
    console.Lineweir.Timer1.enabled = false;
  }

  LinePicture prepare(const Situation& given) {
    MainForm& form = console.Lineweir;
    LineTable& lines = console.lines;
    fill_line(*this, line, given.old, RowColor::Red);
    lines.ThePhoneFlag = given.kind;
    lines.FreshConnect = given.fresh;
    form.MitelPhone1.checked = given.handset_1;
    form.NextBarDisable.checked = !given.bar;
    lines.RingConfirm[line] = true;
    if (!given.next) lines.TheNextCall = 2;
    return picture();
  }

  LinePicture picture() { return line_picture(console, line); }

  void report(char letter) {
    std::string text(3 * line, '\0');
    text += letter;
    text += "05";
    report_text(text);
  }
  void report_text(const std::string& text) {
    console.line_events.TheStatusText = text;
    console.Lineweir.Timer4.on_timer();
  }
};

}  // namespace lineweir::test
