#pragma once

#include "support/scripted_console.h"

namespace lineweir::test {

// Shows the first `rows` of twenty lines, at design size.
inline void show_rows(Console& console, int rows) {
  if (console.lines.LineCount != lines_of_large_layout) {
    console.layout.set_line_count(lines_of_large_layout);
  }
  for (int line = 0; line < console.lines.LineCount; ++line) {
    console.DisplayOptionForm.LineCheck(line).value = line < rows ? 1 : 0;
  }
  console.layout.RedefineScreen();
  console.window.SetToRoot(0);
  console.layout.RedefineScreen();
}

// The user gives the window another size, and the rebuild that follows has run.
inline void resize(Console& console, int width, int height) {
  console.Lineweir.width = width;
  console.Lineweir.height = height;
  console.layout.RedefineScreen();
}

}  // namespace lineweir::test
