#pragma once

#include <string>
#include <string_view>

#include "support/line_picture.h"
#include "support/scripted_console.h"

namespace lineweir::test {

// What the scripted clock tells, in the three forms in which a line keeps it.
inline constexpr std::string_view now_as_base = "10:00:00";
inline constexpr std::string_view now_as_clock = "10:00:00 AM";
inline constexpr std::string_view now_as_stamp = "1/5/2026 10:00:00 AM";

// A line that holds something everywhere, so that what a report leaves alone shows as well as what
// it changes. Its caller was put on hold 90 seconds ago and on air 60 seconds ago.
inline void fill_line(ScriptedConsole& test, int line, char letter, RowColor strip) {
  MainForm& form = test.console.Lineweir;
  LineTable& lines = test.console.lines;
  lines.StatusLetter(line) = letter;
  CallerRecord& record = lines.CallerData(line);
  for (const auto& rule : caller_fields) record.set(rule.field, "rec " + std::string(rule.name));
  record.set(CallerField::TimeOnHold, "00:00:01");
  record.set(CallerField::TimePlacedOnAir, "09:59:00 AM");
  record.set(CallerField::TimeOnAir, "00:00:02");
  lines.HoldStamp(line) = "1/5/2026 9:58:30 AM";
  lines.ClockBase(line) = "09:00:00";
  lines.ClockRunning(line) = 7;
  lines.TheNextCall = line;
  lines.NextCallSet = true;
  for (int column = 0; column < column_count; ++column) {
    form.column_labels(column)(line).caption = "row " + std::to_string(column);
  }
  test.console.rows.set_row_color(line, strip);
  test.console.rows.DrawMark(line);
  test.console.rows.HybridPictureSet(line, 4, 0);
  form.Timer5.enabled = false;
}

// A row of one colour, "Red" for example, and its two icons.
inline void set_row(LinePicture& picture, std::string_view color, std::string_view icon1,
                    std::string_view icon2) {
  picture.strip = "DataRow" + std::string(color);
  picture.strip_image = picture.strip;
  picture.mark = "Mark" + std::string(color);
  picture.icon1 = icon1;
  picture.icon2 = icon2;
}

}  // namespace lineweir::test
