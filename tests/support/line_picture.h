#pragma once

#include <array>
#include <string>
#include <string_view>

#include "core/console.h"

namespace lineweir::test {

// All that a console holds and shows of one line, to be compared as a whole: what a report changes
// and what it leaves.
struct LinePicture {
  char letter = ' ';
  CallerRecord record;
  std::string hold_stamp;
  std::string clock_base;
  int clock_running = 0;
  int next_call = no_line;
  bool next_call_set = false;
  bool blink_enabled = false;
  std::array<std::string, column_count> captions;
  std::string strip;
  std::string strip_image;
  std::string mark;
  // The picture of an icon that is visible, else nothing.
  std::string icon1;
  std::string icon2;

  std::string& caption(int column) { return captions[static_cast<std::size_t>(column)]; }
};

inline LinePicture line_picture(Console& console, int line) {
  MainForm& form = console.Lineweir;
  const LineTable& lines = console.lines;
  const auto shown = [](const Picture& icon) {
    return icon.visible ? icon.picture.get() : std::string();
  };
  LinePicture picture;
  picture.letter = lines.StatusLetter(line);
  picture.record = lines.CallerData(line);
  picture.hold_stamp = lines.HoldStamp(line);
  picture.clock_base = lines.ClockBase(line);
  picture.clock_running = lines.ClockRunning(line);
  picture.next_call = lines.TheNextCall;
  picture.next_call_set = lines.NextCallSet;
  picture.blink_enabled = form.Timer5.enabled;
  for (int column = 0; column < column_count; ++column) {
    picture.caption(column) = form.column_labels(column)(line).caption;
  }
  picture.strip = form.DataRow(line).picture;
  picture.strip_image = form.DataRowImage(line).picture;
  picture.mark = form.MyMark(line * column_count).picture;
  picture.icon1 = shown(form.CIcon1(line));
  picture.icon2 = shown(form.CIcon2(line));
  return picture;
}

// One "what: actual, not expected" for each difference; empty where there is none.
inline std::string differences(const LinePicture& actual, const LinePicture& expected) {
  std::string text;
  const auto compare = [&](std::string_view what, const auto& a, const auto& b) {
    if (a == b) return;
    text += std::string(what) + ": ";
    if constexpr (std::is_convertible_v<decltype(a), std::string>) {
      text += "\"" + std::string(a) + "\", not \"" + std::string(b) + "\"; ";
    } else {
      text += std::to_string(a) + ", not " + std::to_string(b) + "; ";
    }
  };
  compare("letter", std::string(1, actual.letter), std::string(1, expected.letter));
  for (const auto& rule : caller_fields) {
    compare(rule.name, actual.record[rule.field], expected.record[rule.field]);
  }
  compare("HoldStamp", actual.hold_stamp, expected.hold_stamp);
  compare("ClockBase", actual.clock_base, expected.clock_base);
  compare("ClockRunning", actual.clock_running, expected.clock_running);
  compare("TheNextCall", actual.next_call, expected.next_call);
  compare("NextCallSet", actual.next_call_set, expected.next_call_set);
  compare("Timer5", actual.blink_enabled, expected.blink_enabled);
  for (std::size_t i = 0; i < actual.captions.size(); ++i) {
    compare(column_rules[i].element, actual.captions[i], expected.captions[i]);
  }
  compare("DataRow", actual.strip, expected.strip);
  compare("DataRowImage", actual.strip_image, expected.strip_image);
  compare("MyMark", actual.mark, expected.mark);
  compare("CIcon1", actual.icon1, expected.icon1);
  compare("CIcon2", actual.icon2, expected.icon2);
  return text;
}

}  // namespace lineweir::test
