#pragma once

#include <string_view>

#include "core/console.h"

// What the simulated people do with mouse and keyboard. Like a person they may find that something
// can't be done now; then it isn't done.
namespace lineweir::seat {

// Whether it was there to be clicked.
bool click(Console& console, Form& form, Element& element);
bool replace_text(Console& console, TextBox& box, std::string_view text);
bool close(Console& console, Form& form);

// F6, the line, Enter.
bool write_message(Console& console, std::string_view text);

}  // namespace lineweir::seat
