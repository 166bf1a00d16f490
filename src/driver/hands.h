#pragma once

#include <string_view>

#include "core/console.h"
#include "driver/places.h"

// What a user can do with mouse, keyboard and windows. What isn't on the screen is refused with
// "not visible"; what doesn't react, or lies behind a modal window, with "disabled".
namespace lineweir::driver {

// A click is the left button down and up and then the click; on a part without a handler of its own
// each goes to the container. A check box toggles first, an option button is chosen.
void click(Console& console, const FoundElement& found);
void double_click(Console& console, const FoundElement& found);
void right_click(Console& console, const FoundElement& found);
// Gives what the button went down on.
Control& press(Console& console, const FoundElement& found);
// A button that comes up on what it went down on has clicked it.
void release(Console& console, const FoundElement& found, const Control* pressed);

void focus(Console& console, const FoundElement& found);
void blur(Console& console, const FoundElement& found);

// Each character goes to what has the focus then, which handlers may have moved.
void type(Console& console, const FoundElement& found, std::string_view text);
void replace_text(Console& console, TextBox& box, std::string_view text);
void key(Console& console, int key_code, int shift);

void select(Console& console, const FoundElement& found, int entry);
void select_cell(Console& console, const FoundElement& found, int row, int column);
void drag(Console& console, const FoundElement& found, int from, int to);

void resize(Console& console, int width, int height);
void set_window_state(Console& console, FormWindowState state);
void close(Console& console, Form& form);

}  // namespace lineweir::driver
