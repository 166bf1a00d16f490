#include "driver/clock_functions.h"

namespace lineweir::driver {

void append_clock_functions(std::vector<Function>& functions) {
  functions.insert(functions.end(),
                   {function("Filler", [](Console& c) { c.show_editor.Filler(); }),
                    function("Form2_Filler", [](Console& c) { c.show_editor.Filler(); }),
                    // The handler of TimeClockMenuItem, whose name differs from its element's.
                    function("TimerClockMenuItem_Click",
                             [](Console& c) { c.Lineweir.TimeClockMenuItem.on_click(); }),
                    function("Lineweir_TimerClockMenuItem_Click",
                             [](Console& c) { c.Lineweir.TimeClockMenuItem.on_click(); })});
}

}  // namespace lineweir::driver
